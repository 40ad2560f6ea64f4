#include "outils/passerelle_modbus/address_table.h"

#include <array>
#include <iomanip>
#include <ostream>
#include <string>
#include <vector>

#include "bibliocpp/language.h"

namespace {

void print(std::ostream& out, int first, const std::vector<std::string>& names) {
  for (const std::string& name : names) out << std::setw(6) << first++ << "  " << name << "\n";
}

std::vector<std::string> counter_names() {
  std::vector<std::string> names(counters);
  names[input_clock_high] = tr("lots d'entrées, poids fort");
  names[input_clock_low] = tr("lots d'entrées, poids faible");
  names[output_clock_high] = tr("lots de sorties, poids fort");
  names[output_clock_low] = tr("lots de sorties, poids faible");
  names[plant_announces] = tr("1 tant que la maquette annonce des lots d'entrées");
  return names;
}

}  // namespace

void print_address_table(std::ostream& out, const area_view& area) {
  out << tr("zone {}, maquette {} ; adresses comptées à partir de 0\n",
            {std::to_string(area.ident()), std::to_string(area.plant())})
      << tr("\nentrées discrètes (fonction 2) et registres d'entrée (4)\n");
  print(out, 0, area.input_names());
  out << tr("\nbobines (1, 5, 15) et registres de maintien (3, 6, 16)\n");
  print(out, 0, area.output_names());
  out << tr("\nregistres d'entrée (4) : compteurs, puis entrées du même lot\n");
  print(out, counters_at, counter_names());
  print(out, inputs_again_at, area.input_names());
}
