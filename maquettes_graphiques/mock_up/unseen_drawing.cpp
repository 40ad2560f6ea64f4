#include "maquettes_graphiques/mock_up/unseen_drawing.h"

#include <FL/fl_draw.H>

namespace {

// Colour and font are left to the base class, which only notes them. What is not overridden here draws
// through what is.
class nothing : public Fl_Graphics_Driver {
  void rect(int, int, int, int) override {}
  void rectf(int, int, int, int) override {}
  void line_style(int, int, char*) override {}
  void xyline(int, int, int) override {}
  void xyline(int, int, int, int) override {}
  void xyline(int, int, int, int, int) override {}
  void yxline(int, int, int) override {}
  void yxline(int, int, int, int) override {}
  void yxline(int, int, int, int, int) override {}
  void line(int, int, int, int) override {}
  void line(int, int, int, int, int, int) override {}
  void point(int, int) override {}
  void loop(int, int, int, int, int, int) override {}
  void loop(int, int, int, int, int, int, int, int) override {}
  void polygon(int, int, int, int, int, int) override {}
  void polygon(int, int, int, int, int, int, int, int) override {}
  void begin_points() override {}
  void begin_line() override {}
  void begin_loop() override {}
  void begin_polygon() override {}
  void begin_complex_polygon() override {}
  void vertex(double, double) override {}
  void transformed_vertex(double, double) override {}
  void curve(double, double, double, double, double, double, double, double) override {}
  void circle(double, double, double) override {}
  void arc(double, double, double, double, double) override {}
  void arc(int, int, int, int, double, double) override {}
  void pie(int, int, int, int, double, double) override {}
  void gap() override {}
  void end_points() override {}
  void end_line() override {}
  void end_loop() override {}
  void end_polygon() override {}
  void end_complex_polygon() override {}
  void push_clip(int, int, int, int) override {}
  void push_no_clip() override {}
  void pop_clip() override {}
};

Fl_Graphics_Driver* no_display() {
  static nothing driver;
  return &driver;
}

}  // namespace

unseen_drawing::unseen_drawing() : drawing_elsewhere(no_display()) {}

seen_drawing::seen_drawing() : drawing_elsewhere(Fl_Display_Device::display_device()->driver()) {}
