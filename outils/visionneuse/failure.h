#pragma once
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include "bibliocpp/language.h"

// What ends the program early: one line for the user, and the exit status.
struct failure : std::runtime_error {
  failure(int a_status, const std::string& line) : std::runtime_error(line), status(a_status) {}
  // The line ends with the system's words for the error.
  failure(int a_status, const std::string& what, int error)
      : failure(a_status, tr("{} : {}", {what, std::strerror(error != 0 ? error : EIO)})) {}
  int status;
};

constexpr int cannot_write = 1;
constexpr int no_memory = 1;
constexpr int bad_input = 2;
