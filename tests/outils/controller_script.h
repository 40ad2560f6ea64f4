#pragma once
// Controllers that are shell scripts in the current directory. Each notes in the file "pids" who it is and
// who has started it. Include gtest first.

#include <csignal>
#include <map>
#include <sstream>
#include <string>

#include "tests/support/a_directory.h"
#include "tests/support/wait.h"

// Once `child` is set: the script's own child, which it runs in the background.
inline const std::string note_child = "echo d $child >>noting; mv noting pids;";

inline void script(const std::string& name, const std::string& text,
                   const std::string& interpreter = "/bin/sh") {
  const bool notes_later = text.find(note_child) != std::string::npos;
  std::ofstream(name) << "#!" << interpreter << "\n"
                      << "echo c $$ g $PPID s $(cut -d' ' -f4 /proc/$PPID/stat) >noting\n"
                      << (notes_later ? "" : "cp noting pids\n") << text << "\n";
  std::filesystem::permissions(name, std::filesystem::perms::owner_all);
}

// c: the script, g: its parent, s: the parent of that, d: its child; waited for.
inline std::map<char, pid_t> pids_of_script() {
  EXPECT_TRUE(wait_until([] { return !contents("pids").empty(); }));
  std::istringstream words(contents("pids"));
  std::map<char, pid_t> pids;
  char role = 0;
  for (pid_t pid = 0; words >> role >> pid;) pids[role] = pid;
  return pids;
}

// Not so for one that has ended and that nobody has taken leave of yet.
inline bool is_running(pid_t pid) {
  std::string line;
  std::getline(std::ifstream("/proc/" + std::to_string(pid) + "/stat"), line);
  const std::size_t name_end = line.rfind(')');
  return name_end != std::string::npos && line[name_end + 2] != 'Z';
}
