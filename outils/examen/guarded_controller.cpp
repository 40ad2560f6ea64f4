#include "outils/examen/guarded_controller.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "outils/child_processes/launch.h"

namespace {

using namespace std::chrono_literals;
using kind = controller_state::kind;

constexpr std::pair<const char*, kind> states[] = {{"refused ", kind::refused},
                                                   {"exited ", kind::exited},
                                                   {"killed ", kind::killed},
                                                   {"memory ", kind::too_much_memory},
                                                   {"processes ", kind::too_many_processes}};

}  // namespace

guarded_controller::guarded_controller(const std::string& self, const std::vector<std::string>& box,
                                       const controller_limits& limits,
                                       const std::vector<std::string>& command, int streams)
    : boxed(!box.empty()) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
  std::vector<std::string> words = box;
  const std::vector<std::string> own = guardian_words(self, ends[1], limits, command);
  words.insert(words.end(), own.begin(), own.end());
  const int at_our_end = boxed ? SIGKILL : SIGTERM;  // the guardian notices by itself
  guardian = launch(words, at_our_end, [&] {
               for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) dup2(streams, stream);
               fcntl(ends[1], F_SETFD, 0);
             }).pid;
  close(ends[1]);
  channel = ends[0];
  fcntl(channel, F_SETFL, O_NONBLOCK);
}

guarded_controller::~guarded_controller() {
  if (!has_ended && !boxed) end();  // nobody else ends what it has started
  if (guardian > 0) {
    kill(guardian, SIGKILL);
    waitpid(guardian, nullptr, 0);
  }
  close(channel);
}

const controller_state& guarded_controller::look() {
  const bool more = state.what != kind::runs || receive();
  if (!more && state.what == kind::runs) state = {kind::guardian_gone, 0};
  return state;
}

// Whether there may be more.
bool guarded_controller::receive() {
  std::array<char, 1 << 16> some;
  for (;;) {
    const ssize_t count = read(channel, some.data(), some.size());
    if (count <= 0) return count < 0 && (errno == EAGAIN || errno == EINTR);
    received.append(some.data(), static_cast<std::size_t>(count));
    for (std::size_t end = 0; !all_written && (end = received.find('\n')) != std::string::npos;) {
      heed(received.substr(0, end));
      received.erase(0, end + 1);
    }
  }
}

void guarded_controller::heed(const std::string& line) {
  if (line.starts_with("wrote ")) all_written = true;
  for (const auto& [word, what] : states)
    if (line.starts_with(word) && state.what == kind::runs)
      state = {what, std::atoi(line.c_str() + std::string_view(word).size())};
}

std::string guarded_controller::end() {
  constexpr auto patience = 3s;
  const auto deadline = std::chrono::steady_clock::now() + patience;
  has_ended = true;
  shutdown(channel, SHUT_WR);
  while (receive()) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd arrival{.fd = channel, .events = POLLIN, .revents = 0};
    if (left.count() <= 0 || poll(&arrival, 1, static_cast<int>(left.count())) == 0) break;
  }
  return received;
}
