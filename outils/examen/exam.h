#pragma once
// The exam of one controller, from its display to its verdict.

#include <cstdint>
#include <string>
#include <vector>

#include "outils/examen/verdict.h"

struct exam_order {
  std::string plant;          // its name or path, as asked for
  std::string plant_program;  // the path to be run
  std::string scenario;       // a file; empty: the built-in one of the plant
  bool real_time = false;
  int acceleration = 1;  // of the controller's pauses
  int patience_ms = 500;
  int most_seconds = 300;
  int memory_mib = 512;
  int random_seed = -1;
  int processor = 0;     // exams at the same time get different ones
  std::string missing;   // of a candidate without a command: what was looked for in vain
  bool boxed = false;    // in the box of an exam (sandbox.h): then the controller gets one too
  std::string evidence;  // a folder; empty: nothing is kept
  std::string name;      // of the candidate
  std::vector<std::string> command;
};

// Never throws: what keeps it from judging is in the verdict. SIGTERM, SIGINT and SIGHUP end it, with all
// that it has started.
verdict hold_exam(const exam_order& order, const std::string& self);
