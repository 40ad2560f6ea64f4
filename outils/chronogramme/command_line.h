#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "outils/chronogramme/window_place.h"

// What is to be shown; with none of the three, the newest area of a running plant.
struct command_line {
  std::optional<pid_t> plant;
  std::optional<int> area;
  std::string file;
  window_place place;
};

// Ends the process after --help and --version; throws a std::runtime_error that says what is wrong. Options
// may stand anywhere; "--" ends them.
command_line read_command_line(int argc, char** argv);
