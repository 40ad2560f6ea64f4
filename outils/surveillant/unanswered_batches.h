#pragma once
// Which batches of inputs a controller leaves unanswered, and for how long.

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>

class unanswered_batches {
 public:
  using time = std::chrono::steady_clock::time_point;

  unanswered_batches(std::int64_t clock, std::int64_t output_clock)
      : last_clock(clock), last_output_clock(output_clock) {}

  // To be called every few milliseconds with both clocks of the area. Outputs announced answer every batch
  // up to now: a controller takes the newest. A plant that stands still announces nothing, so nothing is
  // asked of the controller either. What was seen only once it was answered is never counted, so that a
  // pause of our own is not laid at the controller's door.
  void look(std::int64_t clock, std::int64_t output_clock, time now);

  // Whether the controller has ever announced outputs.
  bool answered_ever() const { return answered; }
  // The oldest batch that waits for an answer was announced then.
  std::optional<time> waiting_since() const { return oldest; }

  struct report {
    long long batches;  // left unanswered for more than 100 ms
    std::chrono::milliseconds longest;
  };
  // What has come together since the last report: once it is answered or a second old, and at most once a
  // second; `at_once` when there will be no later call.
  std::optional<report> due(time now, bool at_once = false);

 private:
  struct arrival {
    time when;
    std::int64_t batches;
  };

  std::int64_t last_clock, last_output_clock;
  bool answered = false;
  std::optional<time> oldest, first_late, last_report;
  std::deque<arrival> waiting;  // those not yet late
  report late{};
};
