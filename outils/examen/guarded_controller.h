#pragma once
// A controller under examination, seen from the exam.

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "outils/examen/guardian.h"

struct controller_state {
  enum class kind { runs, refused, exited, killed, too_much_memory, too_many_processes, guardian_gone } what;
  int number = 0;  // errno, status, signal, MiB, processes
};

class guarded_controller {
 public:
  // Starts the guardian with the words `box` before its own, the guardian with the command. What the box
  // itself has to say goes to the descriptor `streams`.
  guarded_controller(const std::string& self, const std::vector<std::string>& box,
                     const controller_limits& limits, const std::vector<std::string>& command, int streams);
  // Nothing of it is left, whatever state it is in.
  ~guarded_controller();
  guarded_controller(const guarded_controller&) = delete;
  guarded_controller& operator=(const guarded_controller&) = delete;

  // What has become of it; does not wait.
  const controller_state& look();

  // Ends it: by itself, if it is about to, else by force within a second. What it has written.
  std::string end();

 private:
  bool receive();
  void heed(const std::string& line);

  const bool boxed;
  pid_t guardian = -1;
  int channel = -1;
  std::string received;
  bool all_written = false, has_ended = false;
  controller_state state{controller_state::kind::runs};
};
