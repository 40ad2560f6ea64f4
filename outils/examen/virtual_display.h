#pragma once
// A display of the exam's own, which nobody sees.

#include <sys/types.h>

#include <chrono>
#include <stdexcept>
#include <string>

struct display_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class virtual_display {
 public:
  // 1280 * 800 pixels of 24 bits, ready when constructed; what its server has to say goes to the descriptor
  // `streams`. Throws a display_error.
  explicit virtual_display(int streams);
  // Takes the sockets and locks of its server along.
  ~virtual_display();
  virtual_display(const virtual_display&) = delete;
  virtual_display& operator=(const virtual_display&) = delete;

  const std::string& name() const { return display; }  // ":7"

 private:
  pid_t server = -1;
  std::string display;
};
