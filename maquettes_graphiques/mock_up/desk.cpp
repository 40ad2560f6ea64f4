#include "maquettes_graphiques/mock_up/desk.h"

#include <FL/Fl.H>

#include "bibliocpp/formspp.h"

namespace {
constexpr int gap = 5, lamp_size = 10, text_height = 15, label_size = 12;
}

desk::desk(int x, int y, int its_width, int its_height)
    : next_x(x), next_y(y), width(its_width), height(its_height) {}

desk& desk::at(int x, int y) {
  next_x = x;
  next_y = y;
  return *this;
}

desk& desk::size(int its_width, int its_height) {
  width = its_width;
  height = its_height;
  return *this;
}

// The next widget comes so far down; the window is to hold the last one.
void desk::below(int distance) {
  next_y += distance;
  Fl_Group* const around = Fl_Group::current();
  if (around->as_window() != nullptr && next_y - gap > around->h()) around->size(around->w(), next_y);
}

void desk::add_text(const std::string& label, int x, int w) const {
  auto* const text = new Fl_Box(x, next_y, w, height);
  text->copy_label(label.c_str());
  text->labelsize(label_size);
  text->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
}

template <typename Widget>
Widget* desk::add(const std::string& label, int w, int h) {
  auto* const widget = new Widget(next_x, next_y, w, h);
  widget->copy_label(label.c_str());
  widget->labelsize(label_size);
  return widget;
}

Fl_Button* desk::plain_button(const std::string& label, int w) {
  auto* const its = add<Fl_Button>(label, w, height);
  its->labelsize(FL_NORMAL_SIZE);
  return its;
}

Fl_Button* desk::button(const std::string& label, std::function<void()> pressed) {
  Fl_Button* const its = plain_button(label, width);
  actions.emplace_back(its, std::move(pressed));
  below(height + gap);
  return its;
}

Fl_Button* desk::button(const std::string& label, bool& held, const std::string& caption) {
  if (!caption.empty()) add_text(caption, next_x + width + gap, width);
  Fl_Button* const its = plain_button(label, width);
  to_read.emplace_back([its, &held] { held = its->value() != 0; });
  below(height + gap);
  return its;
}

Fl_Light_Button* desk::toggle(const std::string& label, bool& on, bool by_hand) {
  auto* const its = add<Fl_Light_Button>(label, width, height);
  its->value(on);
  below(height + gap);
  if (by_hand) {
    to_read.emplace_back([its, &on] { on = its->value() != 0; });
  } else {
    its->set_output();
    to_show.emplace_back([its, &on] { its->value(on); });
  }
  return its;
}

Fl_Box* desk::lamp(const std::string& label, const bool& lit, Fl_Color colour) {
  auto* const its = add<Fl_Box>(label, lamp_size, lamp_size);
  its->box(FL_BORDER_BOX);
  its->align(FL_ALIGN_RIGHT);
  below(lamp_size + gap);
  to_show.emplace_back([its, &lit, colour] {
    const Fl_Color now = lit ? colour : FL_BACKGROUND_COLOR;
    if (its->color() == now) return;
    its->color(now);
    its->redraw();
  });
  return its;
}

Fl_Box* desk::counter(const std::string& label, const int& number) {
  add_text(label, next_x + width / 2 + gap, width / 2);
  auto* const its = add<Fl_Box>("", width / 2, height);
  its->box(FL_DOWN_BOX);
  its->color(FL_WHITE);
  below(height + gap);
  to_show.emplace_back([its, &number] {
    if (const std::string now = std::to_string(number); now != its->label()) its->copy_label(now.c_str());
  });
  return its;
}

Fl_Roller* desk::roller(const std::string& label, double& value, double low, double high, double step) {
  auto* const its = add<Fl_Roller>(label, width, height);
  its->type(FL_HORIZONTAL);
  its->range(low, high);
  its->step(step);
  its->value(value);
  its->labelsize(FL_NORMAL_SIZE);
  below(height + text_height + gap);
  to_read.emplace_back([its, &value] { value = its->value(); });
  return its;
}

void desk::quit_and_about() {
  const int half = (width - gap) / 2;
  actions.emplace_back(plain_button("A propos", half), fl_show_ms);
  next_x += half + gap;
  actions.emplace_back(plain_button("Quit", half), [this] { finished = true; });
  next_x -= half + gap;
  below(height + gap);
}

void desk::heed() {
  for (const auto& show : to_show) show();
  Fl::check();
  for (const auto& read : to_read) read();
  const FL_OBJECT* const taken = Fl::readqueue();
  for (const auto& [widget, act] : actions)
    if (widget == taken) act();
}
