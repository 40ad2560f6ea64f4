#pragma once
// The signals of the mine, and the area in which they are exchanged with its controller.

#include <cstdint>

class IOsharemem_server;

// Names in the order of the area, which controllers address by index: 16 inputs (written by the
// plant), then 11 outputs (written by the controller).
extern char table_signaux[27][27];

// Index in the area of each input.
namespace entree {
enum : int {
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
enum : int {
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

// Output k as read by the last actuator_set().
extern std::int32_t actionneur[sortie::count];

// Creates the area of the mine and starts the controller command `param` (see
// share_with_controller). An empty command gives null, after three lines on the standard error
// stream: "ERREUR de parametre:", " wagons <controleur>" and an empty one.
IOsharemem_server* init_partage_mem(const char* param);

// Reads all outputs into `actionneur`, in order.
void actuator_set(IOsharemem_server* mem);

// Half-seconds since midnight UTC, 0 to 172799. The name promises tenths; users of this service
// rely on halves.
long heure10();
