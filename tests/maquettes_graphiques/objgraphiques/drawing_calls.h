#pragma once
// Notes the toolkit's drawing calls instead of carrying them out, so that a test compares whole pictures,
// call by call: "blue 150 100 50 20; black line 157 100 157 119". A filled rectangle has no word of its own.
// Include gtest first.

#include <FL/Fl_Device.H>
#include <FL/forms.H>

#include <map>
#include <sstream>
#include <string>
#include <utility>

class drawing_calls : public Fl_Graphics_Driver {
 public:
  // What draw() draws; what it draws into another window than this one is marked "elsewhere".
  template <typename Draw>
  static std::string of(Draw draw, const Fl_Window& window) {
    drawing_calls notes;
    notes.here = &window;
    notes.color(FL_BLACK);
    Fl_Graphics_Driver* const screen = std::exchange(fl_graphics_driver, &notes);
    draw();
    fl_graphics_driver = screen;
    return notes.text.str();
  }

 private:
  template <typename... Numbers>
  void note(const char* call, Numbers... numbers) {
    static const std::map<int, const char*> names{{FL_BLACK, "black"}, {FL_RED, "red"},     {FL_BLUE, "blue"},
                                                  {FL_WHITE, "white"}, {FL_GREEN, "green"}, {49, "grey"}};
    text << (text.tellp() > 0 ? "; " : "") << (Fl_Window::current() == here ? "" : "elsewhere ");
    text << names.at(static_cast<int>(Fl_Graphics_Driver::color())) << call;
    ((text << " " << numbers), ...);
  }
  void color(Fl_Color c) override { Fl_Graphics_Driver::color(c); }
  void rectf(int x, int y, int w, int h) override { note("", x, y, w, h); }
  void rect(int x, int y, int w, int h) override { note(" rect", x, y, w, h); }
  void line(int x, int y, int x1, int y1) override { note(" line", x, y, x1, y1); }
  void pie(int x, int y, int w, int h, double from, double to) override {
    note(" pie", x, y, w, h, from, to);
  }
  void arc(int x, int y, int w, int h, double from, double to) override {
    note(" arc", x, y, w, h, from, to);
  }
  void circle(double x, double y, double r) override { note(" circle", x, y, r); }
  void begin_line() override { note(" begin_line"); }
  void end_line() override { note(" end_line"); }
  void line_style(int style, int width, char*) override { note(" line_style", style, width); }

  const Fl_Window* here = nullptr;
  std::ostringstream text;
};
