#include "bibliocpp/signal_record.h"

#include <algorithm>
#include <utility>

namespace {

constexpr auto begins = [](std::int64_t time_us, const signal_change& change) {
  return time_us < change.time_us;
};

std::ptrdiff_t last_at(const std::deque<signal_change>& changes, std::int64_t time_us) {
  return std::upper_bound(changes.begin(), changes.end(), time_us, begins) - changes.begin() - 1;
}

}  // namespace

signal_record::signal_record(std::vector<recorded_signal> signals, std::size_t most_changes)
    : all(std::move(signals)), by_signal(all.size()), most(most_changes) {}

void signal_record::add(std::size_t signal, const signal_change& change) {
  extend(change.time_us);
  auto& changes = by_signal[signal];
  if (!changes.empty() && changes.back().value == change.value) return;
  changes.push_back(change);
  ++count;
  if (count + gaps.size() > most) forget_oldest();
}

void signal_record::miss(const missed_batches& some) {
  extend(some.time_us);
  gaps.push_back(some);
  missed_count += some.count;
  if (count + gaps.size() > most) forget_oldest();
}

void signal_record::extend(std::int64_t time_us) { end = std::max(end, time_us); }

std::ptrdiff_t signal_record::last_change_at(std::size_t signal, std::int64_t time_us) const {
  return last_at(by_signal[signal], time_us);
}

// An eighth goes at once, so that it is rarely done: the earliest moment is sought before which there are
// so many.
void signal_record::forget_oldest() {
  const auto to_drop = [this](std::int64_t cut) {
    std::size_t sum = 0;
    for (const auto& changes : by_signal)
      sum += static_cast<std::size_t>(std::max<std::ptrdiff_t>(last_at(changes, cut), 0));
    return sum + static_cast<std::size_t>(std::count_if(gaps.begin(), gaps.end(),
                                                        [&](const auto& gap) { return gap.time_us <= cut; }));
  };
  std::int64_t early = forgotten, late = end;
  while (early < late) {
    const std::int64_t middle = early + (late - early) / 2;
    if (to_drop(middle) >= (most + 7) / 8)
      late = middle;
    else
      early = middle + 1;
  }
  forgotten = late;
  for (auto& changes : by_signal) {
    const auto gone = std::max<std::ptrdiff_t>(last_at(changes, forgotten), 0);
    changes.erase(changes.begin(), changes.begin() + gone);
    count -= static_cast<std::size_t>(gone);
  }
  std::erase_if(gaps, [this](const auto& gap) { return gap.time_us <= forgotten; });
}
