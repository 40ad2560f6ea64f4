#pragma once
// The signals of the gallery, in the order of the area: inputs are seen by the controller, outputs are
// its commands. Without a controller the operator's buttons, one an output, take their place.

#include "maquettes_graphiques/mock_up/plant.h"

namespace entree {
enum index : int {
  piece_tremie,     // piece in the hopper, on the trapdoor
  piece_tapis,      // piece on the belt
  piece_poste,      // ... at its end, under the pusher
  poussoir_rentre,  // pusher fully in
  poussoir_sorti,   // ... out
  piece_table,      // piece on the turntable
  piece_prise,      // ... where the arm takes it
  bras_depart,      // arm over the turntable
  bras_arrivee,     // ... over the wagon's dock
  piece_chariot,    // wagon loaded
  chariot_quai,     // wagon at the dock, on the right
  chariot_tremie,   // ... below the hopper, on the left
  cuve_vide,        // tank at its lower mark or below
  cuve_pleine,      // ... at its upper mark or above
  cuve_deborde,     // ... at the brim
  cuve_chaude,      // the liquid is hot
  rd_rentre,        // the jacks of the stand, each fully in and fully out
  rd_sorti,
  ld_rentre,
  ld_sorti,
  bd_rentre,
  bd_sorti,
  td_rentre,
  td_sorti,
  rs_rentre,
  rs_sorti,
  ls_rentre,
  ls_sorti,
  bs_rentre,
  bs_sorti,
  ts_rentre,
  ts_sorti,
  count
};
}  // namespace entree

namespace sortie {
enum index : int {
  OUVRIR_TRAPPE,
  TAPIS,    // run the belt
  POUSSER,  // pusher out
  RECULER,  // pusher in
  TABLE,    // turn the turntable
  BRAS_ALLER,
  BRAS_RETOUR,
  AIMANT,  // the arm's magnet holds the piece
  CHARIOT_DROITE,
  CHARIOT_GAUCHE,
  VIDER_CHARIOT,  // below the hopper: the piece goes up into it
  REMPLIR,        // tank's upper valve open
  VIDER,          // tank's lower valve open
  MELANGER,
  CHAUFFER,
  RD_SORTIR,  // the jacks of the stand
  RD_RENTRER,
  LD_SORTIR,
  LD_RENTRER,
  BD_SORTIR,
  BD_RENTRER,
  TD_SORTIR,
  TD_RENTRER,
  RS_SORTIR,
  LS_SORTIR,
  BS_SORTIR,
  TS_SORTIR,
  count
};
}  // namespace sortie

using sensors = signal_values<entree::index>;
using commands = signal_values<sortie::index>;
using gallery_plant = plant<entree::index, sortie::index>;
