#pragma once
// Signals of an area as objects of a controller: asked for once, by name, then read and written with no
// search and no text.
//
//   const input_signal dc(mine, "dc");
//   output_signal A_DROITE(mine, "A_DROITE");
//   ...
//   A_DROITE = dc && !pcA;
//
// Making one checks its name. When the area has no signal of that name in that direction, one message on
// the standard error stream, in the language of the locale, says so with the nearest name and all that
// there are, and the process ends with status 1. Of two signals with the same name the later counts.
//
// A handle may be copied, and stays good as long as its client lives.

#include <atomic>
#include <cstdint>
#include <string>

#include "bibliocpp/IOshare.h"

class input_signal {
 public:
  input_signal(IOsharemem_client& area, const std::string& name);

  // The value at the last receive() that gave 1; 0 before the first.
  operator int() const { return *value; }

 private:
  const int* value;
};

class output_signal {
 public:
  output_signal(IOsharemem_client& area, const std::string& name);
  output_signal(const output_signal&) = default;

  // Writes the output at once. The plant sees stores in the order of the assignments, also among those
  // made by name.
  output_signal& operator=(int new_value) {
    std::atomic_ref(*value).store(new_value, std::memory_order_release);
    return *this;
  }
  // One output is not another's value: an output cannot be read.
  output_signal& operator=(const output_signal&) = delete;

 private:
  std::int32_t* value;
};
