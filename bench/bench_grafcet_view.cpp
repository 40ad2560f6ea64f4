// What a view of the mine's reference charts costs: a frame in the window's process, once for its lights and
// once for all when the operator zooms; and what the controller pays for being looked at, beside a batch
// itself.

#include <benchmark/benchmark.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "outils/grafcet/painting.h"
#include "outils/grafcet/shared_situation.h"

namespace {

const grafcet_file::program& mine() {
  static const grafcet_file::program charts = [] {
    std::ifstream file(MINE);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    return grafcet_file::read_charts(text).charts;
  }();
  return charts;
}

enum class costs { nothing, view_that_sleeps, view_that_asks };

template <costs looked_at>
void batch(benchmark::State& state) {
  grafcet_file::evolution at_work(mine());
  shared_situation shown(at_work.now());
  grafcet_file::situation seen = at_work.now();
  std::vector<std::int32_t> inputs(mine().inputs.size());
  std::int64_t time_us = 0;
  for (auto _ : state) {
    inputs[static_cast<std::size_t>(time_us / 5000) % inputs.size()] ^= 1;
    at_work.batch(inputs, time_us += 5000);
    if (looked_at != costs::nothing) shown.hand_over_if_asked(at_work.now());
    if (looked_at == costs::view_that_asks) benchmark::DoNotOptimize(shown.look(seen));
  }
}

template <bool whole>
void frame(benchmark::State& state) {
  const grafcet_file::drawing drawn = lay_out(mine(), painted_widths());
  const grafcet_file::evolution at_work(mine());
  const double scale = 1000 / drawn.width;
  cairo_surface_t* const picture =
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, 1000, static_cast<int>(drawn.height * scale));
  cairo_t* const to = cairo_create(picture);
  cairo_scale(to, scale, scale);
  for (auto _ : state) {
    if (whole) paint(to, mine(), drawn);
    paint_lit(to, mine(), drawn, at_work.now());
  }
  cairo_destroy(to);
  cairo_surface_destroy(picture);
}

void layout(benchmark::State& state) {
  const auto widths = painted_widths();
  for (auto _ : state) benchmark::DoNotOptimize(lay_out(mine(), widths));
}

}  // namespace

BENCHMARK(batch<costs::nothing>)->Name("batch, without a view");
BENCHMARK(batch<costs::view_that_sleeps>)->Name("batch, with a view that has nothing to ask");
BENCHMARK(batch<costs::view_that_asks>)->Name("batch, handed over and read each time");
BENCHMARK(frame<false>)->Name("frame, lights only")->Unit(benchmark::kMicrosecond);
BENCHMARK(frame<true>)->Name("frame, all")->Unit(benchmark::kMicrosecond);
BENCHMARK(layout)->Name("layout")->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
