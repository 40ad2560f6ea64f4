#pragma once
// The real simulator with a real controller, and an operator in front of it.

#include <string>
#include <vector>

#include "maquettes_graphiques/WAGONS/mine_signals.h"
#include "tests/support/area.h"
#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

// Centres of the panel's buttons, from the window's corner.
struct button {
  int x, y;
};
namespace buttons {
constexpr button init{760, 59}, start{760, 99}, stop{760, 139}, emergency{760, 179}, empty_by_hand{800, 252},
    redraw{800, 312}, quit{800, 362}, about{400, 362};
}

struct running_mine {
  // Shown, and running its cycle. A controller that is none leaves the outputs to the test.
  explicit running_mine(const std::string& controller = "true",
                        const std::vector<std::string>& environment = {})
      : simulator({built("wagons"), controller}, environment),
        area(wait_for_area_of(simulator.pid())),
        window(wait_for_window("mine de charbon")),
        where(place_of(window)) {
    area.cycles(2);
  }

  void hold(const button& b) const {
    hands::move_to(where.x + b.x, where.y + b.y);
    hands::press();
  }
  void click(const button& b) const { hands::click(where.x + b.x, where.y + b.y); }
  // As long as a hand does, so that a controller sees it.
  void push(const button& b) const {
    hold(b);
    area.cycles(20);
    hands::release();
    area.cycles(2);
  }
  // Presses "Quit"; the status of the simulator, or -1 when the run is not over in time. The operator is
  // promised two seconds; a test machine that builds at the same time gets more.
  int quit() {
    click(buttons::quit);
    if (!wait_until([this] { return area.clock() == -1; }, std::chrono::seconds(5))) return -1;
    return simulator.wait();
  }

  bool input_becomes(int input, int value) const {
    return wait_until([&] { return area.input(input) == value; });
  }
  // Keeps an output active until an input has the value.
  bool drive(int output, int input, int value = 1) const {
    area.output(output, 1);
    const bool come = input_becomes(input, value);
    area.output(output, 0);
    return area.cycles(2) && come;
  }
  // The modal box that is open, waited for; 0 when none comes.
  window_id box() const {
    window_id found = 0;
    wait_until([&] { return (found = other_window_than({window})) != 0; });
    return found;
  }
  picture look() const { return screen_at(where); }

  process simulator;
  open_area area;
  window_id window;
  place where;
};
