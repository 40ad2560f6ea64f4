#pragma once
// A mock-up from the first argument of main() to the end of its run, around its signals (signal_table.h).

#include <FL/Fl_Window.H>
#include <FL/forms.H>

#include <functional>
#include <list>
#include <memory>
#include <string>

#include "bibliocpp/IOshare.h"
#include "maquettes_graphiques/mock_up/desk.h"
#include "maquettes_graphiques/mock_up/run_cycles.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/signal_table.h"
#include "maquettes_graphiques/mock_up/start_up.h"

template <typename Input, typename Output>
class plant {
 public:
  // Creates the area and starts the controller that the arguments name (start_up.h). Without arguments there
  // is neither: then values.wanted is nobody's but the mock-up's own. To be made before the first window.
  plant(int argc, char** argv) : plant(joined_arguments(argc, argv)) {
    fl_initialize(&argc, argv, nullptr, nullptr, 0);
  }
  // The same with the command itself, without a look at the toolkit's options.
  explicit plant(const std::string& command) {
    watch_for_run_end();
    if (command.empty()) return;
    std::list<std::string> inputs(signal_names<Input>.begin(), signal_names<Input>.end());
    std::list<std::string> outputs(signal_names<Output>.begin(), signal_names<Output>.end());
    area = share_with_controller(inputs, outputs, command);
    end_exchange_at_exit(*area);
  }

  struct {
    signal_values<Input> seen;     // what the controller is to see
    signal_values<Output> wanted;  // what it commands: 1 counts, nothing else does
  } values;

  bool has_controller() const { return area != nullptr; }
  IOsharemem_server* its_area() const { return area; }  // null when there is none

  // Publishes what is seen as one batch, then reads what is wanted.
  void exchange() {
    if (area == nullptr) return;
    for_each_signal<Input>([this](Input i) { area->setreset_input(i, values.seen[i]); });
    area->inputs_go();
    for_each_signal<Output>([this](Output k) { values.wanted[k] = area->output_value(k) == 1; });
  }

  // Runs until the operator presses Quit or closes the window, or something else ends the run (run_cycles.h).
  // In each cycle the desk is heeded first, then comes cycle(), while the window is shown.
  void run(Fl_Window& window, desk& operators, const std::function<void()>& cycle) {
    if (!window.shown()) window.show();
    run_cycles(
        window, area,
        [&] {
          operators.heed();
          if (window.shown()) cycle();
        },
        [&] { return window.shown() && !operators.quit_pressed(); });
  }

 private:
  IOsharemem_server* area = nullptr;  // lives until the process ends, as the controller may
};
