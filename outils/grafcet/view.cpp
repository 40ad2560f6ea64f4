#include "outils/grafcet/view.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Light_Button.H>
#include <FL/x.H>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>
#include <system_error>
#include <utility>

#include "bibliocpp/language.h"
#include "outils/grafcet/grafcet_canvas.h"
#include "outils/grafcet/values_panel.h"

using grafcet_file::program;
using grafcet_file::situation;

namespace {

constexpr double refresh_s = 0.04;
constexpr int first_w = 1100, first_h = 760, panel_w = 200, bar_h = 32, state_h = 22, gap = 4, button_w = 90;

class view_window : public Fl_Double_Window {
 public:
  view_window(const program& some_charts, shared_situation& a_situation, situation first, int a_wish_end)
      : Fl_Double_Window(first_w, first_h),
        charts(some_charts),
        shared(a_situation),
        now(std::move(first)),
        wish_end(a_wish_end),
        canvas(0, top(), w() - panel_w, h() - top() - state_h, charts, now),
        panel(w() - panel_w, top(), panel_w, h() - top() - state_h),
        state(0, h() - state_h, w(), state_h),
        buttons(0, 0, w(), top()),
        step(gap, gap, button_w, bar_h - 2 * gap, tr("Pas")),
        run(2 * gap + button_w, gap, button_w, bar_h - 2 * gap, tr("Marche")),
        pause(3 * gap + 2 * button_w, gap, button_w, bar_h - 2 * gap, tr("Pause")),
        space(4 * gap + 3 * button_w, gap, 1, 1) {
    buttons.end();
    buttons.resizable(space);
    end();
    if (wish_end == -1) remove(buttons);
    resizable(canvas);
    size_range(400, 200);
    state.box(FL_FLAT_BOX);
    state.align(FL_ALIGN_INSIDE | FL_ALIGN_LEFT | FL_ALIGN_CLIP);
    state.labelsize(12);
    step.callback(ask<wish::one_step>, this);
    run.callback(ask<wish::run>, this);
    pause.callback(ask<wish::pause>, this);
    for (Fl_Light_Button* const choice : {&run, &pause}) choice->type(FL_RADIO_BUTTON);
    pause.setonly();
    step.shortcut(' ');
    show_values();
    Fl::add_timeout(refresh_s, tick, this);
  }
  ~view_window() override { Fl::remove_timeout(tick, this); }

 private:
  int top() const { return wish_end == -1 ? 0 : bar_h; }

  template <wish what>
  static void ask(Fl_Widget*, void* window) {
    const auto& self = *static_cast<view_window*>(window);
    const char byte = static_cast<char>(what);
    if (write(self.wish_end, &byte, 1) < 0 && errno == EPIPE) default_callback(nullptr, nullptr);
  }

  static void tick(void* window) {
    auto& self = *static_cast<view_window*>(window);
    Fl::repeat_timeout(refresh_s, tick, window);
    self.look_again();
  }

  // Another copy than the one that is shown: a look may fail half-way.
  void look_again() {
    if (!shared.look(fresh = now)) return;
    const bool other_lights = fresh.active != now.active || fresh.receptive != now.receptive ||
                              fresh.outputs != now.outputs || fresh.values != now.values;
    std::swap(now, fresh);
    if (other_lights) canvas.redraw();
    show_values();
  }

  void show_values() {
    panel.update(values_of(charts, now));
    const std::string text =
        tr("lot {} · {} évolution(s) · {}", {std::to_string(now.batches), std::to_string(now.evolutions),
                                             now.stable ? tr("stable") : tr("pas encore stable")});
    if (state.label() == nullptr || text != state.label()) state.copy_label(text.c_str());
  }

  const program& charts;
  shared_situation& shared;
  situation now, fresh;
  int wish_end;
  grafcet_canvas canvas;
  values_panel panel;
  Fl_Box state;
  Fl_Group buttons;
  Fl_Button step;
  Fl_Light_Button run, pause;
  Fl_Box space;
};

int show_window(const program& charts, shared_situation& shown, const situation& first,
                const std::string& title, int wish_end) {
  Display* const display = XOpenDisplay(nullptr);
  if (display == nullptr) {
    std::cerr << tr("grafcet: pas d'affichage : les GRAFCET marchent sans vue\n");
    return 1;
  }
  fl_open_display(display);
  view_window window(charts, shown, first, wish_end);
  window.copy_label(("grafcet - " + title).c_str());
  window.show();
  return Fl::run();
}

}  // namespace

view_process::view_process(const program& charts, const situation& first, shared_situation& shown,
                           const std::string& title, bool by_steps) {
  int ends[2] = {-1, -1};
  if (by_steps && pipe2(ends, O_CLOEXEC) != 0)
    throw std::system_error(errno, std::generic_category(), "pipe");
  std::cout.flush();
  const pid_t us = getpid();
  child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != us) _exit(0);
    if (by_steps) close(ends[0]);
    _exit(show_window(charts, shown, first, title, ends[1]));
  }
  if (by_steps) close(ends[1]);
  wishes_end = ends[0];
}

view_process::~view_process() {
  if (wishes_end != -1) close(wishes_end);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}
