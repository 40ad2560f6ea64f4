#pragma once
// Changes of a plant's signals over time: what is recorded, looked at as a chart, written and read.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

struct recorded_signal {
  std::string name;
  bool is_output = false;
};

struct signal_change {
  std::int64_t time_us;  // since the start of the record, microseconds
  std::int64_t clock;    // the plant's batch of inputs that was the last announced
  std::int32_t value;
};

// Batches of inputs that came and went between two looks: what they held is not known.
struct missed_batches {
  std::int64_t time_us;  // when it was noticed
  std::int64_t count;
};

class signal_record {
 public:
  // 24 bytes each: less than 100 MB.
  static constexpr std::size_t default_most = 4'000'000;

  // `most_changes`: when more are recorded, the oldest of all signals go (see
  // forgotten_until_us()), an eighth at once; marks of missed batches count as changes.
  explicit signal_record(std::vector<recorded_signal> signals, std::size_t most_changes = default_most);

  const std::vector<recorded_signal>& signals() const { return all; }

  // Times must not fall. A value that the signal has already is not recorded again; the first one of a
  // signal is its initial value.
  void add(std::size_t signal, const signal_change& change);
  void miss(const missed_batches& some);
  // The record reaches to here, changes or not.
  void extend(std::int64_t time_us);

  // Of one signal, the oldest first; its value is that of the last change at or before a moment.
  const std::deque<signal_change>& changes(std::size_t signal) const { return by_signal[signal]; }
  // Index of the last change at or before the moment; -1 when the value is not known then.
  std::ptrdiff_t last_change_at(std::size_t signal, std::int64_t time_us) const;
  const std::deque<missed_batches>& missed() const { return gaps; }
  std::int64_t missed_in_all() const { return missed_count; }
  std::int64_t end_us() const { return end; }
  // Changes before this moment have been dropped to make room, but for the value that was valid there; 0
  // when none have.
  std::int64_t forgotten_until_us() const { return forgotten; }
  std::size_t size() const { return count; }

 private:
  void forget_oldest();

  std::vector<recorded_signal> all;
  std::vector<std::deque<signal_change>> by_signal;
  std::deque<missed_batches> gaps;
  std::size_t most, count = 0;
  std::int64_t missed_count = 0, end = 0, forgotten = 0;
};
