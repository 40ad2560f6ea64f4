#pragma once
// A controller that is a shell script with a child, as an operator may have one. Include gtest first.

#include <map>
#include <sstream>
#include <string>

#include "tests/support/a_directory.h"
#include "tests/support/process.h"
#include "tests/support/wait.h"

// In the current directory, which is its own. It writes its arguments to "arguments", and then to "pids"
// who it is, c, who has started it, g, who that one, s, and its child, d: the mine's own controller.
struct controller_script : a_directory {
  const std::string name = "./a 'controller'";

  controller_script() {
    std::ofstream(name) << "#!/bin/sh\nprintf '<%s>' \"$@\" >arguments\n"
                        << built("controleur_mine") << " \"$@\" &\n"
                        << "echo c $$ g $PPID s $(cut -d' ' -f4 /proc/$PPID/stat) d $! >noting\n"
                        << "mv noting pids\nwait\n";
    std::filesystem::permissions(name, std::filesystem::perms::owner_all);
  }
  std::map<char, pid_t> pids() const {
    wait_until([] { return std::filesystem::exists("pids"); });
    std::istringstream words(contents("pids"));
    std::map<char, pid_t> found;
    char role = 0;
    for (pid_t pid = 0; words >> role >> pid;) found[role] = pid;
    return found;
  }
};

// Waits for it; one that has ended and that nobody has taken leave of yet does not run.
inline bool ends(pid_t pid) {
  return wait_until([pid] {
    std::string line;
    std::getline(std::ifstream("/proc/" + std::to_string(pid) + "/stat"), line);
    return line.empty() || line[line.rfind(')') + 2] == 'Z';
  });
}

// How a program that is given these words ends, and what its error stream begins with.
inline void expect_end(const std::vector<std::string>& words, int status, const std::string& told,
                       const std::string& language = "en_GB") {
  process ended(words, {"LC_ALL=" + language});
  EXPECT_EQ(ended.wait(), status) << told;
  EXPECT_TRUE(ended.errors().starts_with(told)) << ended.errors();
}
