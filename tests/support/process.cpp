#include "tests/support/process.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <utility>

#include "tests/support/wait.h"

namespace {

std::string whole(int file) {
  std::string text;
  char buffer[4096];
  ssize_t got = 0;
  while ((got = pread(file, buffer, sizeof buffer, static_cast<off_t>(text.size()))) > 0)
    text.append(buffer, static_cast<std::size_t>(got));
  return text;
}

}  // namespace

process::process(std::vector<std::string> words, const std::vector<std::string>& environment)
    : out(memfd_create("out", MFD_CLOEXEC)), err(memfd_create("err", MFD_CLOEXEC)) {
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  id = fork();
  if (id != 0) return;
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // with what a program does at its end: nothing is left behind
  for (const std::string& entry : environment) putenv(const_cast<char*>(entry.c_str()));
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  execvp(argv[0], argv.data());
  _exit(127);
}

process::~process() {
  if (runs()) {
    signal(SIGKILL);
    wait();
  }
  close(out);
  close(err);
}

bool process::runs() {
  if (!ended && waitpid(id, &status, WNOHANG) == id) ended = true;
  return !ended;
}

void process::signal(int number) const { ::kill(id, number); }

int process::wait(std::chrono::milliseconds in_time) {
  if (!wait_until([this] { return !runs(); }, in_time)) return -1000;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string process::output() const { return whole(out); }
std::string process::errors() const { return whole(err); }

std::string built(const std::string& program) { return std::string(BUILT_PROGRAMS) + "/" + program; }
std::string in_repository(const std::string& path) { return std::string(REPOSITORY) + "/" + path; }
