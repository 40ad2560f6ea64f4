#include "outils/surveillant/watch.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <optional>
#include <vector>

#include "outils/child_processes/descendants.h"
#include "outils/surveillant/messages.h"
#include "outils/surveillant/unanswered_batches.h"

namespace {

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;
using time_point = clock_type::time_point;

// The controller may be a script that has started the one that attaches.
bool one_has_attached(int ident) {
  const std::vector<pid_t> ours = descendants();
  return std::any_of(ours.begin(), ours.end(), [ident](pid_t pid) { return has_attached(pid, ident); });
}

// Whether the controller takes part in the exchange.
class exchange_watch {
 public:
  explicit exchange_watch(const area_view& an_area)
      : area(an_area), batches(area.clock(), area.output_clock()) {}

  void look(time_point now) {
    batches.look(area.clock(), area.output_clock(), now);
    if (batches.answered_ever())
      tell_late(now);
    else
      tell_silence(now);
  }
  void close() { tell_late(clock_type::now(), true); }

 private:
  void tell_late(time_point now, bool at_once = false) {
    if (!batches.answered_ever()) return;
    if (const auto report = batches.due(now, at_once)) tell::late(report->batches, report->longest);
  }

  void tell_silence(time_point now) {
    constexpr auto patience = 2s;
    constexpr auto search_every = 100ms;
    if (!attached && now >= next_search) {
      next_search = now + search_every;
      if (one_has_attached(area.ident())) attached = now;
    }
    if (!attached && !told_absent && now - started > patience) {
      told_absent = true;
      tell::not_attached(area.ident());
    }
    const auto asked = batches.waiting_since();
    if (attached && asked && !told_silent && now - std::max(*attached, *asked) > patience) {
      told_silent = true;
      tell::no_outputs();
    }
  }

  const area_view& area;
  unanswered_batches batches;
  const time_point started = clock_type::now();
  time_point next_search = started;
  std::optional<time_point> attached;
  bool told_absent = false, told_silent = false;
};

// The end of a controller that is no longer wanted.
class farewell {
 public:
  bool begun() const { return since.has_value(); }
  void begin(time_point now) {
    if (!since) since = now;
  }
  void go_on(time_point now) {
    if (!since) return;
    if (!asked && now - *since > 1s) {
      asked = true;
      signal_descendants(SIGTERM);
    }
    if (now - *since > 2s) signal_descendants(SIGKILL);
  }

 private:
  std::optional<time_point> since;
  bool asked = false;
};

// Takes leave of all children that have ended; the controller's status once it is among them.
std::optional<int> end_of(pid_t controller) {
  std::optional<int> end;
  int status = 0;
  for (pid_t pid = 0; (pid = waitpid(-1, &status, WNOHANG)) > 0;)
    if (pid == controller) end = status;
  return end;
}

int tell_end(int status) {
  if (WIFSIGNALED(status)) {
    tell::killed(WTERMSIG(status));
    return 128 + WTERMSIG(status);
  }
  tell::ended(WEXITSTATUS(status));
  return WEXITSTATUS(status);
}

bool plant_is_gone(const area_view& area) { return area.clock() < 0 || !area.plant_runs(); }

void tell_plant_gone(const area_view& area) {
  if (remove_if_plant_was_killed(area))
    tell::plant_killed(area.ident());
  else
    tell::plant_over();
}

}  // namespace

bool remove_if_plant_was_killed(const area_view& area) {
  if (area.plant_runs() || area.clock() < 0) return false;
  shmctl(area.ident(), IPC_RMID, nullptr);
  return true;
}

int watch(pid_t controller, const area_view& area, const signal_inbox& signals) {
  constexpr auto look_every = 5ms;
  exchange_watch exchange(area);
  farewell leaving;
  bool plant_gone = false;
  std::optional<int> end;
  while (!(end = end_of(controller))) {
    const int signal = signals.next(look_every);
    const auto now = clock_type::now();
    if (signal != 0 && signal != SIGCHLD) leaving.begin(now);
    if (!plant_gone && plant_is_gone(area)) {
      plant_gone = true;
      leaving.begin(now);
      tell_plant_gone(area);
    }
    leaving.go_on(now);
    if (!leaving.begun()) exchange.look(now);
  }
  exchange.close();
  // It may have seen the end of the plant before us.
  if (!plant_gone && plant_is_gone(area)) tell_plant_gone(area);
  return tell_end(*end);
}
