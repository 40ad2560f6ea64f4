// One cycle of each animated object (react and draw, in a shown window), and of a scene with a growing
// number of parts on a belt. Drawing calls are sent to the display without waiting for it.

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <benchmark/benchmark.h>

#include <initializer_list>
#include <memory>
#include <vector>

#include "maquettes_graphiques/objgraphiques.h"

namespace {

constexpr Fl_Color background = FL_BACKGROUND_COLOR;

Fl_Double_Window& window() {
  static auto* const shown = [] {
    auto* const w = new Fl_Double_Window(800, 600, "bench");
    w->end();
    w->show();
    while (!w->visible_r() || w->damage()) Fl::wait(0.01);
    w->make_current();
    return w;
  }();
  return *shown;
}

struct a_part {
  movepart_manager man;
  movepart part{man, &window(), background};
  a_part() { part.add(400, 300, 10, 10, FL_GREEN); }
};

// Out to the end, in to the other.
template <typename Jack>
void cycle(benchmark::State& state, Jack& jack) {
  bool out = true;
  for (auto _ : state) {
    out ? jack.activate_out() : jack.activate_in();
    if (jack.out_stop()) out = false;
    if (jack.in_stop()) out = true;
    jack.react();
    jack.draw();
  }
}

template <typename Jack>
void straight_jack_cycle(benchmark::State& state) {
  a_part load;
  Jack jack(&window(), 200, 200, 50, 20, 60, 6, 0.5, 0.5, &load.part, 0.0);
  cycle(state, jack);
}
BENCHMARK(straight_jack_cycle<rdjack>);
BENCHMARK(straight_jack_cycle<bsjack>);

void hrdjack_cycle(benchmark::State& state) {
  a_part load;
  hrdjack jack(&window(), 200, 200, 20, 0, 80, 1.0, 1.0, &load.part, 0.0);
  cycle(state, jack);
}
BENCHMARK(hrdjack_cycle);

template <typename Belt>
void cycle_belt(Belt& belt) {
  belt.activate();
  belt.react();
  belt.redraw();
}

void rbelt_cycle_one_part(benchmark::State& state) {
  a_part load;
  rbelt table(&window(), 350, 300, 60, 10, 1.0);
  table.add_ppart(&load.part);
  for (auto _ : state) cycle_belt(table);
}
BENCHMARK(rbelt_cycle_one_part);

void cuve_cycle(benchmark::State& state) {
  cuve tank(&window(), 100, 300, 60, 200, 20, 180, 20, 1.0, 0);
  tank.change_foreground(FL_CYAN);
  for (auto _ : state) {
    if (tank.empty()) tank.change_in(0.5), tank.change_out(0.0);
    if (tank.full()) tank.change_in(0.0), tank.change_out(0.5);
    tank.react();
    tank.draw();
  }
}
BENCHMARK(cuve_cycle);

void vanne_cycle(benchmark::State& state) {
  vanne valve(&window(), 100, 100, 60, 8, 30, 0, 1);
  for (auto _ : state) {
    valve.is_open() ? valve.close() : valve.open();
    valve.draw();
  }
}
BENCHMARK(vanne_cycle);

void melangeur_cycle(benchmark::State& state) {
  melangeur mixer(&window(), 100, 100, 60);
  mixer.change_speed(0.05);
  for (auto _ : state) {
    mixer.react();
    mixer.draw();
  }
}
BENCHMARK(melangeur_cycle);

void resistor_cycle(benchmark::State& state) {
  resistor coil(&window(), 100, 100, 80, 40);
  for (auto _ : state) coil.draw();
}
BENCHMARK(resistor_cycle);

void trappe_cycle(benchmark::State& state) {
  trappe flap(&window(), 100, 100, 40, 1.0, 0, 1);
  for (auto _ : state) {
    flap.is_open() ? flap.close() : flap.open();
    flap.draw();
  }
}
BENCHMARK(trappe_cycle);

// Parts of three boxes each on four belts one above the other, all moving; a part that has left its belt
// starts again.
void parts_on_belts(benchmark::State& state) {
  constexpr int lanes = 4, spacing = 28;
  movepart_manager man;
  std::vector<std::unique_ptr<movepart>> parts;
  std::vector<hbelt> belts;
  for (int lane = 0; lane < lanes; ++lane) belts.emplace_back(&window(), 0, 100 * lane + 50, 790, 20, 0.5);
  for (int n = 0; n < state.range(0); ++n) {
    movepart& part = *parts.emplace_back(std::make_unique<movepart>(man, &window(), background));
    const int x = n / lanes * spacing, y = n % lanes * 100 + 25;
    part.add(x, y + 15, 18, 5, FL_BLUE);
    part.add(x, y, 4, 15, FL_BLUE);
    part.add(x + 14, y, 4, 15, FL_BLUE);
    belts[static_cast<std::size_t>(n % lanes)].add_ppart(&part);
  }
  for (auto _ : state) {
    for (hbelt& belt : belts) cycle_belt(belt);
    for (const auto& part : parts)
      if (part->actual_first_xpos() > 770) part->absmoveredraw(0, part->actual_precision_first_ypos());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(parts_on_belts)->Arg(10)->Arg(25)->Arg(50)->Arg(100)->Unit(benchmark::kMicrosecond)->Complexity();

}  // namespace

BENCHMARK_MAIN();
