#pragma once
// A small window that tells the operator to wait during a long task.

#include "bibliocpp/Stringpp.h"

class Fl_Window;

// On screen, near the pointer, from its construction to its destruction. It processes no events in
// between: the caller is at work.
class OFD_wait_form {
 public:
  // 600 * 60 pixels, titled "travail en cours ...". Returns when the message has been painted, or after
  // a second on a display that does not show the window.
  explicit OFD_wait_form(String message);
  ~OFD_wait_form();
  OFD_wait_form(const OFD_wait_form&) = delete;
  OFD_wait_form& operator=(const OFD_wait_form&) = delete;

 private:
  Fl_Window* window;
};
