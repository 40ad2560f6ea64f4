#include "outils/examen/virtual_display.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "bibliocpp/language.h"
#include "outils/child_processes/launch.h"

namespace {

// The number it writes when it accepts clients; empty when that does not come.
std::string read_number(int from) {
  constexpr int patience_ms = 20'000;
  std::string text;
  pollfd arrival{.fd = from, .events = POLLIN, .revents = 0};
  for (char c = 0; poll(&arrival, 1, patience_ms) == 1 && read(from, &c, 1) == 1;) {
    if (c == '\n') return text;
    text += c;
  }
  return "";
}

}  // namespace

virtual_display::virtual_display(int streams) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw display_error(std::strerror(errno));
  const auto [pid, error] =
      launch({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x800x24", "-noreset", "-nolisten", "tcp"},
             SIGTERM, [&] {
               dup2(ends[1], STDOUT_FILENO);
               dup2(streams, STDERR_FILENO);
             });
  server = pid;
  close(ends[1]);
  const std::string number = pid > 0 ? read_number(ends[0]) : "";
  close(ends[0]);
  if (pid > 0 && !number.empty()) {
    display = ":" + number;
    return;
  }
  if (pid > 0) {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
  }
  throw display_error(
      tr("pas d'écran virtuel : Xvfb : {}", {pid > 0 ? tr("ne répond pas") : std::strerror(error)}));
}

virtual_display::~virtual_display() {
  kill(server, SIGTERM);
  waitpid(server, nullptr, 0);
}
