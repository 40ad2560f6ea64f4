#pragma once
// A plant as a process of its own: its area has the inputs `a` and `b` and the output `x`; it announces one
// batch and does nothing more.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/area.h"

struct forked_plant {
  const pid_t pid = fork();

  forked_plant() {
    if (pid != 0) return;
    std::list<std::string> inputs{"a", "b"}, outputs{"x"};
    IOsharemem_server(inputs, outputs).inputs_go();
    while (true) pause();
  }
  ~forked_plant() {
    kill_it();
    waitpid(pid, nullptr, 0);
  }
  // It is then a zombie, as a plant is that nobody has waited for.
  void kill_it() const {
    kill(pid, SIGKILL);
    siginfo_t end;
    waitid(P_PID, static_cast<id_t>(pid), &end, WEXITED | WNOWAIT);
  }
};
