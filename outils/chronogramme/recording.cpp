#include "outils/chronogramme/recording.h"

#include <chrono>
#include <utility>

namespace {

// The recorder's own record only has to know the present values: the whole is kept here.
constexpr std::size_t present_values = 10'000;
constexpr auto between_looks = std::chrono::milliseconds(1);
constexpr std::int64_t figures_every_us = 250'000;

plant_figures figures_of(const area_recorder& recorder) {
  return {.state = recorder.state(),
          .cycles_a_second = recorder.cycles_a_second(),
          .batches = recorder.batches(),
          .answers = recorder.answers(),
          .median_us = recorder.median_answer_us(),
          .longest_us = recorder.longest_answer_us()};
}

}  // namespace

recording::recording(area_view area)
    : recorder(std::move(area), present_values),
      kept(recorder.record().signals()),
      shown(figures_of(recorder)),
      changes(recorder.news().changes),
      newest(shown),
      looking([this](const std::stop_token& stop) { keep_looking(stop); }) {}

void recording::keep_looking(const std::stop_token& stop) {
  std::int64_t figures_due_us = 0;
  while (!stop.stop_requested() && !recorder.ended()) {
    std::this_thread::sleep_for(between_looks);
    const look_news& news = recorder.look();
    const std::int64_t now = recorder.record().end_us();
    const std::lock_guard lock(handing_over);
    changes.insert(changes.end(), news.changes.begin(), news.changes.end());
    if (news.missed > 0) missed.push_back({now, news.missed});
    looked_until_us = now;
    if (now < figures_due_us && !recorder.ended()) continue;
    newest = figures_of(recorder);
    figures_due_us = now + figures_every_us;
  }
}

bool recording::collect() {
  std::vector<look_news::change> new_changes;
  std::vector<missed_batches> new_gaps;
  std::int64_t until = 0;
  {
    const std::lock_guard lock(handing_over);
    new_changes.swap(changes);
    new_gaps.swap(missed);
    until = looked_until_us;
    shown = newest;
  }
  for (const auto& [signal, change] : new_changes) kept.add(signal, change);
  for (const missed_batches& gap : new_gaps) kept.miss(gap);
  kept.extend(until);
  return !new_changes.empty() || !new_gaps.empty();
}
