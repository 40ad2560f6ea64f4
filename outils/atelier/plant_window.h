#pragma once
// The plant's window as others on the display see it.

#include <X11/Xlib.h>
#include <sys/types.h>

#include <optional>

#include "outils/atelier/layout.h"

class display {
 public:
  display();  // the one that DISPLAY names
  ~display();
  display(const display&) = delete;
  display& operator=(const display&) = delete;

  bool is_open() const { return connection != nullptr; }

  // The part of the screen that windows may use: without panels, where a window manager tells.
  rectangle usable() const;
  // The largest shown window that says it belongs to the process; none when there is none.
  std::optional<Window> window_of(pid_t process) const;
  rectangle place_of(Window window) const;
  // Without a window manager one pixel: the toolkit keeps its windows that far from the screen's edges.
  frame frame_of(Window window) const;
  // Asks for the window's corner, inside its frame, to be there: a window manager may do it later, or not
  // at all.
  void move(Window window, int x, int y) const;
  // Asks for one window to be the next below another.
  void put_below(Window window, Window other) const;

 private:
  Display* connection;
};
