// controleur_mine: the reference controller of the mine, as a set of GRAFCETs (doc/grafcet.md).
//
// For every batch of inputs the charts evolve in this order: mode, wagon A, wagon B, wagon C. A chart
// sees what those before it have just become, so A and B never take the unloading station together.

#include <array>
#include <utility>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/automemlink.h"
#include "bibliocpp/grafcet.h"
#include "bibliocpp/signal_handles.h"
#include "maquettes_graphiques/WAGONS/controleurs/positioner.h"

namespace {

enum class mode { at_rest, homing, homing_to_start, ready, hauling, finishing, emergency };

// A and B: from the hopper to the unloading station and back.
enum class shuttle_step {
  idle,
  to_hopper,
  at_hopper,
  filling,
  to_waiting_place,
  waiting,
  to_station,  // from here on until it is clear, the wagon holds the unloading station
  emptying,
  clearing
};

// C: from under the unloading station to its own.
enum class carrier_step { idle, to_station, at_station, leaving, emptying };

struct shuttle_io {
  input_signal at_hopper, at_waiting_place, empty, full;
  output_signal to_right, to_left, fill, tip;
};

struct mine_io {
  IOsharemem_client& area;
  input_signal start{area, "dc"}, stop{area, "ac"}, emergency{area, "atu"}, init{area, "init"};
  input_signal station_occupied{area, "pdAB"};
  shuttle_io A{{area, "pcA"},      {area, "pedA"},     {area, "wAvide"},    {area, "wAplein"},
               {area, "A_DROITE"}, {area, "A_GAUCHE"}, {area, "REMPLIR_A"}, {area, "VIDER_A"}};
  shuttle_io B{{area, "pcB"},      {area, "pedB"},     {area, "wBvide"},    {area, "wBplein"},
               {area, "B_DROITE"}, {area, "B_GAUCHE"}, {area, "REMPLIR_B"}, {area, "VIDER_B"}};
  input_signal C_at_station{area, "pcC"}, C_at_unloading{area, "pdC"}, C_empty{area, "wCvide"};
  output_signal C_to_right{area, "C_DROITE"}, C_to_left{area, "C_GAUCHE"}, C_tip{area, "VIDER_C"};
};

struct shuttle {
  direction towards_station;
  grafcet<shuttle_step> chart{shuttle_step::idle};
  positioner drive{opposite(towards_station)};
  bool at_hopper = false, at_waiting_place = false, empty = false, full = false;

  bool in(shuttle_step s) const { return chart.in(s); }
  bool holds_station() const {
    return in(shuttle_step::to_station) || in(shuttle_step::emptying) || in(shuttle_step::clearing);
  }
  // Certain not to be the wagon that the sensor of the common station sees.
  bool is_elsewhere() const {
    return at_hopper || at_waiting_place || (in(shuttle_step::to_hopper) && drive.direct());
  }
};

struct carrier {
  grafcet<carrier_step> chart{carrier_step::idle};
  positioner drive{left};
  bool at_station = false, at_unloading = false, empty = false;

  bool in(carrier_step s) const { return chart.in(s); }
  bool ready_to_receive() const { return in(carrier_step::at_station) && at_station && empty; }
};

struct controller {
  grafcet<mode> chart{mode::at_rest};
  shuttle A{right}, B{left};
  carrier C;
  bool start = false, stop = false, emergency = false, init = false, station_occupied = false;

