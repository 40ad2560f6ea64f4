#pragma once
// An operator of the mine who works the desk at random: every button, every roller and Interv.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

class operator_at_random {
 public:
  // The same seed makes the same choices on every machine.
  explicit operator_at_random(unsigned seed) : random(seed) {}

  // Once a cycle: what is done before the next one, as lines for the mock-up. Pushes last up to 40 cycles,
  // pauses up to 150.
  std::vector<std::string> advance();
  // Lets go of what is held, for good.
  std::vector<std::string> leave();

 private:
  int up_to(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

  std::mt19937 random;
  std::string held;  // a button's label; empty: none
  int wait = 0;      // cycles until it does something
};
