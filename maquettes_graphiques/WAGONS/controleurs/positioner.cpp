#include "maquettes_graphiques/WAGONS/controleurs/positioner.h"

void positioner::observe(bool at_home) {
  remember_motion();
  if (was_at_home && !at_home) side_of_home = opposite(last_motion);
  was_at_home = at_home;
  home_known = home_known || at_home;
}

void positioner::seek(bool at_station, direction d) {
  ++waited;
  switch (phase) {
    case phases::stopped:
      heading = d;
      patience = home_known ? longest_journey : first_search;
      searching = false;
      phase = at_station ? phases::braking : phases::moving;
      waited = 0;
      break;
    case phases::moving:
      if (at_station) {
        phase = phases::braking;
        waited = 0;
      } else if (waited >= patience) {
        patience *= 2;
        turn_round();
      }
      break;
    case phases::braking:
      if (!at_station)
        turn_round();
      else if (waited >= settling_time)
        phase = phases::settled;
      break;
    case phases::settled:
      if (!at_station) turn_round();
      break;
  }
}

// A wagon may leave home in the very batch in which it is sent elsewhere.
void positioner::stop() {
  remember_motion();
  phase = phases::stopped;
}

void positioner::remember_motion() {
  if (motion() != none) last_motion = motion();
}

void positioner::turn_round() {
  heading = opposite(heading);
  searching = true;
  phase = phases::moving;
  waited = 0;
}
