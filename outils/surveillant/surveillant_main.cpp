// surveillant [--a-l-arret garder|zero] COMMAND... -automemlink N: runs a plant's controller, tells what
// becomes of it, and leaves nothing of it behind.

#include <sys/prctl.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>

#include "outils/child_processes/descendants.h"
#include "outils/child_processes/launch.h"
#include "outils/surveillant/command_line.h"
#include "outils/surveillant/messages.h"
#include "outils/surveillant/watch.h"

namespace {

using namespace std::chrono_literals;

// As a relay would: the values only. No outputs are announced, for there is no controller any more.
void drop_outputs(const area_view& area) {
  void* const address = shmat(area.ident(), nullptr, 0);
  if (address == reinterpret_cast<void*>(-1)) return;
  auto& record = *static_cast<IO_controleur*>(address);
  bool dropped = false;
  for (std::size_t k = 0; k < area.output_names().size(); ++k)
    if (std::atomic_ref(record.output[k]).exchange(0) != 0) dropped = true;
  shmdt(address);
  if (dropped) tell::outputs_dropped();
}

void leave_in_order(const area_view& area, const command_line& wanted) {
  end_descendants(1s);
  if (wanted.drop_outputs && area.clock() >= 0 && area.plant_runs()) drop_outputs(area);
  remove_if_plant_was_killed(area);
}

int run_controller(const area_view& area, const command_line& wanted, const signal_inbox& signals) {
  const auto [controller, error] = launch(wanted.command, SIGKILL);
  const int status =
      controller < 0 ? tell::not_started(wanted.command.front(), error) : watch(controller, area, signals);
  leave_in_order(area, wanted);
  return status;
}

// Hands signals on to the guard, until it has ended.
int wait_for(pid_t guard, const signal_inbox& signals) {
  int status = 0;
  for (;;) {
    for (pid_t ended = 0; (ended = waitpid(-1, &status, WNOHANG)) > 0;)
      if (ended == guard) return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    const int signal = signals.next();
    if (signal != 0 && signal != SIGCHLD) kill(guard, signal);
  }
}

}  // namespace

// Two processes, for either may be killed, and then nobody but the other knows what the controller has
// started in turn: the second one, the guard, watches and is its parent; the first waits for the guard.
int main(int argc, char** argv) try {
  const command_line wanted = read_command_line(argc, argv);
  const area_view area(wanted.ident);
  const signal_inbox signals;
  adopt_descendants();
  const pid_t here = getpid(), guard = fork();
  if (guard == 0) {
    prctl(PR_SET_NAME, "gardien");  // so that what is done to "surveillant" by name spares it
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != here) return 1;
    adopt_descendants();
    return run_controller(area, wanted, signals);
  }
  if (guard < 0) return run_controller(area, wanted, signals);
  const int status = wait_for(guard, signals);
  leave_in_order(area, wanted);
  return status;
} catch (const area_error& error) {
  tell::area_unusable(error.what());
  return 2;
}
