#include "outils/grafcet/stepping.h"

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/language.h"
#include "outils/grafcet/area_signals.h"
#include "outils/grafcet/view.h"

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds cycle = 5ms, look_every = 50ms;

// The next line of the plant's that matters here; faults and errors are told.
plant_line news(led_plant& plant) {
  for (;;) {
    const auto line = plant.next(look_every);
    if (!line) continue;
    if (line->what == plant_line::kind::fault || line->what == plant_line::kind::error)
      std::cerr << line->text << std::endl;
    else if (line->what != plant_line::kind::other)
      return *line;
  }
}

bool is_over(plant_line::kind what) {
  return what == plant_line::kind::end || what == plant_line::kind::gone;
}

class operator_wishes {
 public:
  explicit operator_wishes(int a_descriptor) : descriptor(a_descriptor) {}

  // Waits for leave to evolve once more; false when the plant ends meanwhile.
  bool leave(led_plant& plant) {
    for (;;) {
      pollfd wish_comes{.fd = descriptor, .events = POLLIN, .revents = 0};
      const int wait_ms = running ? 0 : static_cast<int>(look_every.count());
      if (descriptor != -1 && poll(&wish_comes, 1, wait_ms) > 0) {
        if (take() == wish::one_step && !running) return true;
        continue;
      }
      if (running) return true;
      if (const auto line = plant.next(0ms); line && is_over(line->what)) return false;
    }
  }
  bool runs() const { return running; }

 private:
  wish take() {
    char byte = 0;
    if (read(descriptor, &byte, 1) == 1) {
      if (byte != static_cast<char>(wish::one_step)) running = byte == static_cast<char>(wish::run);
      return static_cast<wish>(byte);
    }
    descriptor = -1;  // the window is closed: nobody is left to wait for
    running = true;
    return wish::run;
  }

  int descriptor;
  bool running = false;
};

}  // namespace

int area_of(led_plant& plant) {
  const plant_line line = news(plant);
  if (line.what != plant_line::kind::area)
    throw std::runtime_error(tr("la maquette s'est terminée sans zone"));
  return static_cast<int>(line.number);
}

void lead(led_plant& plant, IOsharemem_client& area, const grafcet_file::program& charts,
          shared_situation& shown, int wishes) {
  grafcet_file::evolution at_work(charts);
  area_signals signals(area, charts);
  operator_wishes hand(wishes);
  for (;;) {
    const plant_line line = news(plant);
    if (is_over(line.what)) return;
    if (line.what != plant_line::kind::pause || area.receive() < 0) continue;
    at_work.begin(signals.inputs(), line.number * std::chrono::microseconds(cycle).count());
    for (bool more = true; more && at_work.now().evolutions < grafcet_file::evolution::most_evolutions;) {
      if (!hand.leave(plant)) return;
      more = at_work.evolve();
      if (hand.runs())
        shown.hand_over_if_asked(at_work.now());
      else
        shown.hand_over(at_work.now());
    }
    signals.answer(at_work.now().outputs);
    plant.say("go\n");
    if (hand.runs()) std::this_thread::sleep_for(cycle);
  }
}
