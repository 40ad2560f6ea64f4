#pragma once
#include <string>

struct command_line {
  bool help = false;
  std::string file;
  std::string title;       // the file's name when none is given
  std::string pdf_viewer;  // empty for none
  int language = 0;        // 0 French, 1 English
  // Where to export to; empty for no such export.
  std::string pdf, postscript, text;

  bool exports() const { return !pdf.empty() || !postscript.empty() || !text.empty(); }
};

extern const char* const usage;

// Throws a failure that says what is wrong. Options may stand before or after the file; "--" ends them.
command_line read_command_line(int argc, char** argv);
