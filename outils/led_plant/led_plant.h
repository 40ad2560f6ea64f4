#pragma once
// A mock-up started by this process and led by it, cycle by cycle (doc/leading-a-mock-up.md).

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

// It could not be started; its text names the program and the reason.
struct led_plant_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What a mock-up says.
struct plant_line {
  enum class kind { area, pause, fault, seen, error, end, other, gone } what;
  std::int64_t number = 0;  // area: its identifier; pause: the cycle that is done
  std::string text;         // fault, error: with its line breaks; other: a line that is none of these
};

class led_plant {
 public:
  // Starts the program words[0] with all words as its arguments. Both its streams go to the descriptor
  // `streams`, which stays the caller's; -1: to ours. SIGPIPE must be ignored or blocked in this process.
  explicit led_plant(const std::vector<std::string>& words, int streams = -1);
  // The run ends with its leader. Whoever does not leave by itself within a second is killed,
  // and an area that it leaves is removed.
  ~led_plant();
  led_plant(const led_plant&) = delete;
  led_plant& operator=(const led_plant&) = delete;

  pid_t pid() const { return program; }

  // Waits for its next line; none when none comes in time. `gone`, again and again, once it has closed its
  // end, which it does when it ends. A line comes some microseconds after the last go, in which a wait that
  // sleeps would be the greater part: the first moments are spent looking.
  std::optional<plant_line> next(std::chrono::milliseconds in_time);

  // Lines for it, each with its "\n". To a mock-up that has gone nothing is said.
  void say(const std::string& lines) const;

 private:
  std::optional<plant_line> take_line();
  bool receive();

  pid_t program = -1;
  int to_plant = -1, from_plant = -1;
  std::string received;
  bool gone = false;
};
