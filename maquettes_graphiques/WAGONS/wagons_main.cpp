// wagons <controleur>: runs the coal mine with the given controller command.

#include <FL/forms.H>
#include <unistd.h>

#include <iostream>
#include <string>

#include "maquettes_graphiques/WAGONS/mine_scene.h"
#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/WAGONS/simulation_cycle.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/start_up.h"

int main(int argc, char** argv) {
  constexpr useconds_t cycle_pause_us = 5000;

  // Before FLTK sees the arguments: all of them are the controller's.
  const std::string chaine_param = joined_arguments(argc, argv);
  watch_for_run_end();
  IOsharemem_server* const mem = init_partage_mem(chaine_param.c_str());
  if (mem == nullptr) {
    std::cerr << "probleme interne de memoire" << std::endl << std::endl;
    return 0;
  }
  end_exchange_at_exit(*mem);

  fl_initialize(&argc, argv, nullptr, nullptr, 0);
  auto* const p_mine = new mine_class;
  mine_scene scene(p_mine);
  simulation run{p_mine, scene, mem};
  show_mine(run);
  do {
    simulation_cycle(run);
    usleep(cycle_pause_us);
  } while (goes_on(run));

  if (p_mine->mine->shown()) fl_hide_form(p_mine->mine);
  mem->sharing_terminate();
  return 0;
}
