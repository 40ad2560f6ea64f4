#include "maquettes_graphiques/WAGONS/mine_signals.h"

#include <iterator>

char table_signaux[27][27] = {
    "pcA",      "pcB",       "pcC",       "pdAB",     "pedA",     "pedB",     "pdC",
    "wAvide",   "wBvide",    "wCvide",    "wAplein",  "wBplein",  "dc",       "ac",
    "atu",      "init",      "A_DROITE",  "B_DROITE", "C_DROITE", "A_GAUCHE", "B_GAUCHE",
    "C_GAUCHE", "REMPLIR_A", "REMPLIR_B", "VIDER_A",  "VIDER_B",  "VIDER_C",
};
static_assert(std::size(table_signaux) == int{entree::count} + sortie::count);
