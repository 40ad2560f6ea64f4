#include "maquettes_graphiques/mock_up/run_end.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "bibliocpp/IOshare.h"

namespace {

volatile std::sig_atomic_t requested = 0;
int wake_up[2] = {-1, -1};  // a pipe: FLTK waits for its reading end along with the display
IOsharemem_server* exchange = nullptr;

void on_signal(int) {
  const int error = errno;
  requested = 1;
  [[maybe_unused]] const auto ignored = write(wake_up[1], "", 1);
  errno = error;
}

void handle(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
}

// The byte stays in the pipe, so that every later modal window closes at once as well.
void close_modal_window(int, void*) {
  if (Fl::modal() != nullptr) Fl::modal()->hide();
}

}  // namespace

void watch_for_run_end() {
  if (pipe2(wake_up, O_CLOEXEC | O_NONBLOCK) != 0) return;
  Fl::add_fd(wake_up[0], FL_READ, close_modal_window);
  handle(SIGTERM, on_signal);
  handle(SIGINT, on_signal);
  struct sigaction inherited {};
  sigaction(SIGHUP, nullptr, &inherited);
  if (inherited.sa_handler != SIG_IGN) handle(SIGHUP, on_signal);
  // Not ignored, which the controller would inherit: a handler is gone in the program that is started.
  handle(SIGPIPE, [](int) {});
}

bool run_end_requested() { return requested != 0; }

void request_run_end() { requested = 1; }

void end_exchange_at_exit(IOsharemem_server& area) {
  exchange = &area;
  std::atexit([] { exchange->sharing_terminate(); });
}
