#pragma once
// One pass of the simulator: from the operator's last action to the wagons' next position.

#include "bibliocpp/IOshare.h"
#include "maquettes_graphiques/WAGONS/mine.h"
#include "maquettes_graphiques/WAGONS/mine_scene.h"

// What a cycle works on; none of it is owned.
struct simulation {
  mine_class* p_mine;
  mine_scene& scene;
  IOsharemem_server* mem;
  int termine = 0;  // 1: the run ends with this cycle. Set by "Quit" and by every fault, never reset
};

// Shows the window, draws the scene once and sets the speed rollers to the wagons' speeds (range 0.1
// to 3.0 pixels a cycle, step 0.1).
void show_mine(simulation& run);

// 1 while another cycle is to run: nothing has ended the run and the window is shown.
int goes_on(const simulation& run);

// The whole cycle but for the pause that follows it: takes at most one activated widget, publishes
// the inputs, reads the outputs, commands the wagons, fills and empties them, draws, advances the
// wagons. A fault of the controller shows its text in a modal box and returns when that is closed;
// meanwhile nothing is published, nothing moves and the scene stays on screen.
void simulation_cycle(simulation& run);
