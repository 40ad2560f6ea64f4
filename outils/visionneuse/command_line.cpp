#include "outils/visionneuse/command_line.h"

#include <getopt.h>

#include <filesystem>

#include "bibliocpp/language.h"
#include "outils/answers/answers.h"
#include "outils/visionneuse/failure.h"

namespace {

// Above every character, and above the 1 that getopt_long() returns for what is no option.
enum option_code { titre = 256, lecteur_pdf, langue, aide, version, first_export };

std::vector<option> option_table() {
  std::vector<option> options{{"titre", required_argument, nullptr, titre},
                              {"lecteur-pdf", required_argument, nullptr, lecteur_pdf},
                              {"langue", required_argument, nullptr, langue},
                              {"help", no_argument, nullptr, aide},
                              {"version", no_argument, nullptr, version}};
  int code = first_export;
  for (const export_format& format : export_formats)
    options.push_back({format.option, required_argument, nullptr, code++});
  options.push_back({});
  return options;
}

[[noreturn]] void refuse(const std::string& what) {
  throw failure(bad_input, tr("{} ; \"visionneuse --help\" donne l'usage", {what}));
}

int read_language(const std::string& name) {
  if (name == "fr") return 0;
  if (name == "en") return 1;
  refuse(tr("la langue est fr ou en, pas \"{}\"", {name}));
}

std::string output_name(const std::string& name) {
  if (name.empty()) refuse(tr("une exportation demande le nom d'un fichier"));
  return name;
}

std::string usage() {
  std::string exports;
  for (const export_format& format : export_formats) exports += tr(" [--{} SORTIE]", {format.option});
  return tr(
      "usage : visionneuse FICHIER [--titre T] [--lecteur-pdf CMD] [--langue fr|en]\n"
      "        visionneuse FICHIER{}\n"
      "Montre un fichier de messages balisés page par page, ou l'exporte sans fenêtre.\n",
      {exports});
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  const std::vector<option> options = option_table();
  command_line wanted;
  wanted.language = read_language(tr("fr"));
  std::vector<std::string> files;
  opterr = 0;
  while (true) {
    const char* const word = argv[optind];  // "-" below: words are taken in their order
    const int code = getopt_long(argc, argv, "-:", options.data(), nullptr);
    if (code == -1) break;
    switch (code) {
      case 1:
        files.emplace_back(optarg);
        break;
      case titre:
        wanted.title = optarg;
        break;
      case lecteur_pdf:
        wanted.pdf_viewer = optarg;
        break;
      case langue:
        wanted.language = read_language(optarg);
        break;
      case aide:
        answer_help(usage());
      case version:
        answer_version();
      case ':':
        refuse(tr("l'option {} demande une valeur", {word}));
      case '?':
        refuse(tr("option inconnue : {}", {word}));
      default:
        wanted.exports[&export_formats[static_cast<std::size_t>(code - first_export)]] = output_name(optarg);
    }
  }
  files.insert(files.end(), argv + optind, argv + argc);
  if (files.empty()) refuse(tr("aucun fichier à montrer n'est donné"));
  if (files.size() > 1) refuse(tr("un fichier à la fois : \"{}\" est de trop", {files[1]}));
  wanted.file = files[0];
  if (wanted.title.empty()) wanted.title = std::filesystem::path(wanted.file).filename();
  return wanted;
}
