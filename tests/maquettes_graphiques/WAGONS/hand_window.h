#pragma once
// The window of a program that works signals by hand, and an operator in front of it.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/screen.h"
#include "tests/support/wait.h"

constexpr rgb yellow{255, 255, 0};

class hand_window {
 public:
  hand_window(const std::string& title, std::vector<std::string> set_names,
              std::vector<std::string> lamp_names)
      : window(wait_for_window(title)), marks(std::move(set_names)), watched(std::move(lamp_names)) {}

  // To where other windows leave it alone.
  void move_to(int x, int y) const {
    move_window(window, x, y);
    wait_until([&] { return place_of(window).x == x && place_of(window).y == y; });
  }
  void mark(const std::string& name) const { click(20, 40 + 16 * index(marks, name)); }
  void mark_sticky(const std::string& name) const { click(220, 40 + 16 * index(marks, name)); }
  void go() const { click(210, 385); }
  // Exactly these, for once.
  void set(const std::vector<std::string>& names) const {
    for (const std::string& name : names) mark(name);
    go();
  }
  void init() const { click(40, 385); }
  void quit() const { click(360, 385); }
  void next_page() const { click(560, 385); }
  void previous_page() const { click(480, 385); }

  // The lamp of a line of the page, the name's own on the first.
  rgb lamp(const std::string& name) const {
    return picture_of(window).at(412, 40 + 16 * index(watched, name));
  }
  bool lamp_becomes(const std::string& name, const rgb& colour) const {
    return wait_until([&] { return lamp(name) == colour; });
  }
  // Waits until exactly these lamps are blue, and all others yellow.
  bool blue_become(const std::vector<std::string>& names) const {
    return wait_until([&] {
      const picture seen = picture_of(window);
      for (const std::string& name : watched) {
        const bool lit = std::find(names.begin(), names.end(), name) != names.end();
        if (seen.at(412, 40 + 16 * index(watched, name)) != (lit ? blue : yellow)) return false;
      }
      return true;
    });
  }

  window_id window;

 private:
  static int index(const std::vector<std::string>& names, const std::string& name) {
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
  }
  void click(int x, int y) const {
    const place where = place_of(window);
    hands::click(where.x + x, where.y + y);
  }

  std::vector<std::string> marks, watched;
};
