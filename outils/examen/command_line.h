#pragma once

#include <string>
#include <vector>

#include "outils/examen/candidates.h"

struct command_line {
  std::string plant;     // "wagons", "galerie" or a path; empty: the scenario's, else wagons
  std::string scenario;  // a file; empty: the built-in one of the plant
  std::vector<candidate> candidates;
  std::string junit, report;  // empty: none wanted
  bool real_time = false;
  int acceleration = 200;  // of the controllers' sleeps; 1: none
  int patience_ms = 500;   // for the answer to a batch
  int at_once = 1;
  int memory_mib = 512;    // for each controller
  int most_seconds = 300;  // real ones, for each controller
  int random_seed = -1;    // of an operator at random in place of the scenario's; -1: none
  std::string answer;      // to --help or --version: print it, and that is all
};

// Options may stand anywhere; "--" ends them. Throws a std::runtime_error that says what is wrong, also for
// folders and lists that cannot be read.
command_line read_command_line(int argc, char** argv);
