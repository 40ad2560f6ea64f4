#include "outils/examen/sandbox.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "outils/child_processes/launch.h"

namespace fs = std::filesystem;

namespace {

using words = std::vector<std::string>;

words operator+(words one, const words& other) {
  one.insert(one.end(), other.begin(), other.end());
  return one;
}

const words base{"bwrap",
                 "--die-with-parent",
                 "--unshare-pid",
                 "--unshare-net",
                 "--ro-bind",
                 "/",
                 "/",
                 "--dev",
                 "/dev",
                 "--proc",
                 "/proc"};

}  // namespace

// What lies directly in /tmp, whole: a controller may need what is beside it.
sandbox::sandbox(const words& needed) {
  std::set<fs::path> tops;
  for (const fs::path path : needed) {
    std::error_code ignored;
    const fs::path real = fs::canonical(path, ignored);
    for (const fs::path& each : {path.lexically_normal(), real}) {
      const fs::path below = each.lexically_relative("/tmp");
      if (!below.empty() && *below.begin() != ".." && *below.begin() != ".")
        tops.insert("/tmp" / *below.begin());
    }
  }
  for (const fs::path& top : tops) shown = shown + words{"--ro-bind", top, top};
}

words sandbox::for_exam(const std::string& evidence) const {
  const words box = base + words{"--unshare-ipc", "--tmpfs", "/tmp"} + shown;
  return (evidence.empty() ? box : box + words{"--bind", evidence, evidence}) + words{"--"};
}

words sandbox::for_controller() const {
  return base + words{"--as-pid-1", "--size", std::to_string(mib << 20), "--tmpfs", "/tmp"} + shown +
         words{"--chdir", "/tmp", "--setenv", "TMPDIR", "/tmp", "--"};
}

bool sandbox::works(const std::string& self) const {
  const launched tried = launch(for_exam("") + for_controller() + words{self, "--version"}, SIGKILL, [] {
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
  });
  int status = -1;
  return tried.pid > 0 && waitpid(tried.pid, &status, 0) == tried.pid && status == 0;
}
