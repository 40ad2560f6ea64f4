#include "maquettes_graphiques/mock_up/run_cycles.h"

#include <unistd.h>

#include "bibliocpp/IOshare.h"

void run_cycles(Fl_Window& window, IOsharemem_server* area, const std::function<void()>& cycle,
                const std::function<bool()>& goes_on) {
  constexpr useconds_t pause_us = 5000;
  do {
    cycle();
    usleep(pause_us);
  } while (goes_on());
  if (window.shown()) window.hide();
  if (area != nullptr) area->sharing_terminate();
}
