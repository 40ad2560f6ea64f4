#pragma once
// The real simulator with a real controller, and an operator in front of it.

#include <algorithm>
#include <array>
#include <atomic>
#include <sstream>
#include <string>
#include <vector>

#include "maquettes_graphiques/WAGONS/mine_signals.h"
#include "tests/support/area.h"
#include "tests/support/process.h"
#include "tests/support/program_window.h"
#include "tests/support/wait.h"

// Centres of the panel's buttons.
namespace buttons {
constexpr point init{760, 59}, start{760, 99}, stop{760, 139}, emergency{760, 179}, empty_by_hand{800, 252},
    redraw{800, 312}, quit{800, 362}, about{400, 362};
}

struct running_mine {
  // Shown, and running its cycle. A controller that is none leaves the outputs to the test.
  explicit running_mine(const std::string& controller = "true",
                        const std::vector<std::string>& environment = {})
      : simulator({built("wagons"), controller}, environment),
        area(wait_for_area_of(simulator.pid())),
        window("mine de charbon"),
        where(place_of(window)) {
    area.cycles(2);
  }

  void hold(point button) const { window.press(button); }
  void click(point button) const { window.click(button); }
  // As long as a hand does, so that a controller sees it.
  void push(point button) const {
    hold(button);
    area.cycles(20);
    hands::release();
    area.cycles(2);
  }
  // Turns a wagon's roller (0 to 2) to a speed in tenths of a pixel a cycle, which is a step of the roller
  // and a pixel of the hand. The roller is let go when the mine has told the new speed: a hand that is faster
  // than its cycle turns nothing.
  bool turn(std::size_t wagon, int tenths) {
    const int way = tenths - speeds[wagon];
    if (way == 0) return true;
    std::ostringstream told;
    told << "vitesse "
         << "ABC"[wagon] << ": " << tenths / 10.0 << "\n";
    const point roller{80 + 80 * static_cast<int>(wagon), 360};
    hold(roller);
    area.cycles(2);
    window.move_hand_to({roller.x + way, roller.y});
    const bool turned = wait_until([&] { return simulator.errors().ends_with(told.str()); });
    hands::release();
    speeds[wagon] = tenths;
    return area.cycles(2) && turned;
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
  bool shows(std::initializer_list<int> active) const {
    return std::all_of(active.begin(), active.end(), [this](int input) { return area.input(input) == 1; });
  }
  bool all_home() const { return shows({entree::pcA, entree::pcB, entree::pcC}); }
  bool at_rest() const {
    return std::all_of(area->output, area->output + sortie::count,
                       [](std::int32_t& value) { return std::atomic_ref(value).load() == 0; });
  }
  // Waits until wagon C has been emptied n times at its station.
  bool hauls(int n) const {
    while (n-- > 0)
      if (!input_becomes(entree::wCvide, 0) || !input_becomes(entree::wCvide, 1)) return false;
    return true;
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
  program_window window;
  place where;
  std::array<int, 3> speeds{15, 15, 30};
};
