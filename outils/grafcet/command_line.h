#pragma once
#include <cstdint>
#include <string>

enum class task { control, verify, svg, pdf, step };

struct command_line {
  task wanted = task::control;
  std::string file;
  std::string plant;           // whose signals the file is verified with, empty for any; or that is led
  std::int64_t period_us = 0;  // of a cycle of the plant; 0: time is the machine's
  int ident = 0;               // of the plant's area
  bool view = false;           // shows the charts at work
  std::string picture;         // the file to write
};

// Ends the process where there is nothing to do: --help and --version with status 0, anything that is wrong
// with the usage and status 2.
command_line read_command_line(int argc, char** argv);
