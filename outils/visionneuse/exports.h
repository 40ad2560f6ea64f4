#pragma once
#include <ostream>
#include <span>
#include <string>
#include <vector>

using message_lines = std::vector<std::string>;

// What messages can be exported to without a window. The command line, the usage and the program know
// formats from this table only: a new one is a row and what writes it.
struct export_format {
  const char* option;  // its name on the command line, which takes the name of a file
  void (*write)(const message_lines& lines, std::ostream& file);
};

extern const std::span<const export_format> export_formats;
