#pragma once
// The charts as a widget: the wheel zooms about the pointer, a drag moves them, a double click shows them
// all.

#include <FL/Fl_Widget.H>
#include <cairo.h>

#include <memory>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/drawing.h"
#include "bibliocpp/grafcet_file/situation.h"

class grafcet_canvas : public Fl_Widget {
 public:
  // Shows the situation of the moment whenever it is drawn; both outlive the widget.
  grafcet_canvas(int x, int y, int w, int h, const grafcet_file::program& some_charts,
                 const grafcet_file::situation& a_situation);

  int handle(int event) override;

 protected:
  void draw() override;
  void resize(int new_x, int new_y, int new_w, int new_h) override;

 private:
  void show_all();
  void zoom(double factor, int about_x, int about_y);
  void move(double by_x, double by_y);
  void drop_unlit() { unlit.reset(); }

  const grafcet_file::program& charts;
  const grafcet_file::situation& now;
  grafcet_file::drawing drawn;          // laid out for the room there was when all was shown last
  double scale = 1, left = 0, top = 0;  // of the drawing's corner, in pixels of the widget
  bool whole = true;                    // until the operator chooses a part
  int held_x = 0, held_y = 0;
  // The charts without their lights, painted once for a place and a scale.
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> unlit{nullptr, cairo_surface_destroy};
};
