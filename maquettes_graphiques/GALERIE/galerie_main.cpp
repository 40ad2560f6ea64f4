// galerie [controleur]: every animated object at work, moved by the operator or by the given controller
// command.

#include <FL/forms.H>

#include "maquettes_graphiques/GALERIE/gallery_cycle.h"
#include "maquettes_graphiques/mock_up/run_cycles.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/start_up.h"

int main(int argc, char** argv) {
  // Before FLTK sees the arguments: all of them are the controller's.
  const std::string command = joined_arguments(argc, argv);
  watch_for_run_end();
  IOsharemem_server* const mem = share_gallery(command);
  if (mem != nullptr) end_exchange_at_exit(*mem);

  fl_initialize(&argc, argv, nullptr, nullptr, 0);
  gallery run(mem);
  show_gallery(run);
  run_cycles(
      run.panel.window, mem, [&run] { gallery_cycle(run); }, [&run] { return goes_on(run); });
}
