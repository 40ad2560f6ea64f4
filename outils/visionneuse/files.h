#pragma once
#include <functional>
#include <ostream>
#include <string>
#include <vector>

// The lines of a text file, without their ends (LF or CRLF) and without a byte order mark. Throws a
// failure when it cannot be read.
std::vector<std::string> read_lines(const std::string& path);

// Makes the file of what `write` writes, whole or not at all: a file that was there stays as it was until
// the new one is complete, and stays when that fails, which throws a failure. A path that is no plain file
// (a device, a pipe) is written to as it is.
void write_whole_file(const std::string& path, const std::function<void(std::ostream&)>& write);
