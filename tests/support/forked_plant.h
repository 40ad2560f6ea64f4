#pragma once
// A plant as a process of its own: it has an area with the inputs `a` and `b` and the output `x`, announces
// one batch, and does nothing more.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/area.h"

class forked_plant {
 public:
  forked_plant() : pid(fork()) {
    if (pid != 0) return;
    std::list<std::string> inputs{"a", "b"}, outputs{"x"};
    IOsharemem_server server(inputs, outputs);
    server.inputs_go();
    while (true) pause();
  }
  ~forked_plant() {
    kill_it();
    waitpid(pid, nullptr, 0);
  }
  forked_plant(const forked_plant&) = delete;
  forked_plant& operator=(const forked_plant&) = delete;

  // It is then a zombie, as a plant is that nobody has waited for.
  void kill_it() const {
    kill(pid, SIGKILL);
    siginfo_t end;
    waitid(P_PID, static_cast<id_t>(pid), &end, WEXITED | WNOWAIT);
  }

  const pid_t pid;
};
