#pragma once
// The middle and the tail of measured times, as counters of a benchmark.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

class distribution {
 public:
  using clock = std::chrono::steady_clock;

  void add(clock::duration time) { times.push_back(std::chrono::duration<double, std::micro>(time).count()); }

  void report(benchmark::State& state) {
    std::sort(times.begin(), times.end());
    state.counters["min_us"] = at(0.0);
    state.counters["median_us"] = at(0.5);
    state.counters["p99_us"] = at(0.99);
    state.counters["max_us"] = at(1.0);
  }

 private:
  double at(double share) const {
    return times.empty() ? 0.0
                         : times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
  }

  std::vector<double> times;
};
