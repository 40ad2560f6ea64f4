// One frame of the chart: 43 signals, 10 minutes on 1000 columns, with a growing number of changes. Once as
// commands to the display, and once waiting until the display has carried them out.

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "outils/chronogramme/chart_drawing.h"

namespace {

constexpr std::size_t signals = 43;
constexpr std::int64_t ten_minutes_us = 600'000'000;

signal_record record_of(std::int64_t changes) {
  std::vector<recorded_signal> names;
  for (std::size_t s = 0; s < signals; ++s) names.push_back({"signal_" + std::to_string(s), s >= 24});
  signal_record record(names);
  std::mt19937 dice(1);
  std::vector<int> values(signals);
  for (std::int64_t n = 0; n < changes; ++n) {
    const std::size_t signal = dice() % signals;
    values[signal] = 1 - values[signal];
    record.add(signal, {n * ten_minutes_us / changes, n, values[signal]});
  }
  record.extend(ten_minutes_us);
  return record;
}

template <bool to_the_end>
void frame(benchmark::State& state) {
  const signal_record record = record_of(state.range(0));
  chart_view view = view_of(record);
  view.span_us = ten_minutes_us;
  static auto* const window = new Fl_Double_Window(1150, 700, "bench");
  window->end();
  window->show();
  while (!window->visible_r() || window->damage()) Fl::wait(0.01);
  window->make_current();
  const Fl_Offscreen surface = fl_create_offscreen(window->w(), window->h());
  fl_begin_offscreen(surface);
  for (auto _ : state) {
    look_for_numbers(view, record);
    draw_chart(record, view, layout_of(record, view, 0, 0, window->w(), window->h(), 0));
    if (to_the_end) XSync(fl_display, 0);
  }
  fl_end_offscreen();
  fl_delete_offscreen(surface);
}

void traces(benchmark::State& state) {
  const signal_record record = record_of(state.range(0));
  for (auto _ : state)
    for (std::size_t s = 0; s < signals; ++s)
      benchmark::DoNotOptimize(trace(record, s, {0, ten_minutes_us, 1000}));
}

void lengths(benchmark::internal::Benchmark* bench) {
  bench->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(traces)->Apply(lengths);
BENCHMARK(frame<false>)->Apply(lengths);
BENCHMARK(frame<true>)->Apply(lengths);

}  // namespace

BENCHMARK_MAIN();
