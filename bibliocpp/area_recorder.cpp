#include "bibliocpp/area_recorder.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::int64_t suspended_after_us = 500'000, second_us = 1'000'000;
constexpr std::size_t waits_kept = 1000;
constexpr std::int64_t over = -1;

// How far a counter in the area has come; 0 when it was not the plant's hand that moved it: it fell, or
// leapt further than years would take it.
std::int64_t advance(std::int64_t from, std::int64_t to) {
  constexpr std::int64_t credible = 1'000'000'000;
  return from >= 0 && to > from && to - from < credible ? to - from : 0;
}

std::vector<recorded_signal> signals_of(const area_view& area) {
  std::vector<recorded_signal> all;
  for (const std::string& name : area.input_names()) all.push_back({name, false});
  for (const std::string& name : area.output_names()) all.push_back({name, true});
  return all;
}

}  // namespace

area_recorder::area_recorder(area_view an_area, std::size_t most_changes)
    : view(std::move(an_area)),
      kept(signals_of(view), most_changes),
      counted_clock(view.clock()),
      counted_answers(view.output_clock()) {
  look_at(0);
}

std::int64_t area_recorder::now_us() const {
  return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start)
      .count();
}

const look_news& area_recorder::look_at(std::int64_t time_us) {
  latest.changes.clear();
  latest.missed = 0;
  take_inputs(time_us);
  take_outputs(time_us);
  measure(time_us);
  kept.extend(time_us);
  last_look = time_us;
  present = state_at(time_us);
  return latest;
}

// At the end of a run nobody writes any more: what stands there is the last batch, whichever it was.
void area_recorder::take_inputs(std::int64_t time_us) {
  const std::size_t count = view.input_names().size();
  constexpr int tries = 3;
  for (int n = 0; n < tries; ++n) {
    const std::int64_t before = view.clock();
    const bool first = kept.size() == 0;
    if (before == clock && !first) return;
    for (std::size_t i = 0; i < count; ++i) values[i] = view.input(i);
    if (view.clock() != before) continue;
    if (before != over) {
      latest.missed = first ? 0 : std::max<std::int64_t>(advance(clock, before) - 1, 0);
      if (latest.missed > 0) kept.miss({time_us, latest.missed});
      clock = before;
    }
    for (std::size_t i = 0; i < count; ++i) take(i, time_us, values[i]);
    return;
  }
}

void area_recorder::take_outputs(std::int64_t time_us) {
  const std::size_t inputs = view.input_names().size();
  for (std::size_t k = 0; k < view.output_names().size(); ++k) take(inputs + k, time_us, view.output(k));
}

void area_recorder::take(std::size_t signal, std::int64_t time_us, std::int32_t value) {
  const auto& before = kept.changes(signal);
  if (!before.empty() && before.back().value == value) return;
  const signal_change change{time_us, clock, value};
  kept.add(signal, change);
  latest.changes.push_back({signal, change});
}

void area_recorder::measure(std::int64_t time_us) {
  const std::int64_t answered = view.output_clock(), announced = view.clock();
  const std::int64_t new_batches = advance(counted_clock, announced);
  const std::int64_t new_answers = advance(counted_answers, answered);
  const bool was_waiting = waiting_since >= 0;
  batches_seen += new_batches;
  answers_seen += new_answers;
  if (new_answers > 0 && (was_waiting || new_batches > 0)) {
    // Both within one look: the batch came after the look before, and that is all that is known.
    const std::int64_t wait = time_us - (was_waiting ? waiting_since : last_look);
    longest = std::max(longest, wait);
    if (waits.size() < waits_kept) waits.push_back(wait);
    waits[next_wait++ % waits_kept] = wait;
    waiting_since = -1;
  }
  if (new_batches > 0) {
    last_batch_us = time_us;
    if (waiting_since < 0 && (was_waiting || new_answers == 0)) waiting_since = time_us;
  }
  if (announced != over) counted_clock = announced;
  counted_answers = answered;
  if (time_us - rate_since_us >= second_us) {
    rate = static_cast<double>((batches_seen - rate_since_batches) * second_us) /
           static_cast<double>(time_us - rate_since_us);
    rate_since_us = time_us;
    rate_since_batches = batches_seen;
  }
}

plant_state area_recorder::state_at(std::int64_t time_us) const {
  if (view.clock() == over) return plant_state::over;
  // It may have said so and gone between the two questions.
  if (!view.plant_runs()) return view.clock() == over ? plant_state::over : plant_state::killed;
  return time_us - last_batch_us >= suspended_after_us ? plant_state::suspended : plant_state::running;
}

double area_recorder::cycles_a_second() const { return present == plant_state::running ? rate : 0; }

std::int64_t area_recorder::median_answer_us() const {
  if (waits.empty()) return -1;
  std::vector<std::int64_t> sorted = waits;
  const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
  std::nth_element(sorted.begin(), middle, sorted.end());
  return *middle;
}
