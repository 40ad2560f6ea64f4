#include "outils/child_processes/descendants.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>

namespace {

// 0 when there is no such process any more.
pid_t parent_of(const std::string& pid) {
  std::ostringstream text;
  // Not by iterators, which throw when the process ends meanwhile.
  text << std::ifstream("/proc/" + pid + "/stat").rdbuf();
  const std::string line = text.str();
  // The name in brackets may hold blanks and brackets of its own: after the last one come state and parent.
  const std::size_t name_end = line.rfind(") ");
  return name_end == std::string::npos ? 0 : std::stoi(line.substr(name_end + 4));
}

// Takes leave of those that have ended; whether there are others.
bool children_left() {
  pid_t ended = 0;
  while ((ended = waitpid(-1, nullptr, WNOHANG)) > 0) continue;
  return ended == 0;
}

}  // namespace

void adopt_descendants() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

// Not by the kernel's own lists of children, which not every kernel offers.
std::vector<pid_t> descendants() {
  std::multimap<pid_t, pid_t> children;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
    const std::string name = entry.path().filename();
    if (std::isdigit(static_cast<unsigned char>(name.front())) != 0)
      children.emplace(parent_of(name), std::stoi(name));
  }
  std::vector<pid_t> found{getpid()};
  for (std::size_t n = 0; n < found.size(); ++n) {
    const auto [first, last] = children.equal_range(found[n]);
    for (auto child = first; child != last; ++child) found.push_back(child->second);
  }
  found.erase(found.begin());
  return found;
}

void signal_descendants(int number) {
  for (const pid_t pid : descendants()) kill(pid, number);
}

bool wait_for_descendants(std::chrono::milliseconds in_time) {
  constexpr std::chrono::milliseconds look_every(5);
  const auto deadline = std::chrono::steady_clock::now() + in_time;
  while (children_left()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(look_every);
  }
  return true;
}

void end_descendants(std::chrono::milliseconds patience) {
  if (children_left()) signal_descendants(SIGTERM);
  if (wait_for_descendants(patience)) return;
  do signal_descendants(SIGKILL);
  while (!wait_for_descendants(std::chrono::milliseconds(5)));
}
