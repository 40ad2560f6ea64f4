#pragma once
#include <stdexcept>
#include <string>

// What ends the program early: one line for the user, and the exit status.
struct failure : std::runtime_error {
  failure(int a_status, const std::string& line) : std::runtime_error(line), status(a_status) {}
  int status;
};

constexpr int cannot_write = 1;
constexpr int bad_input = 2;
