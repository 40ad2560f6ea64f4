#include "outils/examen/guardian.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

#include "outils/child_processes/descendants.h"
#include "outils/child_processes/launch.h"
#include "outils/examen/acceleration.h"

namespace {

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

// The first and the last of what a controller writes, however much that is.
class kept_text {
 public:
  void add(std::string_view some) {
    const std::size_t fits = std::min(some.size(), most - first.size());
    first.append(some.substr(0, fits));
    last.append(some.substr(fits));
    if (last.size() <= 2 * most) return;
    left_out += last.size() - most;
    last.erase(0, last.size() - most);
  }
  std::string text() const {
    const std::string gap = left_out == 0 ? "" : "\n[... " + std::to_string(left_out) + " ...]\n";
    return first + gap + last;
  }

 private:
  static constexpr std::size_t most = 1 << 16;
  std::string first, last;
  std::size_t left_out = 0;
};

void limit(__rlimit_resource_t what, rlim_t most) {
  const rlimit both{most, most};
  setrlimit(what, &both);
}

// In the process that becomes the controller.
void prepare(const controller_limits& limits, int streams) {
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) dup2(streams, stream);
  for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE, SIGCHLD}) signal(number, SIG_DFL);
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_FSIZE, static_cast<rlim_t>(limits.file_mib) << 20);
  // The kernel counts a user's processes; only in a namespace are they this controller's alone.
  if (getppid() == 1) limit(RLIMIT_NPROC, static_cast<rlim_t>(limits.processes));
  accelerate_pauses(limits.acceleration);
}

long resident_pages(pid_t pid) {
  long all = 0, resident = 0;
  std::ifstream("/proc/" + std::to_string(pid) + "/statm") >> all >> resident;
  return resident;
}

class guardian {
 public:
  guardian(int a_channel, const controller_limits& some) : channel(a_channel), limits(some) {
    if (pipe2(streams, O_CLOEXEC) == 0) fcntl(streams[0], F_SETFL, O_NONBLOCK);
    fcntl(channel, F_SETFD, FD_CLOEXEC);
  }

  void start(const std::vector<std::string>& command) {
    const auto [pid, error] = launch(command, SIGKILL, [this] { prepare(limits, streams[1]); });
    close(streams[1]);
    controller = pid;
    if (pid < 0) tell("refused", error);
  }

  // Until the exam wants no more, or the controller has to go.
  void watch() {
    constexpr auto weigh_every = 50ms;
    auto next_weighing = clock_type::now();
    while (!asked_to_end()) {
      read_streams();
      take_leave();
      if (told_end) continue;
      if (const auto count = processes(); count > limits.processes) return tell("processes", count);
      if (clock_type::now() < next_weighing) continue;
      next_weighing = clock_type::now() + weigh_every;
      if (const auto mib = memory_mib(); mib > limits.memory_mib) return tell("memory", mib);
    }
    wait_for_descendants(300ms);
    signal_descendants(SIGTERM);
    wait_for_descendants(200ms);
  }

  void end() {
    // In a namespace of their own all goes with its first process.
    if (getpid() != 1) {
      end_descendants(0ms);
      remove_traces_of_acceleration();
    }
    read_streams();
    const std::string text = kept.text();
    tell("wrote", static_cast<long>(text.size()));
    say(text);
  }

 private:
  void say(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t count = write(channel, text.data(), text.size());
      if (count < 0 && errno != EINTR) return;
      if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  void tell(const char* what, long number) const { say(what + (" " + std::to_string(number)) + "\n"); }

  // Not woken by what is written: who floods the streams waits until they are looked at again.
  bool asked_to_end() const {
    pollfd request{channel, POLLIN, 0};
    return poll(&request, 1, 10) == 1;
  }

  // No more than so much at once, whatever is written meanwhile.
  void read_streams() {
    std::array<char, 1 << 16> some;
    ssize_t count = 0;
    for (int n = 0; n < 16 && (count = read(streams[0], some.data(), some.size())) > 0; ++n)
      kept.add({some.data(), static_cast<std::size_t>(count)});
  }

  // A script that has ended well may have left the controller proper running behind it.
  void take_leave() {
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(-1, &status, WNOHANG)) > 0)
      if (ended == controller) end_status = status;
    if (!end_status || told_end) return;
    if (*end_status == 0 && ended == 0) return;  // there are others
    told_end = true;
    WIFSIGNALED(*end_status) ? tell("killed", WTERMSIG(*end_status))
                             : tell("exited", WEXITSTATUS(*end_status));
  }

  // Where all processes are the controller's, counting them is quick enough for one that forks for ever.
  static long processes() {
    if (getpid() != 1) return std::ssize(descendants());
    long count = -1;  // without this one
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored))
      if (std::isdigit(static_cast<unsigned char>(entry.path().filename().c_str()[0])) != 0) ++count;
    return count;
  }

  static long memory_mib() {
    long pages = 0;
    for (const pid_t pid : descendants()) pages += resident_pages(pid);
    return pages * sysconf(_SC_PAGESIZE) >> 20;
  }

  const int channel;
  const controller_limits limits;
  int streams[2] = {-1, -1};
  bool told_end = false;
  pid_t controller = -1;
  std::optional<int> end_status;
  kept_text kept;
};

// For the superuser there is no limit on processes, but there are urgent ones: thousands of others do not
// hold up this one then.
void become_urgent() {
  const sched_param priority{1};
  sched_setscheduler(0, SCHED_FIFO | SCHED_RESET_ON_FORK, &priority);
}

constexpr std::size_t own_words = 5;

}  // namespace

std::vector<std::string> guardian_words(const std::string& self, int channel, const controller_limits& limits,
                                        const std::vector<std::string>& command) {
  std::vector<std::string> words{self, guardian_option};
  for (const int number :
       {channel, limits.memory_mib, limits.processes, limits.file_mib, limits.acceleration})
    words.push_back(std::to_string(number));
  words.insert(words.end(), command.begin(), command.end());
  return words;
}

int guard(const std::vector<std::string>& words) {
  if (words.size() <= own_words) return 2;
  std::array<int, own_words> numbers{};
  for (std::size_t n = 0; n < own_words; ++n) numbers[n] = std::atoi(words[n].c_str());
  // A controller may signal whom it likes.
  for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE}) signal(number, SIG_IGN);
  adopt_descendants();
  become_urgent();
  guardian its(numbers[0], {numbers[1], numbers[2], numbers[3], numbers[4]});
  its.start({words.begin() + own_words, words.end()});
  its.watch();
  its.end();
  return 0;
}
