#include "outils/grafcet/command_line.h"

#include <getopt.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "bibliocpp/automemlink.h"
#include "bibliocpp/language.h"

namespace {

enum option_code { verify = 1, plant, period, help, version };

constexpr std::array<option, 6> options{{{"verifier", no_argument, nullptr, verify},
                                         {"maquette", required_argument, nullptr, plant},
                                         {"periode", required_argument, nullptr, period},
                                         {"help", no_argument, nullptr, help},
                                         {"version", no_argument, nullptr, version},
                                         {}}};

const char* usage() {
  return in_language(
      "usage : grafcet [--periode DUREE] FICHIER -automemlink N\n"
      "        grafcet --verifier [--maquette wagons|galerie|FICHIER] FICHIER\n"
      "Fait évoluer les GRAFCET d'un fichier comme contrôleur d'une maquette, qui ajoute -automemlink N\n"
      "elle-même (wagons \"grafcet mine.grafcet\"), ou vérifie seulement le fichier. Avec --periode, une "
      "durée\n"
      "compte les cycles de la maquette, chacun de cette durée (5ms, 10ms).\n",
      "usage: grafcet [--periode DURATION] FILE -automemlink N\n"
      "       grafcet --verifier [--maquette wagons|galerie|FILE] FILE\n"
      "Runs the GRAFCETs of a file as the controller of a plant, which adds -automemlink N itself\n"
      "(wagons \"grafcet mine.grafcet\"), or only verifies the file. With --periode times count the plant's\n"
      "cycles, each of this duration (5ms, 10ms).\n");
}

[[noreturn]] void refuse() {
  std::cerr << usage();
  std::exit(2);
}

[[noreturn]] void answer(const char* text) {
  std::cout << text;
  std::exit(0);
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
  const bool started_by_plant = argc >= 3 && argv[argc - 2] == std::string_view("-automemlink");
  const int own = started_by_plant ? argc - 2 : argc;
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
      case help:
        answer(usage());
      case version:
        answer("grafcet " VERSION "\n");
      default:
        refuse();
    }
  }
  const bool controls = asked.wanted == task::control;
  if (optind != own - 1 || controls != started_by_plant || (controls && !asked.plant.empty())) refuse();
  asked.file = argv[optind];
  if (controls) asked.ident = automemlink(argc, argv);
  return asked;
}
