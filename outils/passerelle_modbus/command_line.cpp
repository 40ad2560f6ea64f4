#include "outils/passerelle_modbus/command_line.h"

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

enum option_code { address = 1, port, at_loss, table, help, version };

constexpr std::array<option, 7> options{{{"adresse", required_argument, nullptr, address},
                                         {"port", required_argument, nullptr, port},
                                         {"sur-perte", required_argument, nullptr, at_loss},
                                         {"table", no_argument, nullptr, table},
                                         {"help", no_argument, nullptr, help},
                                         {"version", no_argument, nullptr, version},
                                         {}}};

const char* usage() {
  return tr(R"(usage : passerelle_modbus [--adresse A] [--port P] [--sur-perte zero|garder] -automemlink N
        passerelle_modbus --table [-automemlink N]
Contrôleur qui ouvre une maquette à des clients Modbus TCP. Une maquette ajoute -automemlink N elle-même :
wagons passerelle_modbus
wagons "passerelle_modbus --port 1602"
  --adresse A    où écouter ; 127.0.0.1 si rien n'est dit : cette machine seulement
  --port P       1502 si rien n'est dit, car le 502 de Modbus est réservé à root ; 0 : au choix du système
  --sur-perte    ce que deviennent les sorties quand le dernier client est parti : elles retombent à zéro
                 (zero, si rien n'est dit) ou restent (garder)
  --table        montre seulement les adresses : de la zone N, ou de la maquette lancée en dernier
)");
}

[[noreturn]] void refuse(const std::string& what) {
  std::cerr << tr("passerelle_modbus: {} ; voir \"passerelle_modbus --help\"\n", {what});
  std::exit(2);
}

int port_number(std::string_view text) {
  constexpr int most = 65535;
  int value = -1;
  const auto [rest, error] = std::from_chars(text.begin(), text.end(), value);
  if (error != std::errc{} || rest != text.end() || value < 0 || value > most)
    refuse(tr("un port va de 0 à 65535, pas {}", {std::string(text)}));
  return value;
}

bool is_zero(std::string_view choice) {
  if (choice != "zero" && choice != "garder")
    refuse(tr("--sur-perte veut zero ou garder, pas {}", {std::string(choice)}));
  return choice == "zero";
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  opterr = 0;
  const int own = own_arguments(argc, argv);
  int code = 0;
  while ((code = getopt_long(own, argv, "+", options.data(), nullptr)) != -1) {
    switch (code) {
      case address:
        wanted.address = optarg;
        break;
      case port:
        wanted.port = port_number(optarg);
        break;
      case at_loss:
        wanted.drop_outputs = is_zero(optarg);
        break;
      case table:
        wanted.only_table = true;
        break;
      case help:
        answer_help(usage());
      case version:
        answer_version();
      default:
        refuse(tr("je ne comprends pas : {}", {argv[optind - 1]}));
    }
  }
  if (optind < own) refuse(tr("un argument de trop : {}", {argv[optind]}));
  if (own < argc || !wanted.only_table) wanted.ident = automemlink(argc, argv);
  return wanted;
}
