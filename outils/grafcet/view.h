#pragma once
// A window that shows charts at work, in a process of its own: whatever becomes of it, the controller goes
// on.

#include <sys/types.h>

#include <string>

#include "bibliocpp/grafcet_file/chart.h"
#include "outils/grafcet/shared_situation.h"

// What the operator wants of a controller that goes step by step: a byte each.
enum class wish : char { one_step = 's', run = 'r', pause = 'p' };

class view_process {
 public:
  // Opens the window "grafcet - <title>" in a child process, which ends with this one. Without a display a
  // line on the standard error stream tells so, and that is all. `by_steps` adds the buttons of the wishes.
  view_process(const grafcet_file::program& charts, const grafcet_file::situation& first,
               shared_situation& shown, const std::string& title, bool by_steps);
  ~view_process();
  view_process(const view_process&) = delete;
  view_process& operator=(const view_process&) = delete;

  // Where wishes come from: a descriptor, at its end once the window is closed. -1 unless by_steps.
  int wishes() const { return wishes_end; }

 private:
  pid_t child = -1;
  int wishes_end = -1;
};
