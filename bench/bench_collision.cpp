// The collision test against a growing number of parts of three boxes each, none in the way: the
// dearest case, as every part has to be looked at.

#include <benchmark/benchmark.h>

#include <list>

#include "maquettes_graphiques/objgraphiques.h"

namespace {

void collision_of_one_part(benchmark::State& state) {
  movepart_manager man;
  std::list<movepart> parts;
  for (int n = 0; n < state.range(0); ++n) {
    movepart& part = parts.emplace_back(man, nullptr, FL_BLACK);
    const int x = n % 10 * 60;
    const int y = n / 10 * 30;
    part.add(x, y + 15, 40, 5, FL_BLUE);
    part.add(x + 40, y, 5, 20, FL_BLUE);
    part.add(x - 5, y, 5, 20, FL_BLUE);
  }
  for (auto _ : state) benchmark::DoNotOptimize(man.collision(&parts.front()));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(collision_of_one_part)->Arg(3)->Arg(30)->Arg(100)->Complexity();

}  // namespace

BENCHMARK_MAIN();
