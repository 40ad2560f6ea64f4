#include "bibliocpp/formspp/io_test_panels.h"

#include <FL/Fl.H>
#include <FL/forms.H>

#include <algorithm>

#include "bibliocpp/formspp/current_group.h"
#include "bibliocpp/formspp/string_dialogs.h"

namespace {

constexpr int line_height = 16;

// Whatever the font, each name stays beside its lamp.
class name_list : public Fl_Browser {
 public:
  using Fl_Browser::Fl_Browser;

 protected:
  int item_height(void*) const override { return line_height; }
};

std::unique_ptr<Fl_Window> make_window(int width, int height) {
  const current_group none(nullptr);
  auto window = std::make_unique<Fl_Window>(width, height);
  window->box(FL_NO_BOX);
  auto* const background = new Fl_Box(0, 0, width, height);
  background->box(FL_FLAT_BOX);
  return window;
}

void show(Fl_Window* window, const char* title) {
  const current_group none(nullptr);  // which showing a window makes it anyway
  fl_show_form(window, FL_PLACE_MOUSE, FL_TRANSIENT, title);
  window->copy_label(title);
}

Fl_Button* add_button(int x, int y, int w, const char* label) {
  auto* const button = new Fl_Button(x, y, w, 20, label);
  button->labelfont(FL_TIMES);
  button->labelsize(10);
  return button;
}

Fl_Check_Browser* add_check_browser(int x, int height) {
  auto* const browser = new Fl_Check_Browser(x, 30, 180, height - 70);
  browser->type(FL_MULTI_BROWSER);
  return browser;
}

}  // namespace

OFD_simulator_input::OFD_simulator_input(int height)
    : own_window(make_window(400, height)), window(own_window.get()) {
  build(0, height);
  show(window, "Inputs Pannel");
}

OFD_simulator_input::OFD_simulator_input(Fl_Window* w, int xoff, int height) : window(w) {
  build(xoff, height);
}

OFD_simulator_input::~OFD_simulator_input() { window->hide(); }

void OFD_simulator_input::build(int xoff, int height) {
  const current_group into(window);
  fl_add_Stext(FL_NO_BOX, xoff + 80, 10, 40, 20, "Signal");
  fl_add_Stext(FL_NO_BOX, xoff + 280, 10, 40, 20, "Sticky");
  signal_marks = add_check_browser(xoff + 10, height);
  sticky_marks = add_check_browser(xoff + 210, height);
  init_button = add_button(xoff + 10, height - 30, 60, "INIT");
  go_button = add_button(xoff + 180, height - 30, 60, "GO");
  quit_button = add_button(xoff + 330, height - 30, 60, "QUIT");
}

void OFD_simulator_input::add(const std::string& name) {
  signal_marks->add(name.c_str());
  sticky_marks->add(name.c_str());
  ++count;
}

void OFD_simulator_input::check(int* init, int* quit, int* values) {
  for (;;) {
    Fl::check();
    const Fl_Widget* const used = Fl::readqueue();
    if (used == quit_button || (used == nullptr && !window->shown())) {
      *quit = 1;
      return;
    }
    *quit = 0;
    if (used == init_button) {
      signal_marks->check_none();
      *init = 1;
      return;
    }
    *init = 0;
    if (used == go_button) return release(values);
    if (used == nullptr) Fl::wait();
  }
}

void OFD_simulator_input::release(int* values) {
  for (int line = 1; line <= count; ++line) {
    values[line - 1] = signal_marks->checked(line);
    if (sticky_marks->checked(line) == 0) signal_marks->checked(line, 0);
  }
}

// NOLINTNEXTLINE(readability-non-const-parameter): callers know it with values that are not const
void OFD_simulator_input::eval(int* quit, int* values) {
  Fl::check();
  const Fl_Widget* const used = Fl::readqueue();
  // A window that the operator closes comes through the queue like a button.
  *quit = used == quit_button || used == window;
  if (*quit != 0) return;
  for (int line = 1; line <= count; ++line) signal_marks->checked(line, values[line - 1] != 0);
}

