#include "maquettes_graphiques/mock_up/led_cycle.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Valuator.H>
#include <FL/x.H>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>
#include <vector>

#include "bibliocpp/language.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/scene_window.h"
#include "maquettes_graphiques/mock_up/unseen_drawing.h"

namespace {

struct leader {
  int in, out;
  std::string received;  // and not yet obeyed
  bool gone = false;
  std::int64_t cycles = 0;
  std::vector<Fl_Button*> held;
  bool blind = false;
};

// A modal box keeps the cycle, and with it the pause, from coming: whatever is written closes it.
void close_box(int, void*) {
  if (Fl::modal() != nullptr) Fl::modal()->hide();
}

std::optional<leader> from_environment() {
  const char* const text = std::getenv("MOCK_UP_LED");
  if (text == nullptr) return {};
  leader its{};
  int length = 0;
  const bool read = std::sscanf(text, "%d,%d%n", &its.in, &its.out, &length) == 2 && text[length] == '\0';
  if (!read || fcntl(its.in, F_SETFD, FD_CLOEXEC) != 0 || fcntl(its.out, F_SETFD, FD_CLOEXEC) != 0) {
    std::cerr << tr("MOCK_UP_LED={} : il faut deux descripteurs de fichiers ouverts, comme 3,4\n", {text});
    std::exit(1);
  }
  fcntl(its.in, F_SETFL, fcntl(its.in, F_GETFL) | O_NONBLOCK);
  unsetenv("MOCK_UP_LED");
  Fl::add_fd(its.in, FL_READ, close_box);
  return its;
}

std::optional<leader>& present() {
  static std::optional<leader> its = from_environment();
  return its;
}

// The next line that has come whole; null when none has.
std::optional<std::string> next_line(leader& its) {
  for (;;) {
    if (const auto end = its.received.find('\n'); end != std::string::npos) {
      std::string line = its.received.substr(0, end);
      its.received.erase(0, end + 1);
      return line;
    }
    char some[512];
    const ssize_t count = read(its.in, some, sizeof some);
    if (count > 0)
      its.received.append(some, static_cast<std::size_t>(count));
    else if (count == 0 || errno != EINTR) {
      its.gone = count == 0 || errno != EAGAIN;
      return {};
    }
  }
}

// All that a hand can work, in the order of their creation.
template <typename Widget>
void find_all(Fl_Group& group, std::vector<Widget*>& found) {
  for (int n = 0; n < group.children(); ++n) {
    Fl_Widget* const child = group.child(n);
    if (Fl_Group* const inner = child->as_group()) find_all(*inner, found);
    auto* const widget = dynamic_cast<Widget*>(child);
    if (widget != nullptr && widget->label() != nullptr && widget->takesevents()) found.push_back(widget);
  }
}

// What cannot be obeyed, as the leader is told.
struct refusal {
  std::string text;
};

template <typename Widget>
Widget& labelled(Fl_Window& window, std::string_view label) {
  std::vector<Widget*> all;
  find_all(window, all);
  const auto found = std::find_if(all.begin(), all.end(), [&](Widget* w) { return w->label() == label; });
  if (found != all.end()) return **found;
  std::string labels;
  for (const Widget* w : all) labels.append(" \"").append(w->label()).append("\"");
  throw refusal{tr("\"{}\" n'est pas parmi :{}", {std::string(label), labels})};
}

bool is_momentary(const Fl_Button& button) {
  return button.type() != FL_TOGGLE_BUTTON && button.type() != FL_RADIO_BUTTON;
}

// A button does under these two what it does under a mouse; but several can be held at once.
void hold(leader& its, Fl_Button& button) {
  if (std::count(its.held.begin(), its.held.end(), &button) != 0) throw refusal{tr("il est déjà tenu")};
  its.held.push_back(&button);
  button.value(button.type() == FL_RADIO_BUTTON || !button.value());
  button.set_changed();
  if ((button.when() & FL_WHEN_CHANGED) != 0) button.do_callback();
}

void release(leader& its, Fl_Button& button) {
  if (std::erase(its.held, &button) == 0) throw refusal{tr("il n'est pas tenu")};
  if (is_momentary(button)) button.value(0);
  if (button.type() == FL_RADIO_BUTTON) button.setonly();
  button.set_changed();
  if ((button.when() & FL_WHEN_RELEASE) != 0) button.do_callback();
}

// "<number> <label>"
void set(Fl_Window& window, std::string_view words) {
  double wanted = 0;
  const auto [end, error] = std::from_chars(words.begin(), words.end(), wanted);
  if (error != std::errc{} || end == words.end() || *end != ' ')
    throw refusal{tr("set <nombre> <étiquette>")};
  words.remove_prefix(static_cast<std::size_t>(end - words.begin()) + 1);
  auto& valuator = labelled<Fl_Valuator>(window, words);
  if (!(valuator.clamp(wanted) == wanted))
    throw refusal{
        tr("il va de {} à {}", {std::to_string(valuator.minimum()), std::to_string(valuator.maximum())})};
  if (valuator.value(valuator.round(wanted)) == 0)
    return;  // was there already: a hand would not have moved it
  valuator.set_changed();
  if ((valuator.when() & FL_WHEN_CHANGED) != 0) valuator.do_callback();
}

// A scene that could not be painted again as it stands is drawn all the same.
void go_blind(leader& its, Fl_Window& window) {
  const auto* const scene = dynamic_cast<scene_window*>(&window);
  its.blind = scene != nullptr && scene->has_scene();
}

// The display has it when this is told.
void look(leader& its, Fl_Window& window) {
  its.blind = false;
  window.redraw();
  Fl::flush();
  XSync(fl_display, 0);
  tell_leader("seen");
}

// Whether the line was leave to go on, or the end of the run.
bool obey(leader& its, Fl_Window& window, std::string_view line) {
  const std::size_t blank = std::min(line.find(' '), line.size());
  const std::string_view verb = line.substr(0, blank);
  const std::string_view rest = line.substr(std::min(blank + 1, line.size()));
  if (verb == "hold")
    hold(its, labelled<Fl_Button>(window, rest));
  else if (verb == "release")
    release(its, labelled<Fl_Button>(window, rest));
  else if (verb == "set")
    set(window, rest);
  else if (line == "blind")
    go_blind(its, window);
  else if (line == "look")
    look(its, window);
  else if (line == "quit")
    request_run_end();
  else if (line != "go")
    throw refusal{tr("il faut hold, release, set, blind, look, quit ou go, pas \"{}\"", {std::string(line)})};
  return line == "go" || line == "quit";
}

}  // namespace

bool led() { return present().has_value(); }

void tell_leader(const std::string& line) {
  std::string text;
  for (const char c : line) {
    if (c == '\\') text += '\\';
    c == '\n' ? text += "\\n" : text += c;
  }
  text += '\n';
  // As much as a pipe holds: a leader that does not read holds the cycle up, as it does by not writing.
  for (std::string_view rest = text; !rest.empty();) {
    const ssize_t count = write(present()->out, rest.data(), rest.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

void pause_for_leader(Fl_Window& window) {
  leader& its = *present();
  static std::optional<unseen_drawing> unseen;  // from leave to the next pause
  unseen.reset();
  tell_leader("pause " + std::to_string(++its.cycles));
  while (window.shown() && !run_end_requested()) {
    const std::optional<std::string> line = next_line(its);
    if (its.gone) return request_run_end();
    try {
      if (line && obey(its, window, *line)) {
        if (its.blind) unseen.emplace();
        return;
      }
    } catch (const refusal& why) {
      tell_leader("error " + why.text);
    }
    if (!line) Fl::wait();
  }
}
