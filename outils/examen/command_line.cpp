#include "outils/examen/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>
#include <stdexcept>

#include "bibliocpp/language.h"
#include "bibliocpp/nearest_name.h"

namespace {

const char* usage() {
  return tr(R"(usage : examen [options] CONTRÔLEUR...
        examen [options] --dossier DOSSIER | --liste FICHIER
Juge des contrôleurs sur une maquette, sans écran et sans opérateur.
  --maquette NOM     wagons, galerie, ou le chemin d'une maquette ; sinon celle du scénario
  --scenario FICHIER ce qui est fait et attendu ; sinon celui qui est livré avec la maquette
  --dossier DOSSIER  tous les contrôleurs de ce dossier
  --liste FICHIER    une liste de classe : par ligne un nom et une commande
  -j N               tant de contrôleurs à la fois
  --junit FICHIER    les verdicts pour une chaîne d'intégration
  --rapport DOSSIER  un rapport, et par contrôleur image, signaux et page PDF
  --temps-reel       au rythme de la maquette au lieu d'aussi vite que possible
  --acceleration N   combien de fois plus vite passent les pauses des contrôleurs
  --patience MS      attente au plus de chaque réponse
  --duree-max S      secondes au plus pour chaque contrôleur
  --memoire MIO      mémoire au plus de chaque contrôleur
  --operateur-au-hasard GRAINE
                     un opérateur au hasard, jusqu'au premier moment que fixe le scénario
Code de sortie : 0 tous réussis, 1 sinon, 2 si l'un n'a pu être jugé.
--help donne cet usage, --version la version.
)");
}

[[noreturn]] void refuse(const std::string& what) {
  throw std::runtime_error(tr("{} ; voir « examen --help »", {what}));
}

struct number_option {
  const char* name;
  int command_line::*value;
  int least, most;
};

constexpr number_option at_once{"j", &command_line::at_once, 1, 256},
    number_options[] = {{"acceleration", &command_line::acceleration, 1, 10'000},
                        {"patience", &command_line::patience_ms, 1, 60'000},
                        {"duree-max", &command_line::most_seconds, 1, 1'000'000},
                        {"memoire", &command_line::memory_mib, 1, 1'000'000},
                        {"operateur-au-hasard", &command_line::random_seed, 0, 2'000'000'000}};

struct text_option {
  const char* name;
  std::string command_line::*value;
};

constexpr text_option text_options[] = {{"maquette", &command_line::plant},
                                        {"scenario", &command_line::scenario},
                                        {"junit", &command_line::junit},
                                        {"rapport", &command_line::report}};

int number(const number_option& wanted, const std::string& text) {
  int value = -1;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size() || value < wanted.least ||
      value > wanted.most)
    refuse(tr("-{} demande un nombre entier de {} à {}, pas « {} »",
              {(wanted.name[1] == 0 ? "" : "-") + std::string(wanted.name), std::to_string(wanted.least),
               std::to_string(wanted.most), text}));
  return value;
}

[[noreturn]] void refuse_unknown(const std::string& word, std::span<const option> options) {
  std::vector<std::string> names;
  for (const option& one : options.first(options.size() - 1)) names.push_back(std::string("--") + one.name);
  refuse(tr("option inconnue : {} ; la plus proche est {}",
            {word, names[static_cast<std::size_t>(nearest_name(word, names))]}));
}

// Above every character, and above the 1 that getopt_long() returns for what is no option.
enum option_code { dossier = 256, liste, real_time, help, version, first_number };
constexpr int first_text = first_number + static_cast<int>(std::size(number_options));

std::vector<option> option_table() {
  std::vector<option> all{{"dossier", required_argument, nullptr, dossier},
                          {"liste", required_argument, nullptr, liste},
                          {"temps-reel", no_argument, nullptr, real_time},
                          {"help", no_argument, nullptr, help},
                          {"version", no_argument, nullptr, version}};
  int code = first_number;
  for (const number_option& one : number_options)
    all.push_back({one.name, required_argument, nullptr, code++});
  for (const text_option& one : text_options) all.push_back({one.name, required_argument, nullptr, code++});
  all.push_back({});
  return all;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  const std::vector<option> options = option_table();
  command_line wanted;
  const auto take = [&](std::vector<candidate> some) {
    std::move(some.begin(), some.end(), std::back_inserter(wanted.candidates));
  };
  opterr = 0;
  optind = 0;  // from the beginning, also in a second reading
  while (true) {
    const int at = std::max(optind, 1);
    const int code = getopt_long(argc, argv, "-:j:", options.data(), nullptr);
    if (code == -1) break;
    if (code > first_number - 1 && code < first_text) {
      const number_option& one = number_options[code - first_number];
      wanted.*one.value = number(one, optarg);
    } else if (code >= first_text) {
      wanted.*text_options[code - first_text].value = optarg;
    } else {
      switch (code) {
        case 1:
          take({candidate_of(optarg)});
          break;
        case 'j':
          wanted.at_once = number(at_once, optarg);
          break;
        case dossier:
          take(candidates_in(optarg));
          break;
        case liste:
          take(candidates_on(optarg));
          break;
        case real_time:
          wanted.real_time = true;
          break;
        case help:
          wanted.answer = usage();
          return wanted;
        case version:
          wanted.answer = "examen " VERSION "\n";
          return wanted;
        case ':':
          refuse(tr("il manque la valeur de {}", {argv[at]}));
        default:
          refuse_unknown(argv[at], options);
      }
    }
  }
  for (; optind < argc; ++optind) take({candidate_of(argv[optind])});
  if (wanted.candidates.empty()) refuse(tr("il n'y a aucun contrôleur à juger"));
  make_names_unique(wanted.candidates);
  return wanted;
}
