#include "outils/examen/command_line.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>
#include <stdexcept>

#include "bibliocpp/language.h"
#include "bibliocpp/nearest_name.h"
#include "outils/examen/phrase.h"

namespace {

constexpr const char *usage_french =
                         R"(usage : examen [options] CONTRÔLEUR...
        examen [options] --dossier DOSSIER | --liste FICHIER
Juge des contrôleurs sur une maquette, sans écran et sans opérateur.
  --maquette NOM     wagons (sinon), galerie, ou le chemin d'une maquette
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
                     un opérateur au hasard au lieu de celui du scénario
Code de sortie : 0 tous réussis, 1 sinon, 2 si l'un n'a pu être jugé.
)",
                     *usage_english =
                         R"(usage: examen [options] CONTROLLER...
       examen [options] --dossier FOLDER | --liste FILE
Judges controllers on a plant, without a screen and without an operator.
  --maquette NAME    wagons (by default), galerie, or the path of a plant
  --scenario FILE    what is done and expected; by default the one that comes with the plant
  --dossier FOLDER   every controller in that folder
  --liste FILE       a class list: a name and a command a line
  -j N               so many controllers at once
  --junit FILE       the verdicts for a pipeline
  --rapport FOLDER   a report, and for each controller picture, signals and a PDF page
  --temps-reel       at the plant's own pace instead of as fast as can be
  --acceleration N   how many times faster the controllers' pauses pass
  --patience MS      for each answer, at most
  --duree-max S      seconds for each controller, at most
  --memoire MIB      memory of each controller, at most
  --operateur-au-hasard SEED
                     an operator at random instead of the scenario's
Exit status: 0 all have passed, 1 otherwise, 2 when one could not be judged.
)";

[[noreturn]] void refuse(const std::string& what) {
  throw std::runtime_error(what + phrase(" ; voir « examen --help »", "; see \"examen --help\""));
}

struct number_option {
  const char* name;
  int command_line::*value;
  int least, most;
};

constexpr number_option number_options[] = {
    {"-j", &command_line::at_once, 1, 256},
    {"--acceleration", &command_line::acceleration, 1, 10'000},
    {"--patience", &command_line::patience_ms, 1, 60'000},
    {"--duree-max", &command_line::most_seconds, 1, 1'000'000},
    {"--memoire", &command_line::memory_mib, 1, 1'000'000},
    {"--operateur-au-hasard", &command_line::random_seed, 0, 2'000'000'000}};

struct text_option {
  const char* name;
  std::string command_line::*value;
};

constexpr text_option text_options[] = {{"--maquette", &command_line::plant},
                                        {"--scenario", &command_line::scenario},
                                        {"--junit", &command_line::junit},
                                        {"--rapport", &command_line::report}};

int number(const number_option& option, const std::string& text) {
  int value = -1;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size() || value < option.least ||
      value > option.most)
    refuse(phrase("{} demande un nombre entier de {} à {}, pas « {} »",
                  "{} needs a whole number from {} to {}, not \"{}\"",
                  {option.name, std::to_string(option.least), std::to_string(option.most), text}));
  return value;
}

[[noreturn]] void refuse_unknown(const std::string& word) {
  std::vector<std::string> names{"--dossier", "--liste", "--temps-reel", "--help", "--version"};
  for (const number_option& option : number_options) names.emplace_back(option.name);
  for (const text_option& option : text_options) names.emplace_back(option.name);
  refuse(phrase("option inconnue : {} ; la plus proche est {}", "there is no option {}; the nearest is {}",
                {word, names[static_cast<std::size_t>(nearest_name(word, names))]}));
}

template <typename Option>
const Option* named(const std::string& word, std::span<const Option> options) {
  const auto found =
      std::find_if(options.begin(), options.end(), [&](const Option& one) { return word == one.name; });
  return found == options.end() ? nullptr : &*found;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  bool options = true;
  const auto take = [&](std::vector<candidate> some) {
    std::move(some.begin(), some.end(), std::back_inserter(wanted.candidates));
  };
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const auto value = [&]() -> std::string {
      if (i + 1 == argc || *argv[i + 1] == '\0')
        refuse(phrase("il manque la valeur de {}", "there is no value after {}", {word}));
      return argv[++i];
    };
    if (!options || !word.starts_with("-")) {
      if (word.empty())
        refuse(phrase("le nom d'un contrôleur est vide", "the name of a controller is empty"));
      wanted.candidates.push_back(candidate_of(word));
    } else if (word == "--") {
      options = false;
    } else if (word == "--help") {
      wanted.answer = in_language(usage_french, usage_english);
    } else if (word == "--version") {
      wanted.answer = "examen " VERSION "\n";
    } else if (word == "--temps-reel") {
      wanted.real_time = true;
    } else if (word == "--dossier") {
      take(candidates_in(value()));
    } else if (word == "--liste") {
      take(candidates_on(value()));
    } else if (const auto* const counted = named<number_option>(word, number_options)) {
      wanted.*counted->value = number(*counted, value());
    } else if (const auto* const said = named<text_option>(word, text_options)) {
      wanted.*said->value = value();
    } else {
      refuse_unknown(word);
    }
  }
  if (wanted.candidates.empty() && wanted.answer.empty())
    refuse(phrase("il n'y a aucun contrôleur à juger", "there is no controller to judge"));
  make_names_unique(wanted.candidates);
  return wanted;
}