  bool in(mode m) const { return chart.in(m); }
  // Of buttons held together initialisation counts before stop, and stop before start.
  bool starts() const { return start && !stop && !init; }
  bool pressed() const { return start || init; }
  bool all_home() const {
    return A.in(shuttle_step::at_hopper) && B.in(shuttle_step::at_hopper) && C.in(carrier_step::at_station);
  }
  bool brings_home() const { return in(mode::homing) || in(mode::homing_to_start); }
  bool hauls() const { return in(mode::hauling) || in(mode::finishing); }
  bool one_empties() const { return A.in(shuttle_step::emptying) || B.in(shuttle_step::emptying); }
};

struct shuttle_situation {
  const controller& all;
  const shuttle &self, &other;
};

using mode_transition = transition<mode, controller>;
using shuttle_transition = transition<shuttle_step, shuttle_situation>;
using carrier_transition = transition<carrier_step, controller>;

// clang-format off
constexpr mode_transition mode_transitions[] = {
  {mode::at_rest,         [](const controller& c) { return c.init; },                              mode::homing},
  {mode::at_rest,         [](const controller& c) { return c.starts(); },                          mode::homing_to_start},
  {mode::homing,          [](const controller& c) { return c.starts(); },                          mode::homing_to_start},
  {mode::homing,          [](const controller& c) { return c.all_home() && !c.pressed(); },        mode::ready},
  {mode::homing_to_start, [](const controller& c) { return c.stop; },                              mode::homing},
  {mode::homing_to_start, [](const controller& c) { return c.all_home() && !c.init; },             mode::hauling},
  {mode::ready,           [](const controller& c) { return c.init; },                              mode::homing},
  {mode::ready,           [](const controller& c) { return c.starts(); },                          mode::hauling},
  {mode::hauling,         [](const controller& c) { return c.init; },                              mode::homing},
  {mode::hauling,         [](const controller& c) { return c.stop; },                              mode::finishing},
  {mode::finishing,       [](const controller& c) { return c.init; },                              mode::homing},
  {mode::finishing,       [](const controller& c) { return c.starts(); },                          mode::hauling},
  {mode::finishing,       [](const controller& c) { return c.all_home() && c.C.empty && !c.pressed(); }, mode::ready},
  {mode::emergency,       [](const controller& c) { return c.init && !c.emergency; },              mode::homing},
};

using st = shuttle_step;
using in_shuttle = const shuttle_situation&;
constexpr shuttle_transition shuttle_transitions[] = {
  {st::idle,             [](in_shuttle s) { return s.all.brings_home(); },                                  st::to_hopper},
  {st::to_hopper,        [](in_shuttle s) { return s.self.drive.settled(); },                               st::at_hopper},
  {st::at_hopper,        [](in_shuttle s) { return s.all.in(mode::hauling) && s.self.empty; },              st::filling},
  {st::at_hopper,        [](in_shuttle s) { return s.all.in(mode::hauling) && s.self.full; },               st::to_waiting_place},
  {st::filling,          [](in_shuttle s) { return s.self.full; },                                          st::to_waiting_place},
  {st::to_waiting_place, [](in_shuttle s) { return s.self.at_waiting_place && !s.other.holds_station(); },  st::to_station},
  {st::to_waiting_place, [](in_shuttle s) { return s.self.drive.settled(); },                               st::waiting},
  {st::waiting,          [](in_shuttle s) { return !s.other.holds_station(); },                             st::to_station},
  {st::to_station,       [](in_shuttle s) { return s.self.drive.settled(); },                               st::emptying},
  {st::emptying,         [](in_shuttle s) { return s.self.empty; },                                         st::clearing},
  {st::clearing,         [](in_shuttle s) { return s.self.at_waiting_place || s.self.at_hopper; },          st::to_hopper},
};

using ct = carrier_step;
constexpr carrier_transition carrier_transitions[] = {
  {ct::idle,       [](const controller& c) { return c.brings_home(); },                                     ct::to_station},
  {ct::to_station, [](const controller& c) { return c.C.drive.settled(); },                                 ct::at_station},
  {ct::at_station, [](const controller& c) { return c.hauls() && !c.C.empty && !c.one_empties(); },       ct::leaving},
  {ct::leaving,    [](const controller& c) { return c.C.drive.settled(); },                                 ct::emptying},
  {ct::emptying,   [](const controller& c) { return c.C.empty; },                                           ct::to_station},
};
// clang-format on

// A wagon that is sent elsewhere looks for its station anew.
template <typename Wagon, typename Step>
void force(Wagon& w, Step s) {
  if (w.in(s)) return;
  w.chart.force(s);
  w.drive.stop();
}

// The mode chart's hold on the others.
void force_charts(controller& c) {
  if (c.emergency) c.chart.force(mode::emergency);
  for (shuttle* const s : {&c.A, &c.B}) {
    if (c.in(mode::emergency)) force(*s, st::idle);
    if (c.brings_home() && !s->in(st::at_hopper)) force(*s, st::to_hopper);
  }
  if (c.in(mode::emergency)) force(c.C, ct::idle);
  if (c.brings_home() && !c.C.in(ct::at_station)) force(c.C, ct::to_station);
}

// A new step looks for its own station.
template <typename Wagon, typename Transitions, typename Situation>
void evolve(Wagon& w, const Transitions& transitions, const Situation& situation) {
  const auto before = w.chart.step();
  w.chart.evolve(transitions, situation);
  if (w.chart.step() != before) w.drive.stop();
}

void drive(shuttle& s, bool station_occupied) {
  const direction to_station = s.towards_station;
  s.drive.observe(s.at_hopper);
  switch (s.chart.step()) {
    case st::to_hopper:
      return s.drive.seek_home(s.at_hopper);
    case st::to_waiting_place:
      return s.drive.seek(s.at_waiting_place, to_station);
    case st::to_station:
      return s.drive.seek(station_occupied, to_station);
    case st::clearing:
      return s.drive.seek(s.at_waiting_place, opposite(to_station));
    default:
      return s.drive.stop();
  }
}

void drive(carrier& c) {
  c.drive.observe(c.at_station);
  switch (c.chart.step()) {
    case ct::to_station:
      return c.drive.seek_home(c.at_station);
    case ct::leaving:
      return c.drive.seek(c.at_unloading, right);
    default:
      return c.drive.stop();
  }
}

void evolve(controller& c) {
  c.chart.evolve(mode_transitions, c);
  force_charts(c);
  evolve(c.A, shuttle_transitions, shuttle_situation{c, c.A, c.B});
  evolve(c.B, shuttle_transitions, shuttle_situation{c, c.B, c.A});
  evolve(c.C, carrier_transitions, c);
  drive(c.A, c.station_occupied);
  drive(c.B, c.station_occupied);
  drive(c.C);
}

void read_inputs(const mine_io& io, controller& c) {
  for (auto [wagon, its] : {std::pair{&c.A, &io.A}, std::pair{&c.B, &io.B}}) {
    wagon->at_hopper = its->at_hopper;
    wagon->at_waiting_place = its->at_waiting_place;
    wagon->empty = its->empty;
    wagon->full = its->full;
  }
  c.C.at_station = io.C_at_station;
  c.C.at_unloading = io.C_at_unloading;
  c.C.empty = io.C_empty;
  c.station_occupied = io.station_occupied;
  c.start = io.start;
  c.stop = io.stop;
  c.emergency = io.emergency;
  c.init = io.init;
}

struct action {
  output_signal output;
  bool active;
};

// The action that a chart's step asks for is given only where it can do no harm.
std::array<action, 11> actions(const mine_io& io, const controller& c) {
  const auto fills = [](const shuttle& s) { return s.in(st::filling) && s.at_hopper; };
  const auto tips = [&c](const shuttle& s, const shuttle& other) {
    return s.in(st::emptying) && c.station_occupied && other.is_elsewhere() && c.C.ready_to_receive();
  };
  const auto moves = [](const auto& wagon, direction d) { return wagon.drive.motion() == d; };
  return {{
      {io.A.to_right, moves(c.A, right)},
      {io.A.to_left, moves(c.A, left)},
      {io.B.to_right, moves(c.B, right)},
      {io.B.to_left, moves(c.B, left)},
      {io.C_to_right, moves(c.C, right)},
      {io.C_to_left, moves(c.C, left)},
      {io.A.fill, fills(c.A)},
      {io.B.fill, fills(c.B)},
      {io.A.tip, tips(c.A, c.B)},
      {io.B.tip, tips(c.B, c.A)},
      {io.C_tip, c.C.in(ct::emptying) && c.C.at_unloading},
  }};
}

// The plant may look at any moment: everything that ends is dropped before anything begins, so that it
// never sees a wagon set off while it is still being filled.
void write_outputs(IOsharemem_client& area, std::array<action, 11> wanted) {
  for (const bool level : {false, true})
    for (action& a : wanted)
      if (a.active == level) a.output = level;
  area.outputs_refresh();
}

}  // namespace

int main(int argc, char** argv) {
  IOsharemem_client area(automemlink(argc, argv));
  const mine_io io{area};
  controller c;
  for (int news = 0; (news = area.receive()) >= 0;)
    if (news == 1) {
      read_inputs(io, c);
      evolve(c);
      write_outputs(area, actions(io, c));
    }
}
