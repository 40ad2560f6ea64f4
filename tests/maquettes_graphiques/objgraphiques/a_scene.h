#pragma once
// A window with a registry, for tests of the animated objects. Include gtest first.

#include <memory>
#include <ostream>

#include "maquettes_graphiques/objgraphiques.h"
#include "tests/support/a_window.h"

constexpr Fl_Color bg = FL_BACKGROUND_COLOR;

struct a_scene {
  a_window window;
  movepart_manager man;

  std::unique_ptr<movepart> part(double x, double y, int l, int h, Fl_Color colour = FL_BLUE) {
    auto p = std::make_unique<movepart>(man, &window, bg);
    p->add(x, y, l, h, colour);
    return p;
  }
};

// The columns (or rows) of a colour along a line of the window, as first and last; -1 when there is none.
struct extent {
  int first = -1, last = -1;
  bool operator==(const extent&) const = default;
};
inline std::ostream& operator<<(std::ostream& out, const extent& e) {
  return out << e.first << ".." << e.last;
}

inline extent columns(const picture& seen, int y, const rgb& colour) {
  extent found;
  for (int x = 0; x < seen.width(); ++x)
    if (seen.at(x, y) == colour) found = {found.first < 0 ? x : found.first, x};
  return found;
}

inline extent rows(const picture& seen, int x, const rgb& colour) {
  extent found;
  for (int y = 0; y < seen.height(); ++y)
    if (seen.at(x, y) == colour) found = {found.first < 0 ? y : found.first, y};
  return found;
}
