// One cycle of the gallery, all but the pause, with nearly everything moving.

#include <benchmark/benchmark.h>
#include <sys/shm.h>
#include <unistd.h>

#include <initializer_list>

#include "bench/distribution.h"
#include "maquettes_graphiques/GALERIE/gallery_cycle.h"

namespace {

void one_gallery_cycle(benchmark::State& state) {
  gallery_plant signals("true");
  IOsharemem_server* const area = signals.its_area();
  auto* const record = static_cast<IO_controleur*>(shmat(area->memory_ident(), nullptr, 0));
  gallery run(signals);
  show_gallery(run);
  record->output[sortie::TAPIS] = record->output[sortie::TABLE] = record->output[sortie::MELANGER] = 1;
  distribution times;
  int cycles = 0;
  for (auto _ : state) {
    const bool there = cycles++ / 60 % 2 == 0;
    for (const int output : {sortie::RD_SORTIR, sortie::LD_SORTIR, sortie::BD_SORTIR, sortie::TD_SORTIR,
                             sortie::RS_SORTIR, sortie::LS_SORTIR, sortie::BS_SORTIR, sortie::TS_SORTIR,
                             sortie::BRAS_ALLER, sortie::POUSSER, sortie::CHARIOT_GAUCHE, sortie::REMPLIR})
      record->output[output] = there;
    for (const int output : {sortie::RD_RENTRER, sortie::LD_RENTRER, sortie::BD_RENTRER, sortie::TD_RENTRER,
                             sortie::BRAS_RETOUR, sortie::RECULER, sortie::CHARIOT_DROITE, sortie::VIDER})
      record->output[output] = !there;
    const auto start = distribution::clock::now();
    run.panel.operators.heed();
    gallery_cycle(run);
    const auto time = distribution::clock::now() - start;
    times.add(time);
    state.SetIterationTime(std::chrono::duration<double>(time).count());
    usleep(5000);  // the display draws meanwhile, as it does in a run
  }
  times.report(state);
  shmctl(area->memory_ident(), IPC_RMID, nullptr);
  run.panel.window.hide();
}
BENCHMARK(one_gallery_cycle)->UseManualTime()->Iterations(2000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
