#include "tests/support/display.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "tests/support/wait.h"

// It writes its number when it accepts clients.
x_server::x_server()
    : server({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-noreset", "-nolisten", "tcp"}) {
  wait_until([this] { return server.output().ends_with('\n') || !server.runs(); });
  if (server.output().empty()) throw std::runtime_error("Xvfb does not start");
  display = ":" + std::to_string(std::stoi(server.output()));
}

void x_server::kill() {
  if (!server.runs()) return;
  server.signal(SIGTERM);
  server.wait();
}

void use_own_display() {
  // Never destroyed: the toolkit still talks to it while the program ends.
  static const auto* const own = new x_server;
  setenv("DISPLAY", own->name().c_str(), 1);
}
