// A batch of the mine's reference charts (share/grafcets/mine.grafcet); the aim is 20 us.
#include <benchmark/benchmark.h>

#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <vector>

#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/grafcet_file/parser.h"

namespace {

std::string text_of_mine() {
  std::ifstream file(REPOSITORY "/share/grafcets/mine.grafcet");
  return {std::istreambuf_iterator<char>(file), {}};
}

using batch = std::vector<std::int32_t>;

batch inputs_that_are_1(const grafcet_file::program& charts, std::initializer_list<const char*> names) {
  batch values(charts.inputs.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    for (const char* const name : names) values[i] |= charts.inputs[i].name == name;
  return values;
}

void read_mine(benchmark::State& state) {
  const std::string text = text_of_mine();
  for (auto _ : state) benchmark::DoNotOptimize(grafcet_file::read_charts(text));
}

void nothing_changes(benchmark::State& state) {
  const auto read = grafcet_file::read_charts(text_of_mine());
  grafcet_file::evolution charts(read.charts);
  const batch still = inputs_that_are_1(read.charts, {"wAvide", "wBvide", "wCvide"});
  std::int64_t time = 0;
  for (auto _ : state) charts.batch(still, time += 10'000);
}

// Emergency and initialisation in turn: every chart evolves in every batch, more than in any real run.
void everything_changes(benchmark::State& state) {
  const auto read = grafcet_file::read_charts(text_of_mine());
  grafcet_file::evolution charts(read.charts);
  const batch turns[] = {inputs_that_are_1(read.charts, {"wAvide", "wBvide", "wCvide", "init"}),
                         inputs_that_are_1(read.charts, {"wAvide", "wBvide", "wCvide", "atu"})};
  std::int64_t time = 0, evolutions = 0;
  for (auto _ : state) {
    charts.batch(turns[time / 10'000 % 2], time);
    time += 10'000;
    evolutions += charts.now().evolutions;
  }
  state.counters["evolutions"] = static_cast<double>(evolutions) / static_cast<double>(state.iterations());
}

}  // namespace

BENCHMARK(read_mine)->Unit(benchmark::kMicrosecond);
BENCHMARK(nothing_changes)->Unit(benchmark::kMicrosecond);
BENCHMARK(everything_changes)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
