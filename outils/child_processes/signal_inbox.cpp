#include "outils/child_processes/signal_inbox.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

signal_inbox::signal_inbox() {
  sigset_t awaited;
  sigemptyset(&awaited);
  for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGCHLD}) sigaddset(&awaited, number);
  descriptor = signalfd(-1, &awaited, SFD_CLOEXEC | SFD_NONBLOCK);
  sigaddset(&awaited, SIGPIPE);
  sigprocmask(SIG_BLOCK, &awaited, nullptr);
}

signal_inbox::~signal_inbox() { close(descriptor); }

int signal_inbox::next(std::chrono::milliseconds in_time) const {
  pollfd arrival{.fd = descriptor, .events = POLLIN, .revents = 0};
  signalfd_siginfo signal{};
  if (poll(&arrival, 1, static_cast<int>(in_time.count())) != 1) return 0;
  return read(descriptor, &signal, sizeof signal) == sizeof signal ? static_cast<int>(signal.ssi_signo) : 0;
}
