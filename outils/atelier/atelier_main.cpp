// atelier [--maquette wagons|galerie|PATH] COMMAND...: a plant with a controller under watch, and the chart
// of its signals beside it, until the plant's window closes.

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "bibliocpp/area_view.h"
#include "bibliocpp/language.h"
#include "outils/atelier/command_line.h"
#include "outils/atelier/plant_window.h"
#include "outils/child_processes/descendants.h"
#include "outils/child_processes/launch.h"
#include "outils/child_processes/programs.h"
#include "outils/child_processes/signal_inbox.h"

namespace {

using namespace std::chrono_literals;

void tell(const std::string& sentence) { std::cerr << "atelier: " + sentence + "\n"; }

std::optional<std::string> find_or_tell(const std::string& name) {
  auto path = find_program(name);
  if (!path) tell(tr("programme introuvable : {}", {name}));
  return path;
}

// A plant joins its arguments and hands them to a shell.
std::vector<std::string> plant_command(const std::string& plant, const std::string& watcher,
                                       const std::vector<std::string>& controller) {
  std::vector<std::string> words{plant, quoted_for_shell(watcher)};
  for (const std::string& word : controller) words.push_back(quoted_for_shell(word));
  return words;
}

// The area that one of ours has created: the plant itself, or what a script named as the plant has started.
std::optional<area_entry> our_area() {
  const std::vector<pid_t> ours = descendants();
  for (const area_entry& area : areas())
    if (std::find(ours.begin(), ours.end(), area.creator) != ours.end() && creator_runs(area)) return area;
  return std::nullopt;
}

std::string geometry(const rectangle& r) {
  return std::to_string(r.w) + "x" + std::to_string(r.h) + "+" + std::to_string(r.x) + "+" +
         std::to_string(r.y);
}

// Moves the plant out of the chart's way and opens the chart, once the plant's window is there.
class chart_opener {
 public:
  explicit chart_opener(const display& a_screen) : screen(a_screen) {}

  const std::optional<area_entry>& area() const { return found; }
  bool done() const { return opened && (below_plant || chart < 0); }

  void look() {
    if (!found) found = our_area();
    if (!found || done()) return;
    const std::optional<Window> window = screen.window_of(found->creator);
    if (!window) return;
    opened ? lower_chart(*window) : open_chart_beside(*window);
  }
  void forget(pid_t ended) {
    if (ended == chart) chart = -1;
  }
  void close() const {
    if (chart > 0) kill(chart, SIGTERM);
  }

 private:
  void open_chart_beside(Window window) {
    const rectangle plant = screen.place_of(window);
    const layout places = lay_out(screen.usable(), plant.w, plant.h, screen.frame_of(window));
    const bool there = plant.x == places.plant_x && plant.y == places.plant_y;
    // A plant that has just shown its window may place it itself once more. A window manager that places
    // windows as it likes is left to it.
    if (!there && ++tries < 50) return screen.move(window, places.plant_x, places.plant_y);
    opened = true;
    if (const auto program = find_or_tell("chronogramme"))
      chart = launch({*program, "--geometry", geometry(places.chart), "-automemlink",
                      std::to_string(found->ident)},
                     SIGTERM)
                  .pid;
  }

  // A fault of the first moment has its box open before the chart is: it must not be covered.
  void lower_chart(Window plant) {
    const std::optional<Window> window = screen.window_of(chart);
    if (!window) return;
    screen.put_below(*window, plant);
    below_plant = true;
  }

  const display& screen;
  std::optional<area_entry> found;
  bool opened = false, below_plant = false;
  pid_t chart = -1;
  int tries = 0;
};

// Takes leave of all that have ended; the plant's status once it is among them.
std::optional<int> end_of(pid_t plant, chart_opener& chart) {
  std::optional<int> end;
  int status = 0;
  for (pid_t pid = 0; (pid = waitpid(-1, &status, WNOHANG)) > 0;) {
    chart.forget(pid);
    if (pid == plant) end = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  }
  return end;
}

int run(pid_t plant, chart_opener& chart, const signal_inbox& signals) {
  constexpr auto look_every = 20ms;
  std::optional<std::chrono::steady_clock::time_point> last_moment;  // for a plant that is to end
  for (;;) {
    if (const auto end = end_of(plant, chart)) return *end;
    if (!chart.done()) chart.look();
    const bool waiting = !chart.done() || last_moment;
    const int signal = waiting ? signals.next(look_every) : signals.next();
    const auto now = std::chrono::steady_clock::now();
    if (signal != 0 && signal != SIGCHLD) {
      kill(plant, SIGTERM);
      if (!last_moment) last_moment = now + 5s;
    }
    if (last_moment && now > *last_moment) kill(plant, SIGKILL);
  }
}

// The controller may leave by itself, and is ended by its watcher if it does not. Nobody is left then who
// could look into the area.
void leave_nothing(int ident) {
  wait_for_descendants(4s);
  end_descendants(1s);
  if (ident != -1) shmctl(ident, IPC_RMID, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  const command_line wanted = read_command_line(argc, argv);
  const display screen;
  if (!screen.is_open()) {
    tell(tr("pas d'écran : DISPLAY n'en nomme aucun qui s'ouvre"));
    return 1;
  }
  const auto plant_program = find_or_tell(wanted.plant), watcher = find_or_tell("surveillant");
  if (!plant_program || !watcher) return 127;
  const signal_inbox signals;
  adopt_descendants();
  const auto [plant, error] = launch(plant_command(*plant_program, *watcher, wanted.command), SIGTERM);
  if (plant < 0) {
    tell(tr("ne démarre pas : {}", {*plant_program}));
    return 126;
  }
  chart_opener chart(screen);
  const int status = run(plant, chart, signals);
  chart.close();
  leave_nothing(chart.area() ? chart.area()->ident : area_of(plant));
  return status;
}
