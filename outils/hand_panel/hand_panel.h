#pragma once
// One window to work signals by hand: check marks on the left set some, lamps on the right follow others.

#include <FL/Fl_Double_Window.H>

#include <functional>
#include <vector>

#include "bibliocpp/formspp/io_test_panels.h"
#include "bibliocpp/list_String.h"

class hand_panel {
 public:
  // Shown at once. 640 * 405 pixels; 20 lamps a page, the first page first.
  hand_panel(const char* title, const list_String& set_names, const char* lamps_title,
             const list_String& lamp_names);

  // Until the operator quits or closes the window, or a signal asks for the end (see
  // watch_for_run_end): calls `release` with a value, 1 or 0, for each signal set, in order, whenever the
  // operator presses "GO", and with zeros after "INIT"; and calls `watch` every 10 ms, which ends this
  // with false. Sleeps in between.
  void run(const std::function<void(const std::vector<int>&)>& release, std::function<bool()> watch);

  // Colours the lamps: one value for each signal watched.
  void light(std::vector<int> values);

 private:
  static void look(void* panel);

  Fl_Double_Window window;
  OFD_simulator_input marks;
  OFD_simulator_output lamps;
  std::vector<int> values;
  std::function<bool()> watching;
};
