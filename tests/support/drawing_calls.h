#pragma once
// Notes what is drawn instead of drawing it: whole sequences can be compared, and no window is needed.

#include <FL/Fl_Device.H>
#include <FL/fl_draw.H>

#include <sstream>
#include <string>

// Every drawing call as long as it lives: "color 88; rectf 10 20 30 40; ".
class drawing_calls : public Fl_Graphics_Driver {
 public:
  drawing_calls() { fl_graphics_driver = this; }
  ~drawing_calls() override { fl_graphics_driver = before; }
  std::string taken() { return std::exchange(notes, std::ostringstream()).str(); }

 private:
  void note(const char* name, auto... values) {
    notes << name;
    ((notes << ' ' << values), ...);
    notes << "; ";
  }
  void color(Fl_Color c) override { Fl_Graphics_Driver::color(c), note("color", c); }
  void font(Fl_Font f, Fl_Fontsize s) override { Fl_Graphics_Driver::font(f, s), note("font", f, s); }
  void line_style(int style, int width, char*) override { note("style", style, width); }
  void push_clip(int x, int y, int w, int h) override { note("clip", x, y, w, h); }
  void pop_clip() override { note("unclip"); }
  void line(int x, int y, int x1, int y1) override { note("line", x, y, x1, y1); }
  void rect(int x, int y, int w, int h) override { note("rect", x, y, w, h); }
  void rectf(int x, int y, int w, int h) override { note("rectf", x, y, w, h); }
  void arc(int x, int y, int w, int h, double a, double b) override { note("arc", x, y, w, h, a, b); }
  void pie(int x, int y, int w, int h, double a, double b) override { note("pie", x, y, w, h, a, b); }
  void begin_polygon() override { note("polygon"); }
  void vertex(double x, double y) override { note("vertex", x, y); }
  void end_polygon() override { note("end"); }
  void draw(const char* text, int size, int x, int y) override {
    note("text", std::string(text, static_cast<std::size_t>(size)), x, y);
  }

  Fl_Graphics_Driver* const before = fl_graphics_driver;
  std::ostringstream notes;
};
