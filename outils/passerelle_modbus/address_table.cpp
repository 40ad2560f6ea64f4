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
  names[input_clock_high] = in_language("lots d'entrées, poids fort", "batches of inputs, high word");
  names[input_clock_low] = in_language("lots d'entrées, poids faible", "batches of inputs, low word");
  names[output_clock_high] = in_language("lots de sorties, poids fort", "batches of outputs, high word");
  names[output_clock_low] = in_language("lots de sorties, poids faible", "batches of outputs, low word");
  names[plant_announces] = in_language("1 tant que la maquette annonce des lots d'entrées",
                                       "1 as long as the plant announces batches of inputs");
  return names;
}

}  // namespace

void print_address_table(std::ostream& out, const area_view& area) {
  out << in_language("zone ", "area ") << area.ident() << in_language(", maquette ", ", plant ")
      << area.plant() << in_language(" ; adresses comptées à partir de 0\n", "; addresses count from 0\n")
      << in_language("\nentrées discrètes (fonction 2) et registres d'entrée (4)\n",
                     "\ndiscrete inputs (function 2) and input registers (4)\n");
  print(out, 0, area.input_names());
  out << in_language("\nbobines (1, 5, 15) et registres de maintien (3, 6, 16)\n",
                     "\ncoils (1, 5, 15) and holding registers (3, 6, 16)\n");
  print(out, 0, area.output_names());
  out << in_language("\nregistres d'entrée (4) : compteurs, puis entrées du même lot\n",
                     "\ninput registers (4): counters, and the inputs of the same batch\n");
  print(out, counters_at, counter_names());
  print(out, inputs_again_at, area.input_names());
}
