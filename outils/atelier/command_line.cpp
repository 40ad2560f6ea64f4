#include "outils/atelier/command_line.h"

#include <getopt.h>

#include <array>
#include <cstdlib>
#include <iostream>

#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

enum option_code { plant = 1, help, version };

constexpr std::array<option, 4> options{{{"maquette", required_argument, nullptr, plant},
                                         {"help", no_argument, nullptr, help},
                                         {"version", no_argument, nullptr, version},
                                         {}}};

const char* usage() {
  return tr(
      "usage : atelier [--maquette wagons|galerie|CHEMIN] COMMANDE...\n"
      "Lance la maquette, le contrôleur sous surveillance et le chronogramme, côte à côte.\n");
}

[[noreturn]] void refuse() {
  std::cerr << usage();
  std::exit(2);
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  opterr = 0;
  int code = 0;
  // Up to the first word that is no option: what follows is the controller's.
  while ((code = getopt_long(argc, argv, "+", options.data(), nullptr)) != -1) {
    switch (code) {
      case plant:
        wanted.plant = optarg;
        break;
      case help:
        answer_help(usage());
      case version:
        answer_version();
      default:
        refuse();
    }
  }
  if (optind == argc || wanted.plant.empty()) refuse();
  wanted.command.assign(argv + optind, argv + argc);
  return wanted;
}
