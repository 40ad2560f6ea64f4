#pragma once
// A shown toolkit window of the test program itself, to draw in and to look at. Include gtest first: the
// toolkit's headers bring macros of X11 that break it.

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/forms.H>
#include <FL/x.H>

#include "tests/support/screen.h"
#include "tests/support/wait.h"

// What a shown window of ours shows, everything drawn so far included.
inline picture look_at(Fl_Window& window) {
  XSync(fl_display, 0);
  return picture_of(fl_xid(&window));
}

// Grey (FL_BACKGROUND_COLOR), shown and painted when constructed, and current for drawing calls.
class a_window : public Fl_Double_Window {
 public:
  explicit a_window(int width = 300, int height = 200) : Fl_Double_Window(width, height, "a window") {
    end();
    show();
    wait_until([this] {
      Fl::wait(0.01);
      return visible_r() && !damage() && look_at(*this).count(grey) > 0;
    });
    make_current();
  }

  picture look() { return look_at(*this); }
  rgb pixel_at(int x, int y) { return look().at(x, y); }
};
