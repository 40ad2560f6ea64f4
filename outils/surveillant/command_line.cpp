#include "outils/surveillant/command_line.h"

#include <getopt.h>

#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "bibliocpp/automemlink.h"
#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

enum option_code { at_end = 1, help, version };

constexpr std::array<option, 4> options{{{"a-l-arret", required_argument, nullptr, at_end},
                                         {"help", no_argument, nullptr, help},
                                         {"version", no_argument, nullptr, version},
                                         {}}};

const char* usage() {
  return tr(
      "usage : surveillant [--a-l-arret garder|zero] COMMANDE... -automemlink N\n"
      "Lance un contrôleur et dit ce qui lui arrive. Une maquette ajoute -automemlink N elle-même :\n"
      "wagons surveillant ./mon_controleur\n");
}

[[noreturn]] void refuse() {
  std::cerr << usage();
  std::exit(2);
}

bool is_zero(std::string_view choice) {
  if (choice != "zero" && choice != "garder") refuse();
  return choice == "zero";
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  opterr = 0;
  // Up to the first word that is no option: what follows is the controller's.
  const int own = own_arguments(argc, argv);
  int code = 0;
  while ((code = getopt_long(own, argv, "+", options.data(), nullptr)) != -1) {
    switch (code) {
      case at_end:
        wanted.drop_outputs = is_zero(optarg);
        break;
      case help:
        answer_help(usage());
      case version:
        answer_version();
      default:
        refuse();
    }
  }
  if (optind == own || own == argc) refuse();
  wanted.ident = automemlink(argc, argv);
  wanted.command.assign(argv + optind, argv + argc);
  return wanted;
}
