#pragma once
// Works on modal windows while the test itself waits inside the call that shows them. Include gtest first.

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "tests/support/screen.h"

using steps = std::vector<std::function<void()>>;

// Calls `show`. Each step is taken in another modal window than the one before, once it is painted; it has
// the keyboard then.
template <typename Show>
auto operate(Show show, steps to_take) {
  struct progress {
    steps ahead;
    const Fl_Window *before = nullptr, *focused = nullptr;
    static void look(void* data) {
      auto& self = *static_cast<progress*>(data);
      const Fl_Window* const modal = Fl::modal();
      Fl::repeat_timeout(0.002, look, data);
      XWindowAttributes seen{};
      if (self.ahead.empty() || modal == nullptr || modal == self.before || modal->damage()) return;
      if (!XGetWindowAttributes(fl_display, fl_xid(modal), &seen) || seen.map_state != IsViewable) return;
      if (std::exchange(self.focused, modal) != modal) return hands::focus(fl_xid(modal));
      // Keys that come together with the keyboard would be lost.
      if (Fl::focus() == nullptr || Fl::focus()->window() != modal) return;
      self.ahead.front()();
      self.ahead.erase(self.ahead.begin());
      self.before = modal;
      self.focused = nullptr;
    }
    ~progress() {
      Fl::remove_timeout(look, this);
      EXPECT_TRUE(ahead.empty());
    }
  } now{std::move(to_take)};
  Fl::add_timeout(0, progress::look, &now);
  return show();
}

// A place of the modal window.
inline void click_in_box(int x, int y) { hands::click(Fl::modal()->x_root() + x, Fl::modal()->y_root() + y); }
