#include "maquettes_graphiques/WAGONS/mine_signals.h"

#include <algorithm>
#include <iterator>

#include "maquettes_graphiques/mock_up/signal_table.h"

// An array that can be written to cannot be checked by the compiler; these are its rows.
// clang-format off
#define ROWS { \
    "pcA",      "pcB",       "pcC",       "pdAB",     "pedA",     "pedB",     "pdC",      \
    "wAvide",   "wBvide",    "wCvide",    "wAplein",  "wBplein",  "dc",       "ac",       \
    "atu",      "init",      "A_DROITE",  "B_DROITE", "C_DROITE", "A_GAUCHE", "B_GAUCHE", \
    "C_GAUCHE", "REMPLIR_A", "REMPLIR_B", "VIDER_A",  "VIDER_B",  "VIDER_C",              \
}
// clang-format on

char table_signaux[27][27] = ROWS;

namespace {

constexpr std::string_view rows[] = ROWS;
constexpr auto& inputs = signal_names<entree::index>;
constexpr auto& outputs = signal_names<sortie::index>;
static_assert(std::equal(inputs.begin(), inputs.end(), std::begin(rows)), "an input is not in its place");
static_assert(std::equal(outputs.begin(), outputs.end(), std::begin(rows) + inputs.size(), std::end(rows)),
              "an output is not in its place");

}  // namespace
