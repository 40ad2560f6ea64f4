#include "outils/child_processes/launch.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

// Never returns. The pipe closes when the program runs; else it carries the reason.
[[noreturn]] void become(char* const* words, int at_our_end, pid_t parent, int reason_pipe,
                         const std::function<void()>& prepare) {
  prctl(PR_SET_PDEATHSIG, at_our_end);
  if (getppid() != parent) _exit(1);  // it ended before the line above
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  prepare();
  execvp(words[0], words);
  const int error = errno;
  [[maybe_unused]] const ssize_t ignored = write(reason_pipe, &error, sizeof error);
  _exit(1);
}

}  // namespace

launched launch(const std::vector<std::string>& words, int at_our_end, const std::function<void()>& prepare) {
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);

  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return {-1, errno};
  const pid_t here = getpid(), pid = fork();
  if (pid == 0) become(argv.data(), at_our_end, here, ends[1], prepare);
  int error = errno;
  close(ends[1]);
  const bool failed = pid < 0 || read(ends[0], &error, sizeof error) == sizeof error;
  close(ends[0]);
  if (!failed) return {pid, 0};
  if (pid > 0) waitpid(pid, nullptr, 0);
  return {-1, error};
}
