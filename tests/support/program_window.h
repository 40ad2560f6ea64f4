#pragma once
// The window of another program, looked at and worked by hand. Points count from its upper left corner,
// wherever it stands.

#include <string>

#include "tests/support/screen.h"

struct program_window {
  window_id id;

  // Waits until it is shown.
  explicit program_window(const std::string& title) : id(wait_for_window(title)) {}
  operator window_id() const { return id; }

  picture look() const { return picture_of(id); }
  rgb at(point p) const { return look().at(p.x, p.y); }
  void move_hand_to(point p) const {
    const place now = place_of(id);
    hands::move_to(now.x + p.x, now.y + p.y);
  }
  void press(point p) const {
    move_hand_to(p);
    hands::press();
  }
  void click(point p) const {
    press(p);
    hands::release();
  }
};
