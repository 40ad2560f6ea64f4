#pragma once
// Drawing that reaches no display, for cycles that nobody looks at: it is most of what a cycle costs.

#include <FL/Fl_Device.H>

// As long as it lives every drawing call of this process does nothing; clipping regions stay as they are.
// Not to be alive while the toolkit draws its own widgets, which count as drawn then.
class unseen_drawing {
 public:
  unseen_drawing();
  ~unseen_drawing() { fl_graphics_driver = before; }
  unseen_drawing(const unseen_drawing&) = delete;
  unseen_drawing& operator=(const unseen_drawing&) = delete;

 private:
  Fl_Graphics_Driver* const before = fl_graphics_driver;
};

// Meanwhile drawing is seen again: for a box that comes up while a scene moves unseen.
class seen_drawing {
 public:
  seen_drawing();
  ~seen_drawing() { fl_graphics_driver = before; }
  seen_drawing(const seen_drawing&) = delete;
  seen_drawing& operator=(const seen_drawing&) = delete;

 private:
  Fl_Graphics_Driver* const before = fl_graphics_driver;
};
