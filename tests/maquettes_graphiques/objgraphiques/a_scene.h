#pragma once
// A window with a registry, for tests of the animated objects. Include gtest first.

#include <memory>

#include "maquettes_graphiques/objgraphiques.h"
#include "tests/maquettes_graphiques/objgraphiques/drawing_calls.h"
#include "tests/support/a_window.h"

constexpr Fl_Color bg = FL_BACKGROUND_COLOR;

struct a_scene {
  a_window elsewhere{60, 40};
  a_window window;
  movepart_manager man;

  std::unique_ptr<movepart> part(double x, double y, int l, int h, Fl_Color colour = FL_BLUE) {
    auto p = std::make_unique<movepart>(man, &window, bg);
    p->add(x, y, l, h, colour);
    return p;
  }
  // The calls of what makes its window current itself: everything but paint() and some fixtures.
  template <typename Draw>
  std::string calls(Draw draw) {
    elsewhere.make_current();
    return drawing_calls::of(draw, window);
  }
  // The calls of what draws into whatever window is current.
  template <typename Paint>
  std::string calls_here(Paint paint) {
    window.make_current();
    return drawing_calls::of(paint, window);
  }
};
