#include "maquettes_graphiques/mock_up/run_cycles.h"

#include <unistd.h>

#include "bibliocpp/IOshare.h"
#include "maquettes_graphiques/mock_up/fault.h"
#include "maquettes_graphiques/mock_up/led_cycle.h"
#include "maquettes_graphiques/mock_up/run_end.h"

void run_cycles(Fl_Window& window, IOsharemem_server* area, const std::function<void()>& cycle,
                const std::function<bool()>& goes_on) {
  constexpr useconds_t pause_us = 5000;
  do {
    cycle();
    led() ? pause_for_leader(window) : static_cast<void>(usleep(pause_us));
  } while (goes_on() && !run_has_failed() && !run_end_requested());
  if (window.shown()) window.hide();
  if (area != nullptr) area->sharing_terminate();
  if (led()) tell_leader("end");
}
