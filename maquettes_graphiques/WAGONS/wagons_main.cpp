// wagons <controleur>: runs the coal mine with the given controller command.

#include <FL/forms.H>

#include <iostream>
#include <string>

#include "maquettes_graphiques/WAGONS/mine_scene.h"
#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/WAGONS/simulation_cycle.h"
#include "maquettes_graphiques/mock_up/run_cycles.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/start_up.h"

int main(int argc, char** argv) {
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
  run_cycles(
      *p_mine->mine, mem, [&run] { simulation_cycle(run); }, [&run] { return goes_on(run) != 0; });
  return 0;
}
