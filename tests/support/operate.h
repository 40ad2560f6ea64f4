#pragma once
// Works on windows while the test itself waits inside the call that shows them. Include gtest first.

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "tests/support/screen.h"

inline bool is_painted(const Fl_Window* window) {
  XWindowAttributes seen{};
  return window != nullptr && !window->damage() && XGetWindowAttributes(fl_display, fl_xid(window), &seen) &&
         seen.map_state == IsViewable;
}

// Takes its steps in order, each as soon as it can be taken, whenever the toolkit waits for events; all of
// them have to be taken by its end.
class script {
 public:
  script() { Fl::add_timeout(0, look, this); }
  ~script() {
    Fl::remove_timeout(look, this);
    EXPECT_TRUE(steps.empty());
  }
  script(const script&) = delete;
  script& operator=(const script&) = delete;

  script& when(std::function<bool()> is_so) { return steps.push_back(std::move(is_so)), *this; }
  script& then(const std::function<void()>& action) {
    return when([=] { return action(), true; });
  }
  // In another modal window than before, once it is painted and has the keyboard.
  script& in_a_window() {
    return when([this] {
      const Fl_Window* const modal = Fl::modal();
      if (modal == before || !is_painted(modal)) return false;
      if (std::exchange(focused, modal) != modal) return hands::focus(fl_xid(modal)), false;
      // Keys that come together with the keyboard would be lost.
      if (Fl::focus() == nullptr || !modal->contains(Fl::focus())) return false;
      focused = nullptr;
      return before = modal, true;
    });
  }

 private:
  static void look(void* data) {
    auto& steps = static_cast<script*>(data)->steps;
    if (!steps.empty() && steps.front()()) steps.pop_front();
    // Not repeat_timeout(), which makes up for delays: what a step has caused must reach the display first.
    Fl::add_timeout(0.002, look, data);
  }

  std::deque<std::function<bool()>> steps;
  const Fl_Window *before = nullptr, *focused = nullptr;
};

// Calls `show` and takes each action in a modal window of its own.
auto operate(auto show, const std::vector<std::function<void()>>& actions) {
  script to_take;
  for (const auto& action : actions) to_take.in_a_window().then(action);
  return show();
}

inline void click_in(const Fl_Window& window, int x, int y) {
  hands::click(window.x_root() + x, window.y_root() + y);
}
inline void click_in_box(int x, int y) { click_in(*Fl::modal(), x, y); }
