#include "outils/visionneuse/command_line.h"

#include <getopt.h>

#include <array>
#include <filesystem>

#include "outils/visionneuse/failure.h"

const char* const usage =
    "usage: visionneuse FILE [--titre T] [--lecteur-pdf CMD] [--langue fr|en]\n"
    "       visionneuse FILE [--pdf OUT] [--ps OUT] [--texte OUT]\n"
    "Shows a file of marked-up messages page by page, or exports it without a window.\n";

namespace {

enum option_code { titre = 1, lecteur_pdf, langue, pdf, ps, texte, aide };

constexpr std::array<option, 8> options{{{"titre", required_argument, nullptr, titre},
                                         {"lecteur-pdf", required_argument, nullptr, lecteur_pdf},
                                         {"langue", required_argument, nullptr, langue},
                                         {"pdf", required_argument, nullptr, pdf},
                                         {"ps", required_argument, nullptr, ps},
                                         {"texte", required_argument, nullptr, texte},
                                         {"help", no_argument, nullptr, aide},
                                         {}}};

[[noreturn]] void refuse(const std::string& what) {
  throw failure(bad_input, what + "; \"visionneuse --help\" tells the usage");
}

int read_language(const std::string& name) {
  if (name == "fr") return 0;
  if (name == "en") return 1;
  refuse("the language is fr or en, not \"" + name + "\"");
}

std::string output_name(const std::string& name) {
  if (name.empty()) refuse("an export needs the name of a file");
  return name;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  opterr = 0;
  int code = 0;
  while ((code = getopt_long(argc, argv, ":", options.data(), nullptr)) != -1) {
    switch (code) {
      case titre:
        wanted.title = optarg;
        break;
      case lecteur_pdf:
        wanted.pdf_viewer = optarg;
        break;
      case langue:
        wanted.language = read_language(optarg);
        break;
      case pdf:
        wanted.pdf = output_name(optarg);
        break;
      case ps:
        wanted.postscript = output_name(optarg);
        break;
      case texte:
        wanted.text = output_name(optarg);
        break;
      case aide:
        wanted.help = true;
        return wanted;
      case ':':
        refuse(std::string("the option ") + argv[optind - 1] + " needs a value");
      default:
        refuse("there is no option " +
               (optopt > ' ' ? std::string("-") + static_cast<char>(optopt) : argv[optind - 1]));
    }
  }
  if (optind == argc) refuse("no file to show is given");
  if (optind + 1 < argc)
    refuse(std::string("one file at a time: \"") + argv[optind + 1] + "\" is one too many");
  wanted.file = argv[optind];
  if (wanted.title.empty()) wanted.title = std::filesystem::path(wanted.file).filename();
  return wanted;
}
