#pragma once
#include <string>
#include <vector>

struct command_line {
  bool drop_outputs = false;         // once the controller has ended
  int ident = 0;                     // of the plant's area
  std::vector<std::string> command;  // the controller with its arguments, "-automemlink N" included
};

// Ends the process where there is nothing to watch: --help and --version with status 0, anything that is
// wrong with the usage and status 2.
command_line read_command_line(int argc, char** argv);