OFD_simulator_output::OFD_simulator_output(int height, const char* title)
    : own_window(make_window(240, height)), window(own_window.get()) {
  // Both buttons deliberately say "+".
  build(0, height, {70, 30, "+", FL_WHITE});
  show(window, title);
}

OFD_simulator_output::OFD_simulator_output(Fl_Window* w, int xoff, int height, const char* title)
    : window(w) {
  build(xoff, height, {xoff + 150, xoff + 70, "-", FL_RED});
  const current_group into(window);
  fl_add_Stext(FL_NO_BOX, xoff + 80, 10, 40, 20, title);
}

OFD_simulator_output::~OFD_simulator_output() { window->hide(); }

void OFD_simulator_output::build(int xoff, int height, const placing& where) {
  const current_group into(window);
  list = new name_list(xoff + 20, 30, 198, height - 68);
  list->format_char(0);  // names are shown as they are
  const int lines = std::max(1, (height - 85) / line_height);
  for (int line = 0; line < lines; ++line) {
    auto* const lamp = new Fl_Box(xoff + 7, 34 + line_height * line, 10, 12);
    lamp->box(FL_FLAT_BOX);
    lamp->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    lamp->labelfont(FL_TIMES);
    lamp->selection_color(where.lamp_selection);
    lamp->hide();
    lamps.push_back(lamp);
  }
  plus_button = add_button(where.next_x, height - 30, 20, "+");
  plus_button->callback(OFD_simulator_output_callback_plus, this);
  moins_button = add_button(where.previous_x, height - 30, 20, where.previous_label);
  moins_button->callback(OFD_simulator_output_callback_moins, this);
}

int OFD_simulator_output::last_page() const {
  return (static_cast<int>(names.size()) - 1) / static_cast<int>(lamps.size());
}

void OFD_simulator_output::show_page() {
  list->clear();
  for (Fl_Box* const lamp : lamps) lamp->hide();
  const std::size_t first = static_cast<std::size_t>(page) * lamps.size();
  for (std::size_t line = 0; line < lamps.size() && first + line < names.size(); ++line) {
    fl_add_browser_Sline(list, names[first + line]);
    internal_colorise(static_cast<int>(line));
    lamps[line]->show();
  }
}

void OFD_simulator_output::next_page() {
  if (page < last_page()) ++page;
  show_page();
}

void OFD_simulator_output::previous_page() {
  if (page > 0) --page;
  show_page();
}

void OFD_simulator_output::add(const std::string& name) {
  constexpr int not_known_yet = 2;
  names.push_back(name);
  values_shown.push_back(not_known_yet);
  next_page();
}

void OFD_simulator_output::eval(int* values) {
  std::copy_n(values, values_shown.size(), values_shown.begin());
  for (std::size_t line = 0; line < lamps.size(); ++line)
    if (lamps[line]->visible_r()) internal_colorise(static_cast<int>(line));
}

void OFD_simulator_output::internal_colorise(int line) {
  const auto slot = static_cast<std::size_t>(line);
  const std::size_t signal = static_cast<std::size_t>(page) * lamps.size() + slot;
  if (slot >= lamps.size() || signal >= values_shown.size()) return;
  Fl_Box& lamp = *lamps[slot];
  const int value = values_shown[signal];
  const Fl_Color colour = value == 1 ? FL_BLUE : value == 0 ? FL_YELLOW : FL_RED;
  if (lamp.color() == colour) return;
  lamp.color(colour);
  lamp.selection_color(FL_BLACK);
  lamp.redraw();
}

Fl_Button* OFD_simulator_output::my_plus_button() { return plus_button; }
Fl_Button* OFD_simulator_output::my_moins_button() { return moins_button; }

void OFD_simulator_output::check() {}

void OFD_simulator_output_callback_plus(Fl_Widget*, void* panel) {
  static_cast<OFD_simulator_output*>(panel)->next_page();
}

void OFD_simulator_output_callback_moins(Fl_Widget*, void* panel) {
  static_cast<OFD_simulator_output*>(panel)->previous_page();
}
