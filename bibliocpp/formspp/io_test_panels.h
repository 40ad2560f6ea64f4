#pragma once
// Two panels to drive and watch a controller's signals by hand.
//
// Each is either a window of its own, shown at once near the pointer, or a set of widgets embedded in a
// window of the caller, moved right by `xoff` pixels; that window is the caller's to show and has to
// outlive the panel, whose destruction hides it. `height` is that of the panel, in pixels. The panels
// take what the operator does from FLTK's queue (Fl::readqueue): what they do not know is dropped.

#include <FL/Fl_Box.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Browser.H>
#include <FL/Fl_Window.H>

#include <memory>
#include <string>
#include <vector>

// Sets signals by check marks and releases them with "GO". 400 pixels wide.
class OFD_simulator_input {
 public:
  // Titled "Inputs Pannel".
  explicit OFD_simulator_input(int height);
  OFD_simulator_input(Fl_Window* w, int xoff, int height);
  ~OFD_simulator_input();
  OFD_simulator_input(const OFD_simulator_input&) = delete;
  OFD_simulator_input& operator=(const OFD_simulator_input&) = delete;

  // Appends a signal: one line in "Signal" and one in "Sticky".
  void add(const std::string& name);

  // Waits for one of the buttons, handling events meanwhile.
  // "GO": *quit = *init = 0, and `values` takes the marks of "Signal", 1 or 0 for each signal added;
  // signals not marked "Sticky" are then cleared, so that a signal is delivered once unless it sticks.
  // "INIT": *quit = 0, *init = 1, and "Signal" is cleared ("Sticky" is not).
  // "QUIT", or a closed window: *quit = 1.
  void check(int* init, int* quit, int* values);

  // Looks once, without waiting. "QUIT", or a closed window: *quit = 1. Otherwise *quit = 0, and
  // "Signal" shows `values`, one for each signal added: a mark for any value but 0.
  void eval(int* quit, int* values);

 private:
  void build(int xoff, int height);
  void release(int* values);

  std::unique_ptr<Fl_Window> own_window;  // none when embedded
  Fl_Window* window;
  Fl_Button* quit_button = nullptr;
  Fl_Button* go_button = nullptr;
  Fl_Button* init_button = nullptr;
  Fl_Check_Browser* signal_marks = nullptr;
  Fl_Check_Browser* sticky_marks = nullptr;
  int count = 0;
};

// Shows a list of signals page by page, each with a lamp: blue for 1, yellow for 0, red for anything
// else. 240 pixels wide; a page has (height - 85) / 16 lines, one at least.
class OFD_simulator_output {
 public:
  OFD_simulator_output(int height, const char* title);
  OFD_simulator_output(Fl_Window* w, int xoff, int height, const char* title);
  ~OFD_simulator_output();
  OFD_simulator_output(const OFD_simulator_output&) = delete;
  OFD_simulator_output& operator=(const OFD_simulator_output&) = delete;

  // Appends a signal, not known yet (red), and turns at most one page towards it.
  void add(const std::string& name);
  // Takes one value for each signal added, and colours the lamps that can be seen.
  void eval(int* values);

  // Turn the page; do nothing but refresh it at either end. The buttons do the same.
  void next_page();
  void previous_page();
  Fl_Button* my_plus_button();
  Fl_Button* my_moins_button();

  // Does nothing; the counterpart of the input panel's.
  void check();
  // Gives the lamp of one line of the page, from 0, the colour of its signal; a line without a signal is
  // left alone.
  void internal_colorise(int line);

 private:
  struct placing {
    int next_x, previous_x;
    const char* previous_label;
    Fl_Color lamp_selection;
  };
  void build(int xoff, int height, const placing& where);
  void show_page();
  int last_page() const;

  std::unique_ptr<Fl_Window> own_window;  // none when embedded
  Fl_Window* window;
  std::vector<std::string> names;
  std::vector<int> values_shown;
  int page = 0;
  std::vector<Fl_Box*> lamps;  // one for each line of a page
  Fl_Browser* list = nullptr;
  Fl_Button* plus_button = nullptr;
  Fl_Button* moins_button = nullptr;
};

// What the page buttons call; `panel` is their OFD_simulator_output.
void OFD_simulator_output_callback_plus(Fl_Widget*, void* panel);
void OFD_simulator_output_callback_moins(Fl_Widget*, void* panel);
