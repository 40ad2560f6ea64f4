#pragma once
// The signals of the parcel sorter, in the order of the area.

#include "maquettes_graphiques/mock_up/plant.h"

namespace entree {
enum index : int {
  marche,  // desk buttons, while they are held
  arret,
  atu,
  rearmement,
  porte_1,          // a parcel in the first beam of the measuring gate
  porte_2,          // ... in the second, 40 pixels on: a long parcel is in both for a while
  colis_poussoir,   // a parcel under the pusher
  poussoir_rentre,  // the pusher fully in
  poussoir_sorti,   // ... out
  colis_table,      // a parcel on the turntable
  colis_sortie,     // ... where belt 3 takes it from there
  count
};
}  // namespace entree

namespace sortie {
enum index : int {
  TAPIS_1,  // run the belt: 1 brings, 2 takes the short parcels away, 3 the long ones
  TAPIS_2,
  TAPIS_3,
  POUSSER,        // pusher out
  RECULER,        // pusher in
  TABLE,          // turn the turntable
  VOYANT_MARCHE,  // lamps of the desk
  VOYANT_ATU,
  count
};
}  // namespace sortie

using sorter_plant = plant<entree::index, sortie::index>;
