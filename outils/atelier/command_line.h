#pragma once
#include <string>
#include <vector>

struct command_line {
  std::string plant = "wagons";      // a name or a path
  std::vector<std::string> command;  // the controller with its arguments
};

// Ends the process where there is nothing to run: --help and --version with status 0, anything that is
// wrong with the usage and status 2.
command_line read_command_line(int argc, char** argv);
