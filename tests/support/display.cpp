#include "tests/support/display.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

x_server::x_server() {
  int number[2];
  if (pipe(number) != 0) throw std::runtime_error("pipe");
  server = fork();
  if (server == 0) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(number[1], 3);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    execlp("Xvfb", "Xvfb", "-displayfd", "3", "-screen", "0", "1280x800x24", "-noreset", "-nolisten", "tcp",
           nullptr);
    _exit(127);
  }
  close(number[1]);
  display.assign(1, ':');
  char c = 0;
  while (read(number[0], &c, 1) == 1 && c != '\n') display += c;  // written when it accepts clients
  close(number[0]);
  if (display.size() == 1) throw std::runtime_error("Xvfb does not start");
}

x_server::~x_server() { kill(); }

void x_server::kill() {
  if (server <= 0) return;
  ::kill(server, SIGTERM);
  waitpid(server, nullptr, 0);
  server = -1;
}

void use_own_display() {
  // Never destroyed: the toolkit still talks to it while the program ends.
  static const auto* const own = new x_server;
  setenv("DISPLAY", own->name().c_str(), 1);
}
