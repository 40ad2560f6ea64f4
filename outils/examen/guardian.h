#pragma once
// The process between an exam and its controller, in the controller's box: starts it within its limits, keeps
// what it writes, tells what becomes of it, and takes it along when it ends. In a process namespace of its
// own it is the first process there, so that not even a controller that forks for ever escapes it.

#include <cstddef>
#include <string>
#include <vector>

struct controller_limits {
  int memory_mib = 512;  // of all its processes together, what is in use of it
  int processes = 64;    // at once
  int file_mib = 16;     // the largest file
  int acceleration = 1;  // of its pauses; 1: none
};

// What the guardian writes to its channel, each with a number and "\n":
//   refused ERRNO   the program could not be started
//   exited STATUS   it and all that it has started have ended, or it has ended with a status other than 0
//   killed SIGNAL
//   memory MIB      a limit has been passed, and everything of the controller's has been killed
//   processes N
//   wrote BYTES     last: what follows are its standard error and output, cut in the middle
// The end of the channel asks the guardian to end.
constexpr const char* guardian_option = "--gardien";  // of `examen`, the first

// The words that run examen's executable `self` as the guardian of the command. `channel` is a stream socket
// that is open in the new process.
std::vector<std::string> guardian_words(const std::string& self, int channel, const controller_limits& limits,
                                        const std::vector<std::string>& command);
// What that process does with the words after the option.
int guard(const std::vector<std::string>& words);
