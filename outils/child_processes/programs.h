#pragma once
#include <optional>
#include <string>

// The path of a program: itself when the name has a slash, else the one of that name beside this program,
// else in PATH; none when there is no such file that may be executed.
std::optional<std::string> find_program(const std::string& name);

// The word as a shell reads it back unharmed, whatever it holds. Plain words are quoted as well: the
// toolkit, which looks through a plant's arguments first, takes none of them for an option of its own.
std::string quoted_for_shell(const std::string& word);
