#pragma once
// What signal_journal is asked for.

#include <sys/types.h>

#include <stdexcept>
#include <string>

struct command_line {
  pid_t plant = 0;
  bool only_area = false;  // --zone
  std::string until;       // empty: to the end of the run
  int value = 0;
  int times = 1;
  std::string vcd, csv;  // empty: none
};

struct bad_command_line : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Ends the process after --help and --version; throws a bad_command_line whose text says what is wrong.
command_line read_command_line(int argc, char** argv);

const char* usage();
