#pragma once
// Drawing that reaches no display, for cycles that nobody looks at: it is most of what a cycle costs.

#include <FL/Fl_Device.H>

class drawing_elsewhere {
 public:
  explicit drawing_elsewhere(Fl_Graphics_Driver* there) { fl_graphics_driver = there; }
  ~drawing_elsewhere() { fl_graphics_driver = before; }
  drawing_elsewhere(const drawing_elsewhere&) = delete;
  drawing_elsewhere& operator=(const drawing_elsewhere&) = delete;

 private:
  Fl_Graphics_Driver* const before = fl_graphics_driver;
};

// As long as it lives every drawing call of this process does nothing; clipping regions stay as they are.
// Not to be alive while the toolkit draws its own widgets, which count as drawn then.
struct unseen_drawing : drawing_elsewhere {
  unseen_drawing();
};

// Meanwhile drawing is seen again: for a box that comes up while a scene moves unseen.
struct seen_drawing : drawing_elsewhere {
  seen_drawing();
};
