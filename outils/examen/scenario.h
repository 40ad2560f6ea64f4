#pragma once
// What is asked of a controller: what the operator does, what is disturbed and what is expected, as a teacher
// writes it in a TOML file (doc/judging-controllers.md). Signals are names here, of any plant's; a course
// (course.h) looks them up.
//
// Times are the plant's: cycle n stands at n * 5 ms exactly, whatever the machine takes for it.

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

constexpr std::int64_t cycle_us = 5000;
// The nearest cycle; seconds of a scenario have at most three decimals.
std::int64_t cycles_of(double seconds);
constexpr double seconds_of(std::int64_t cycle) { return static_cast<double>(cycle * cycle_us) / 1e6; }

// All mistakes of a scenario, one a line: "FILE:LINE: what is wrong, what was meant".
struct scenario_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A signal that is named, and where, for what is to be said when the plant has none of that name.
struct named_signal {
  std::string name;
  int line = 0;
};

// The operator does one thing after the other. Once the one before is done, an action waits for its moment:
// its cycle `at`, or until the signal `on` has its value and then, or else at once, for `after` cycles.
struct operator_action {
  enum class kind { press, hold, release, set } what;
  std::string label;         // of the button or roller, as the plant shows it
  double value = 0;          // of a roller
  std::int64_t during = 20;  // cycles that a button is pressed for
  std::optional<std::int64_t> at;
  std::int64_t after = 0;
  std::optional<named_signal> on;
  std::int32_t on_value = 1;
  std::int64_t times = 0;   // n: it must have become so n times since the action before; 0: be so
  std::int64_t limit = -1;  // cycles to wait for that; -1: to the end
  int line = 0;
};

// A signal that has a value for a while, whatever plant or controller say.
struct forcing {
  named_signal signal;
  std::int32_t value;
  std::int64_t from, until;  // cycles; until is the first that is free again
};

struct expected_edges {  // deliveries: the signal rises so often, before that cycle
  named_signal signal;
  std::int64_t at_least;
  std::int64_t before;
};

struct expected_rest {  // from so long after `after` has risen: all signals are 1, until `until` rises or the
                        // end
  std::vector<named_signal> signals;
  named_signal after;
  std::int64_t delay;
  std::optional<named_signal> until;
};

struct expected_stop {  // from so long after the signal has risen: all outputs are 0, until `until` rises or,
  named_signal signal;  // without it, as long as the signal is 1
  std::int64_t delay;
  std::optional<named_signal> until;
  std::vector<named_signal> except;
};

struct expected_never {  // the signal is never 1, or never while the other one is
  named_signal signal;
  std::optional<named_signal> with;
};

struct scenario {
  std::string file;   // as messages call it
  std::string title;  // the file's name when it gives none
  std::string plant;  // "wagons", "galerie" or a path; empty: any
  std::int64_t cycles = 0;
  std::vector<operator_action> actions;  // the speeds that a scenario begins with are the first ones
  std::vector<forcing> forced;
  std::vector<expected_edges> deliveries;
  std::vector<expected_rest> rests;
  std::vector<expected_stop> stops;
  std::vector<expected_never> nevers;
  std::string fault;  // part of the plant's sentence that must come; empty: none may come
};

// Both throw a scenario_error with every mistake that can be told from the text alone.
scenario read_scenario(const std::string& path);
scenario parse_scenario(const std::string& text, const std::string& file);

// The built-in one for a plant ("wagons", "galerie", or a path that ends so); throws a scenario_error for
// others: there --scenario is needed.
scenario default_scenario_for(const std::string& plant);
