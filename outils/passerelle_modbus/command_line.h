#pragma once
#include <optional>
#include <string>

struct command_line {
  bool only_table = false;   // --table
  std::optional<int> ident;  // of the plant's area; always there unless only the table is asked for
  std::string address = "127.0.0.1";
  int port = 1502;
  bool drop_outputs = true;  // when the last client has gone
};

// Ends the process where there is nothing to do: --help and --version with status 0, anything that is wrong
// with a message and status 2.
command_line read_command_line(int argc, char** argv);
