#include "outils/hand_panel/hand_panel.h"

#include <FL/Fl.H>

#include <algorithm>
#include <utility>

#include "maquettes_graphiques/mock_up/run_end.h"

namespace {

constexpr int height = 405;
constexpr int marks_width = 400;
constexpr int lamps_width = 240;
constexpr double look_period_s = 0.01;

}  // namespace

hand_panel::hand_panel(const char* title, const list_String& set_names, const char* lamps_title,
                       const list_String& lamp_names)
    : window(marks_width + lamps_width, height, title),
      marks(&window, 0, height),
      lamps(&window, marks_width, height, lamps_title),
      values(set_names.size()) {
  window.end();
  for (const String& name : set_names) marks.add(name);
  for (const String& name : lamp_names) {
    lamps.add(name);
    lamps.previous_page();  // an addition turns the page
  }
  window.show();
}

void hand_panel::run(const std::function<void(const std::vector<int>&)>& release,
                     std::function<bool()> watch) {
  watching = std::move(watch);
  Fl::add_timeout(look_period_s, look, this);
  for (;;) {
    int init = 0;
    int quit = 0;
    marks.check(&init, &quit, values.data());
    if (quit != 0) break;
    if (init != 0) std::fill(values.begin(), values.end(), 0);
    release(values);
  }
  Fl::remove_timeout(look, this);
}

// A closed window ends the waiting for the operator.
void hand_panel::look(void* panel) {
  auto& self = *static_cast<hand_panel*>(panel);
  if (run_end_requested() || !self.watching()) return self.window.hide();
  Fl::repeat_timeout(look_period_s, look, panel);
}

void hand_panel::light(std::vector<int> signal_values) { lamps.eval(signal_values.data()); }
