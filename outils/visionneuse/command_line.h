#pragma once
#include <map>
#include <string>

#include "outils/visionneuse/exports.h"

struct command_line {
  std::string file;
  std::string title;                                    // the file's name when none is given
  std::string pdf_viewer;                               // empty for none
  int language = 0;                                     // 0 French, 1 English; by default the locale's
  std::map<const export_format*, std::string> exports;  // the file that each goes to
};

// Ends the process after --help and --version; throws a failure that says what is wrong. Options may stand
// before or after the file; "--" ends them.
command_line read_command_line(int argc, char** argv);
