#pragma once
// What every program with options of its own answers, in the same way.
#include <string>

// To --help: the usage, and that there are these two options; to --version: "<program> <version>". Both go
// to the standard output stream and end the process, with status 1 when that cannot be written, else 0.
[[noreturn]] void answer_help(const std::string& usage);
[[noreturn]] void answer_version();
