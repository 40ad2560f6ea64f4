#pragma once
// The signals of the mine by name and by index, for the plant and for programs that do not link it.

// Names in the order of the area, which controllers address by index: 16 inputs (written by the
// plant), then 11 outputs (written by the controller).
extern char table_signaux[27][27];

// Index in the area of each input.
namespace entree {
enum index : int {
  pcA,     // wagon A under its loading hopper
  pcB,     // wagon B under its loading hopper
  pcC,     // wagon C under the unloading hopper of A and B
  pdAB,    // wagon A or B over that hopper
  pedA,    // wagon A waiting on its side of it
  pedB,    // wagon B waiting on its side of it
  pdC,     // wagon C at its unloading station
  wAvide,  // wagon empty
  wBvide,
  wCvide,
  wAplein,  // wagon loaded; there is deliberately none for C
  wBplein,
  dc,    // desk button held down: start cycle
  ac,    // stop cycle
  atu,   // emergency stop
  init,  // initialisation
  count
};
}  // namespace entree

// Index in the area of each output; only the value 1 is active.
namespace sortie {
enum index : int {
  A_DROITE,  // move to the right
  B_DROITE,
  C_DROITE,
  A_GAUCHE,  // move to the left
  B_GAUCHE,
  C_GAUCHE,
  REMPLIR_A,  // fill from the wagon's hopper
  REMPLIR_B,
  VIDER_A,  // empty into wagon C
  VIDER_B,
  VIDER_C,  // empty at C's unloading station
  count
};
}  // namespace sortie
