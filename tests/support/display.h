#pragma once
// A display of one's own: every test program runs on an X server that nobody else draws on.

#include <string>

#include "tests/support/process.h"

// An Xvfb on a free display number, 1280 * 800 pixels of 24 bits, ready when constructed. It ends with this
// object, and also when the test program dies.
class x_server {
 public:
  x_server();
  ~x_server() { kill(); }
  x_server(const x_server&) = delete;
  x_server& operator=(const x_server&) = delete;

  const std::string& name() const { return display; }  // ":7"
  void kill();

 private:
  process server;
  std::string display;
};

// Starts one for the whole test program and puts it into DISPLAY.
void use_own_display();
