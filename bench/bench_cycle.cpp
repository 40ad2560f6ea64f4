// One cycle's own work, all but the pause, with the three wagons moving.

#include <benchmark/benchmark.h>
#include <sys/shm.h>
#include <unistd.h>

#include "bench/distribution.h"
#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/WAGONS/simulation_cycle.h"

namespace {

void one_cycle(benchmark::State& state) {
  auto* const panel = new mine_class;
  mine_scene scene(panel);
  IOsharemem_server* const area = init_partage_mem("true");
  auto* const record = static_cast<IO_controleur*>(shmat(area->memory_ident(), nullptr, 0));
  simulation run{panel, scene, area};
  show_mine(run);
  distribution times;
  int cycles = 0;
  for (auto _ : state) {
    const bool there = cycles++ / 60 % 2 == 0;
    for (const int output : {sortie::A_GAUCHE, sortie::B_DROITE, sortie::C_DROITE})
      record->output[output] = there;
    for (const int output : {sortie::A_DROITE, sortie::B_GAUCHE, sortie::C_GAUCHE})
      record->output[output] = !there;
    const auto start = distribution::clock::now();
    simulation_cycle(run);
    const auto time = distribution::clock::now() - start;
    times.add(time);
    state.SetIterationTime(std::chrono::duration<double>(time).count());
    usleep(5000);  // the display draws meanwhile, as it does in a run
  }
  times.report(state);
  shmctl(area->memory_ident(), IPC_RMID, nullptr);
  panel->mine->hide();
}
BENCHMARK(one_cycle)->UseManualTime()->Iterations(2000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
