#include "bibliocpp/formspp/string_dialogs.h"

#include <FL/Fl.H>
#include <FL/Fl_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Multi_Browser.H>
#include <FL/fl_ask.H>
#include <FL/fl_draw.H>
#include <FL/forms.H>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string_view>

#include "bibliocpp/Stringpp.h"
#include "bibliocpp/formspp/current_group.h"

// A text used as the format is what two of these boxes promise.
#pragma GCC diagnostic ignored "-Wformat-security"

void fl_show_Smessages(const std::string& text) { fl_message(text.c_str()); }

void fl_show_Salert(const std::string& text) { fl_alert(text.c_str()); }

void fl_show_ms() { fl_message("Created by the wagons authors\n\nThe wagons project"); }

int fl_show_Squestion(const std::string& text, int) {
  return fl_choice("%s", fl_no, fl_yes, nullptr, text.c_str());
}

std::string fl_show_Sinput(const std::string& prompt, const std::string& initial) {
  const char* const answer = fl_input("%s", initial.c_str(), prompt.c_str());
  return answer == nullptr ? "" : answer;
}

int fl_show_int(const char* prompt, int initial) {
  const char* const answer = fl_input("%s", std::to_string(initial).c_str(), prompt);
  if (answer == nullptr) return initial;
  char* end = nullptr;
  const long value = std::strtol(answer, &end, 10);
  return end == answer || value < INT_MIN || value > INT_MAX ? initial : static_cast<int>(value);
}

double fl_show_double(const char* prompt, double initial) {
  const char* const answer = fl_input("%s", std::to_string(initial).c_str(), prompt);
  if (answer == nullptr) return initial;
  char* end = nullptr;
  const double value = std::strtod(answer, &end);
  return end == answer ? initial : value;
}

double fl_show_double(const std::string& prompt, double initial) {
  return fl_show_double(prompt.c_str(), initial);
}

namespace {

void add_lines(Fl_Widget* browser, std::string_view text) {
  do {
    fl_add_browser_Sline(browser, std::string(next_record(text, '\n')));
  } while (!text.empty());
}

void save_message(const std::string& text) {
  const char* const path = fl_show_file_selector("save message", "", "*.txt", "");
  if (path != nullptr) std::ofstream(path) << text;
}

}  // namespace

void fl_show_Sbigmessages(const std::string& text, int width) {
  const current_group none(nullptr);
  const auto window = std::make_unique<Fl_Window>(6 * width + 10, 570, "Messages");
  auto* const browser = new Fl_Multi_Browser(5, 10, 6 * width, 500);
  const auto* const quit = new Fl_Button(250, 530, 50, 30, "Quit");
  const auto* const save = new Fl_Button(80, 530, 50, 30, "save");
  window->end();
  window->set_modal();
  add_lines(browser, text);
  window->show();
  while (window->shown()) {
    const Fl_Widget* const used = Fl::readqueue();
    if (used == nullptr) Fl::wait();
    if (used == save) save_message(text);
    if (used == quit) return;
  }
}

void fl_set_Sinput(Fl_Widget* input, const std::string& text) {
  static_cast<Fl_Input*>(input)->value(text.c_str());
}

void fl_set_object_Slabel(Fl_Widget* w, const std::string& text, int n) {
  const bool cut = n >= 0 && static_cast<std::size_t>(n) < text.size();
  w->copy_label(cut ? text.substr(0, static_cast<std::size_t>(n)).c_str() : text.c_str());
}

Fl_Widget* fl_add_Stext(Fl_Boxtype type, int x, int y, int w, int h, const std::string& label) {
  auto* const text = new Fl_FormsText(type, x, y, w, h);
  text->copy_label(label.c_str());
  return text;
}

void fl_add_browser_Sline(Fl_Widget* browser, const std::string& line) {
  static_cast<Fl_Browser*>(browser)->add(line.c_str());
}

void fl_replace_browser_Sline(Fl_Widget* browser, int n, const std::string& line) {
  static_cast<Fl_Browser*>(browser)->text(n, line.c_str());
}

void fl_drw_String(Fl_Align align, int x, int y, int w, int h, Fl_Color colour, int size, Fl_Font style,
                   const std::string& text) {
  fl_font(style, size);
  fl_color(colour);
  fl_draw(text.c_str(), x, y, w, h, align, nullptr, 1);
}
