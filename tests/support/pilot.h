#pragma once
// Works on a modal window while the test itself waits inside the call that shows it. Include gtest first.

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>
#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <functional>
#include <utility>

#include "tests/support/screen.h"

// Takes its steps in order, each as soon as it can be taken, whenever the toolkit waits for events.
class pilot {
 public:
  pilot() { Fl::add_timeout(0, look, this); }
  ~pilot() {
    Fl::remove_timeout(look, this);
    EXPECT_TRUE(steps.empty()) << steps.size() << " steps were not taken";
  }
  pilot(const pilot&) = delete;
  pilot& operator=(const pilot&) = delete;

  // Waits until it is so.
  pilot& when(std::function<bool()> is_so) {
    steps.push_back(std::move(is_so));
    return *this;
  }
  pilot& then(const std::function<void()>& action) {
    return when([action] {
      action();
      return true;
    });
  }
  // Waits until a modal window is shown, painted and has the keyboard.
  pilot& box() {
    return when([] {
      const Fl_Window* const modal = Fl::modal();
      if (modal == nullptr || !modal->visible_r() || modal->damage()) return false;
      hands::focus(fl_xid(modal));
      return true;
    });
  }
  pilot& key(const std::string& name) {
    return then([name] { hands::key(name); });
  }
  pilot& type(const std::string& ascii) {
    return then([ascii] { hands::type(ascii); });
  }
  // A place of the modal window.
  pilot& click(int x, int y) {
    return then([x, y] { hands::click(Fl::modal()->x_root() + x, Fl::modal()->y_root() + y); });
  }
  // As a window manager asks a window to close.
  pilot& close() {
    return then([] { hands::close(fl_xid(Fl::modal())); });
  }

 private:
  static void look(void* data) {
    auto& self = *static_cast<pilot*>(data);
    if (std::chrono::steady_clock::now() > self.end) {
      while (Fl::first_window() != nullptr) Fl::first_window()->hide();  // lets the test fail
      return;
    }
    if (!self.steps.empty() && self.steps.front()()) self.steps.pop_front();
    // Not repeat_timeout(), which makes up for delays: what a step has caused must reach the display first.
    Fl::add_timeout(0.002, look, data);
  }

  std::deque<std::function<bool()>> steps;
  std::chrono::steady_clock::time_point end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
};
