#pragma once
#include <functional>
#include <ostream>
#include <string>
#include <vector>

// The lines of a text file, without their ends (LF or CRLF) and without a byte order mark. Throws a
// failure when it cannot be read.
std::vector<std::string> read_lines(const std::string& path);

// Makes the file of what `write` writes, whole or not at all: a failure, which is thrown, and a signal that
// ends the program leave what was there, and nothing besides. A file that is there stays the same one to the
// system and gets new contents, so that its owner, mode and links remain; a link that leads nowhere yet gets
// its file. A path that is no plain file (a device, a pipe, the standard output) is written to as it is.
void write_whole_file(const std::string& path, const std::function<void(std::ostream&)>& write);
