#pragma once
// Starts a program that is not to outlive this one.

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

struct launched {
  pid_t pid;  // -1 when it has not been started
  int error;  // then the errno of what failed: ENOENT, EACCES...
};

// Runs words[0], looked for in PATH unless it has a slash, with all words as its arguments: no shell reads
// them. It inherits streams, environment and ignored signals, and begins with no signal blocked. Should
// this process end first, however that comes, the kernel sends it `at_our_end`; what it starts in turn does
// not get that. `prepare` is called in the new process, which then becomes the program: what it does to
// streams, environment or limits is the program's. Returns once the program runs or is known not to.
launched launch(const std::vector<std::string>& words, int at_our_end,
                const std::function<void()>& prepare = [] {});
