#include "maquettes_graphiques/GALERIE/gallery_signals.h"

const std::array<const char*, entree::count> input_names = {
    "piece_tremie", "piece_tapis", "piece_poste",  "poussoir_rentre", "poussoir_sorti", "piece_table",
    "piece_prise",  "bras_depart", "bras_arrivee", "piece_chariot",   "chariot_quai",   "chariot_tremie",
    "cuve_vide",    "cuve_pleine", "cuve_deborde", "cuve_chaude",     "rd_rentre",      "rd_sorti",
    "ld_rentre",    "ld_sorti",    "bd_rentre",    "bd_sorti",        "td_rentre",      "td_sorti",
    "rs_rentre",    "rs_sorti",    "ls_rentre",    "ls_sorti",        "bs_rentre",      "bs_sorti",
    "ts_rentre",    "ts_sorti"};

const std::array<const char*, sortie::count> output_names = {
    "OUVRIR_TRAPPE", "TAPIS",     "POUSSER",        "RECULER",        "TABLE",         "BRAS_ALLER",
    "BRAS_RETOUR",   "AIMANT",    "CHARIOT_DROITE", "CHARIOT_GAUCHE", "VIDER_CHARIOT", "REMPLIR",
    "VIDER",         "MELANGER",  "CHAUFFER",       "RD_SORTIR",      "RD_RENTRER",    "LD_SORTIR",
    "LD_RENTRER",    "BD_SORTIR", "BD_RENTRER",     "TD_SORTIR",      "TD_RENTRER",    "RS_SORTIR",
    "LS_SORTIR",     "BS_SORTIR", "TS_SORTIR"};
