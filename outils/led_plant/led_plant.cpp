#include "outils/led_plant/led_plant.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>

#include "bibliocpp/area_view.h"
#include "outils/child_processes/launch.h"

namespace {

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

struct one_way {
  int read_end = -1, write_end = -1;
  one_way() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw led_plant_error(std::strerror(errno));
    read_end = ends[0];
    write_end = ends[1];
  }
};

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t n = 0; n < text.size(); ++n) {
    const bool escaped = text[n] == '\\' && n + 1 < text.size();
    if (escaped) ++n;
    plain += escaped && text[n] == 'n' ? '\n' : text[n];
  }
  return plain;
}

plant_line read_line(std::string_view line) {
  using kind = plant_line::kind;
  const std::size_t blank = std::min(line.find(' '), line.size());
  const std::string_view verb = line.substr(0, blank);
  const std::string_view rest = line.substr(std::min(blank + 1, line.size()));
  if (line == "end") return {kind::end, 0, ""};
  if (line == "seen") return {kind::seen, 0, ""};
  if (verb == "fault") return {kind::fault, 0, unescaped(rest)};
  if (verb == "error") return {kind::error, 0, unescaped(rest)};
  plant_line numbered{verb == "area" ? kind::area : kind::pause, 0, ""};
  const auto [end, error] = std::from_chars(rest.begin(), rest.end(), numbered.number);
  const bool whole = error == std::errc{} && end == rest.end() && !rest.empty();
  if (whole && (verb == "area" || verb == "pause")) return numbered;
  return {kind::other, 0, std::string(line)};
}

bool ends_within(pid_t program, std::chrono::milliseconds time) {
  const auto deadline = clock_type::now() + time;
  while (waitpid(program, nullptr, WNOHANG) == 0) {
    if (clock_type::now() > deadline) return false;
    std::this_thread::sleep_for(1ms);
  }
  return true;
}

}  // namespace

led_plant::led_plant(const std::vector<std::string>& words, int streams) {
  const one_way orders, lines;
  const auto [pid, error] = launch(words, SIGTERM, [&] {
    if (streams != -1)
      for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) dup2(streams, stream);
    for (const int end : {orders.read_end, lines.write_end}) fcntl(end, F_SETFD, 0);
    const std::string both = std::to_string(orders.read_end) + "," + std::to_string(lines.write_end);
    setenv("MOCK_UP_LED", both.c_str(), 1);
  });
  close(orders.read_end);
  close(lines.write_end);
  program = pid;
  to_plant = orders.write_end;
  from_plant = lines.read_end;
  fcntl(from_plant, F_SETFL, O_NONBLOCK);
  if (program > 0) return;
  close(to_plant);
  close(from_plant);
  throw led_plant_error(words.front() + ": " + std::strerror(error));
}

led_plant::~led_plant() {
  close(to_plant);
  close(from_plant);
  if (!ends_within(program, 1s)) {
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
  }
  // Also one that had not yet told of its area may have left it.
  if (const int area = area_of(program); area != -1) shmctl(area, IPC_RMID, nullptr);
}

std::optional<plant_line> led_plant::next(std::chrono::milliseconds in_time) {
  constexpr auto moments = 200us;
  const auto begin = clock_type::now();
  for (;;) {
    if (auto line = take_line()) return line;
    if (gone) return plant_line{plant_line::kind::gone, 0, ""};
    if (receive()) continue;
    const auto waited = clock_type::now() - begin;
    if (waited < moments) {
      sched_yield();
      continue;
    }
    if (waited > in_time) return {};
    pollfd arrival{.fd = from_plant, .events = POLLIN, .revents = 0};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(in_time - waited);
    if (poll(&arrival, 1, static_cast<int>(left.count())) < 0 && errno == EINTR) return {};
  }
}

void led_plant::say(const std::string& lines) const {
  for (std::string_view rest = lines; !rest.empty();) {
    const ssize_t count = write(to_plant, rest.data(), rest.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::optional<plant_line> led_plant::take_line() {
  const std::size_t end = received.find('\n');
  if (end == std::string::npos) return {};
  plant_line line = read_line(std::string_view(received).substr(0, end));
  received.erase(0, end + 1);
  return line;
}

// Whether there is anything new, be it that it has gone.
bool led_plant::receive() {
  std::array<char, 4096> some;
  const ssize_t count = read(from_plant, some.data(), some.size());
  if (count > 0) received.append(some.data(), static_cast<std::size_t>(count));
  if (count == 0) gone = true;
  return count >= 0;
}
