#include "outils/grafcet/command_line.h"

#include <getopt.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "bibliocpp/automemlink.h"
#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

enum option_code { verify = 1, plant, period, svg, pdf, view, step, help, version };

constexpr std::array<option, 10> options{{{"verifier", no_argument, nullptr, verify},
                                          {"maquette", required_argument, nullptr, plant},
                                          {"periode", required_argument, nullptr, period},
                                          {"svg", required_argument, nullptr, svg},
                                          {"pdf", required_argument, nullptr, pdf},
                                          {"vue", no_argument, nullptr, view},
                                          {"pas-a-pas", no_argument, nullptr, step},
                                          {"help", no_argument, nullptr, help},
                                          {"version", no_argument, nullptr, version},
                                          {}}};

const char* usage() {
  return tr(
      "usage : grafcet [--vue] [--periode DUREE] FICHIER -automemlink N\n"
      "        grafcet --vue --pas-a-pas --maquette NOM FICHIER\n"
      "        grafcet --verifier [--maquette wagons|galerie|FICHIER] FICHIER\n"
      "        grafcet --svg DESSIN FICHIER\n"
      "        grafcet --pdf DESSIN FICHIER\n"
      "Fait évoluer les GRAFCET d'un fichier comme contrôleur d'une maquette, qui ajoute -automemlink N\n"
      "elle-même (wagons \"grafcet mine.grafcet\"), les vérifie seulement, ou les dessine. Avec --periode,\n"
      "une durée compte les cycles de la maquette, chacun de cette durée (5ms, 10ms). Avec --vue, une "
      "fenêtre\n"
      "les montre en marche ; avec --pas-a-pas, la maquette attend à chaque évolution.\n");
}

[[noreturn]] void refuse() {
  std::cerr << usage();
  std::exit(2);
}

// "5ms", "500us", "1s"; from a microsecond to an hour.
std::int64_t duration(std::string_view text) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
  const std::int64_t us = unit == "us" ? 1 : unit == "ms" ? 1'000 : unit == "s" ? 1'000'000 : 0;
  constexpr std::int64_t hour = 3'600'000'000;
  if (error != std::errc{} || us == 0 || value <= 0 || value > hour / us) refuse();
  return value * us;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line asked;
  opterr = 0;
  const int own = own_arguments(argc, argv);
  int code = 0;
  while ((code = getopt_long(own, argv, "", options.data(), nullptr)) != -1) {
    switch (code) {
      case verify:
        asked.wanted = task::verify;
        break;
      case plant:
        asked.plant = optarg;
        break;
      case period:
        asked.period_us = duration(optarg);
        break;
      case svg:
      case pdf:
        asked.wanted = code == svg ? task::svg : task::pdf;
        asked.picture = optarg;
        break;
      case view:
        asked.view = true;
        break;
      case step:
        asked.wanted = task::step;
        break;
      case help:
        answer_help(usage());
      case version:
        answer_version();
      default:
        refuse();
    }
  }
  const bool controls = asked.wanted == task::control;
  const bool with_plant = asked.wanted == task::verify || asked.wanted == task::step;
  if (optind != own - 1 || controls != (own < argc) || (!with_plant && !asked.plant.empty())) refuse();
  if ((asked.wanted == task::step) != (asked.view && !controls)) refuse();
  if (asked.wanted == task::step && asked.plant.empty()) refuse();
  asked.file = argv[optind];
  if (controls) asked.ident = automemlink(argc, argv);
  return asked;
}
