// controleur_trieuse: sorts the parcels of the sorter, as GRAFCETs side by side: one for the desk, one for
// the pusher and one for the turntable, and a queue of what the gate has measured.

#include <deque>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/automemlink.h"
#include "bibliocpp/grafcet.h"
#include "bibliocpp/signal_handles.h"

namespace {

struct sorter_io {
  IOsharemem_client& area;
  input_signal start{area, "marche"}, stop{area, "arret"}, emergency{area, "atu"}, reset{area, "rearmement"};
  input_signal gate_1{area, "porte_1"}, gate_2{area, "porte_2"};
  input_signal at_pusher{area, "colis_poussoir"}, pusher_in{area, "poussoir_rentre"},
      pusher_out{area, "poussoir_sorti"};
  input_signal on_table{area, "colis_table"}, at_exit{area, "colis_sortie"};
  output_signal belt_1{area, "TAPIS_1"}, belt_2{area, "TAPIS_2"}, belt_3{area, "TAPIS_3"};
  output_signal push{area, "POUSSER"}, draw_back{area, "RECULER"}, turn{area, "TABLE"};
  output_signal lamp_running{area, "VOYANT_MARCHE"}, lamp_emergency{area, "VOYANT_ATU"};
};

enum class mode { stopped, sorting, emergency, acknowledged };
enum class pushing { waiting, passing, out, back };
enum class turning { empty, turning, giving };

struct controller {
  sorter_io& in;
  grafcet<mode> desk{mode::stopped};
  grafcet<pushing> pusher{pushing::back};
  grafcet<turning> table{turning::empty};
  // The parcels between gate and pusher, the first one first.
  std::deque<bool> is_long{};
  bool was_in_gate_2 = false;

  bool short_one_next() const { return !is_long.empty() && !is_long.front(); }
};

using mt = transition<mode, controller>;
using pt = transition<pushing, controller>;
using tt = transition<turning, controller>;
// clang-format off
constexpr mt desk_chart[] = {
  {mode::stopped,      [](const controller& c) { return c.in.start && !c.in.stop; },     mode::sorting},
  {mode::sorting,      [](const controller& c) { return c.in.stop != 0; },               mode::stopped},
  {mode::emergency,    [](const controller& c) { return c.in.reset && !c.in.emergency; }, mode::acknowledged},
  {mode::acknowledged, [](const controller&) { return true; },                           mode::stopped},
};
constexpr pt pusher_chart[] = {
  {pushing::waiting, [](const controller& c) { return c.in.at_pusher && c.short_one_next(); },  pushing::out},
  {pushing::waiting, [](const controller& c) { return c.in.at_pusher && !c.short_one_next(); }, pushing::passing},
  {pushing::passing, [](const controller& c) { return !c.in.at_pusher; },                       pushing::waiting},
  {pushing::out,     [](const controller& c) { return c.in.pusher_out != 0; },                  pushing::back},
  {pushing::back,    [](const controller& c) { return c.in.pusher_in != 0; },                   pushing::waiting},
};
constexpr tt table_chart[] = {
  {turning::empty,   [](const controller& c) { return c.in.on_table != 0; }, turning::turning},
  {turning::turning, [](const controller& c) { return c.in.at_exit != 0; },  turning::giving},
  {turning::giving,  [](const controller& c) { return !c.in.on_table && !c.in.at_exit; }, turning::empty},
};
// clang-format on

// A parcel is long when it is still in the first beam as it comes into the second.
void measure(controller& c) {
  if (c.in.gate_2 && !c.was_in_gate_2) c.is_long.push_back(c.in.gate_1);
  c.was_in_gate_2 = c.in.gate_2;
}

void evolve(controller& c) {
  measure(c);
  c.desk.evolve(desk_chart, c);
  if (c.in.emergency) c.desk.force(mode::emergency);
  if (!c.desk.in(mode::sorting)) return;
  const pushing before = c.pusher.step();
  c.pusher.evolve(pusher_chart, c);
  if (before == pushing::waiting && !c.pusher.in(pushing::waiting) && !c.is_long.empty())
    c.is_long.pop_front();
  c.table.evolve(table_chart, c);
}

void act(const controller& c) {
  const bool sorting = c.desk.in(mode::sorting);
  const bool pusher_away = c.pusher.in(pushing::waiting) || c.pusher.in(pushing::passing);
  sorter_io& io = c.in;
  io.belt_1 = sorting && pusher_away && c.table.in(turning::empty) && !io.on_table;
  io.belt_2 = sorting;
  io.belt_3 = sorting;
  io.push = sorting && c.pusher.in(pushing::out);
  io.draw_back = sorting && c.pusher.in(pushing::back);
  io.turn = sorting && c.table.in(turning::turning) && !io.at_exit;
  io.lamp_running = sorting;
  io.lamp_emergency = c.desk.in(mode::emergency);
  io.area.outputs_refresh();
}

}  // namespace

int main(int argc, char** argv) {
  IOsharemem_client area(automemlink(argc, argv));
  sorter_io io{area};
  controller c{io};
  for (int news = 0; (news = area.receive()) >= 0;)
    if (news == 1) {
      evolve(c);
      act(c);
    }
}
