#pragma once
// A control desk: buttons, switches, lamps, counters and rollers, each tied to a variable of the mock-up.
//
//   Fl_Double_Window window(900, 420);
//   desk operators(760, 20);
//   operators.button("marche", seen[entree::marche]);
//   operators.counter("colis", parcels);
//   operators.quit_and_about();
//   window.end();
//
// To be made after the window and before its end(): the toolkit's current group takes the widgets and owns
// them. They come one below the other, each `width` * `height` pixels, from (x, y) down, and a window that is
// too low for them grows; at() goes on elsewhere, and size() gives the next ones another size. Texts are
// copied, variables are not: they are to live as long as heed() is called.

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Light_Button.H>
#include <FL/Fl_Roller.H>
#include <FL/forms.H>

#include <functional>
#include <string>
#include <utility>
#include <vector>

class desk {
 public:
  desk(int x, int y, int width = 110, int height = 26);
  desk(const desk&) = delete;
  desk& operator=(const desk&) = delete;
  desk& at(int x, int y);
  desk& size(int width, int height);

  // Momentary: true while it is held down. The caption stands on its right.
  Fl_Button* button(const std::string& label, bool& held, const std::string& caption = "");
  // For what is done once: pressed() is called in the cycle that takes it.
  Fl_Button* button(const std::string& label, std::function<void()> pressed);
  // A switch with a light. When it is not the operator's, it only shows.
  Fl_Light_Button* toggle(const std::string& label, bool& on, bool by_hand = true);
  // A square of 10 pixels that lights up, its label on its right.
  Fl_Box* lamp(const std::string& label, const bool& lit, Fl_Color colour = FL_YELLOW);
  // A number in a frame, its label on its right.
  Fl_Box* counter(const std::string& label, const int& number);
  // From `low` to `high` in steps, `value` at first; its label below.
  Fl_Roller* roller(const std::string& label, double& value, double low, double high, double step);
  // "A propos" (the credits) and "Quit" side by side, each half as wide.
  void quit_and_about();

  // Once a cycle: shows what lamps and counters are to show, lets the toolkit work (the window may be closed
  // after it), writes all variables, and takes one activated widget. Several widgets activated in the same
  // cycle come out one a cycle.
  void heed();
  bool quit_pressed() const { return finished; }

 private:
  template <typename Widget>
  Widget* add(const std::string& label, int w, int h);
  void add_text(const std::string& label, int x, int w) const;
  void below(int distance);
  Fl_Button* plain_button(const std::string& label, int w);

  int next_x, next_y, width, height;
  std::vector<std::function<void()>> to_show, to_read;
  std::vector<std::pair<const Fl_Button*, std::function<void()>>> actions;
  bool finished = false;
};
