#include "maquettes_graphiques/TRIEUSE/sorter.h"

#include <algorithm>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/mock_up/fault.h"

namespace {

constexpr const char* short_among_long = "ERREUR:\n Un petit colis est arrive chez les grands !!!";
constexpr const char* long_among_short = "ERREUR:\n Un grand colis est arrive chez les petits !!!";
constexpr const char* table_not_free = "ERREUR:\n Un colis est tombe: la table n'etait pas libre !!!";
constexpr const char* rod_was_hit = "ERREUR:\n Un colis a heurte le poussoir: le tapis 1 tournait !!!";

constexpr Fl_Color carton = 0xC89B5A00, tape = 0xE8D5B000;  // red, green, blue, and no index
const std::vector<part_kind> looks{{{-13, -12, 26, 24, carton}, {-3, -12, 6, 24, tape}},
                                   {{-27, -14, 54, 28, carton}, {-27, -3, 54, 6, tape}}};

// The lanes of the belts, from left to right and downwards.
constexpr int lane_1 = 175, lane_2 = lane_1 + 44, lane_3 = lane_1 - 44, belt_width = 40;
constexpr int tunnel_right = 85, gate_1 = 150, gate_2 = 190, pusher_x = 300, rod_width = 10, table_edge = 399;
constexpr int axle_x = 470, disc = 80, left_bin = 190, right_bin = 650;
constexpr int pusher_top = lane_1 - 94, travel = 50, rod = 76;

constexpr int top_of(int lane) { return lane - belt_width / 2; }

void paint_captions() {
  struct caption {
    const char* text;
    int x, y;
  };
  constexpr caption captions[] = {{"arrivee", 28, lane_1 + 50},
                                  {"porte", gate_1 + 6, lane_1 - 42},
                                  {"poussoir", 226, lane_1 - 70},
                                  {"tapis 1", 230, lane_1 - 26},
                                  {"tapis 2", 290, lane_2 + 36},
                                  {"tapis 3", 580, top_of(lane_3) - 6},
                                  {"table", axle_x - 15, lane_1 + disc + 16}};
  fl_font(FL_HELVETICA, 12);
  fl_color(FL_BLACK);
  for (const caption& c : captions) fl_draw(c.text, c.x, c.y);
}

void paint_bin(int x, int lane, int count, Fl_Color colour, const char* name) {
  const int top = top_of(lane);
  fl_rectbound(x, top, 90, 66, colour);
  constexpr int across = 7, most = across * 5;
  for (int n = 0; n < std::min(count, most); ++n)
    fl_rectbound(x + 4 + n % across * 12, top + 52 - n / across * 12, 11, 11, carton);
  fl_color(FL_BLACK);
  fl_draw(name, x, top + 68, 90, 16, FL_ALIGN_CENTER);
}

}  // namespace

sorter::sorter(sorter_plant& its_signals)
    : signals(its_signals),
      scene(new scene_view(10, 10, 750, 355, [this] { paint(); })),
      parcels(registry, &window, FL_BACKGROUND_COLOR, 45, lane_1, looks, 7),
      short_ones(parcels, kinds),
      long_ones(parcels, kinds),
      belt_1(&window, 14, top_of(lane_1), axle_x - disc, belt_width, belt_speed),
      belt_2(&window, left_bin - 60, top_of(lane_2), 210, belt_width, -belt_speed),
      belt_3(&window, 430, top_of(lane_3), right_bin - 400, belt_width, belt_speed),
      pusher(&window, pusher_x - 15, pusher_top, travel, 30, rod, rod_width, 1.5, 2, nullptr, 0),
      table(&window, axle_x, lane_1, disc, 0, 1.5) {
  table.disc_on_axle();
  scene->color(FL_LIGHT2);

  auto& [seen, wanted] = signals.values;
  sensors.light_gate(seen[entree::porte_1], registry, gate_1, lane_1 - 26, lane_1 + 26);
  sensors.light_gate(seen[entree::porte_2], registry, gate_2, lane_1 - 26, lane_1 + 26);
  sensors.part_in_zone(seen[entree::colis_poussoir], registry, pusher_x + 12, lane_1 + 8, 1, 1);
  sensors.add(seen[entree::poussoir_rentre], pusher_x + 24, pusher_top + 4,
              [this] { return pusher.in_stop(); });
  sensors.add(seen[entree::poussoir_sorti], pusher_x + 24, pusher_top + travel - 4,
              [this] { return pusher.out_stop(); });
  sensors.add(seen[entree::colis_table], axle_x, lane_1, [this] { return !table.part_list().empty(); });
  sensors.part_in_zone(seen[entree::colis_sortie], registry, axle_x + 25, lane_3, 1, 1);

  operators.button("marche", seen[entree::marche]);
  operators.button("arret", seen[entree::arret]);
  operators.button("ATU", seen[entree::atu]);
  operators.button("rearmement", seen[entree::rearmement]);
  operators.lamp("en marche", wanted[sortie::VOYANT_MARCHE], FL_GREEN);
  operators.lamp("arret d'urgence", wanted[sortie::VOYANT_ATU], FL_RED);
  operators.counter("petits", short_ones.count(short_parcel));
  operators.counter("grands", long_ones.count(long_parcel));
  operators.roller("Vitesse", belt_speed, 0.5, 2.5, 0.1);
  operators.roller("Intervalle", interval, 50, 500, 10);
  operators.quit_and_about();
  window.end();
}

void sorter::cycle() {
  sensors.read();
  signals.exchange();
  scene->animate([this] {
    bring_parcels();
    push();
    turn();
    carry_away(belt_2, signals.values.wanted[sortie::TAPIS_2], short_ones, short_parcel, long_among_short);
    carry_away(belt_3, signals.values.wanted[sortie::TAPIS_3], long_ones, long_parcel, short_among_long);
  });
}

void sorter::bring_parcels() {
  const bool clear = registry.part_in(0, top_of(lane_1), gate_1, belt_width) == nullptr;
  if (movepart* const parcel = clear ? parcels.every(static_cast<int>(interval)) : nullptr)
    take(belt_1, *parcel);
  belt_1.change_speed(belt_speed);
  if (signals.values.wanted[sortie::TAPIS_1]) belt_1.activate();
  belt_1.react();
  belt_1.draw();
  const std::list<movepart*> on_belt = belt_1.part_list();
  for (movepart* const parcel : on_belt) {
    if (parcel->actual_first_xpos() < table_edge) continue;
    if (signals.values.wanted[sortie::TABLE] || !table.part_list().empty()) fault(table_not_free);
    hand_over(*parcel, belt_1, table);
  }
}

// Whatever the rod meets on its way is pushed on, and left where the rod draws back from it.
void sorter::push() {
  const bool out = signals.values.wanted[sortie::POUSSER], back = signals.values.wanted[sortie::RECULER];
  const int end = pusher_top + rod + static_cast<int>(pusher.my_travel());
  movepart* const met = registry.part_in(pusher_x - rod_width / 2, lane_1 - belt_width, rod_width,
                                         end + 2 - (lane_1 - belt_width));
  if (movepart* const pushed = pusher.my_part()) {
    if (back || pusher.out_stop())
      hand_over(*pushed, pusher, pushed->actual_last_ypos() > lane_2 ? belt_2 : belt_1);
  } else if (met != nullptr && met->actual_first_ypos() < end - 3) {
    fault(rod_was_hit);
  } else if (met != nullptr && out && !back && !pusher.out_stop()) {
    hand_over(*met, belt_1, pusher);
  }
  if (out) pusher.activate_out();
  if (back) pusher.activate_in();
  pusher.react();
  pusher.draw();
}

void sorter::turn() {
  if (signals.values.wanted[sortie::TABLE]) table.activate();
  table.react();
  table.redraw();
  if (!signals.values.seen[entree::colis_sortie] || !signals.values.wanted[sortie::TAPIS_3] ||
      signals.values.wanted[sortie::TABLE])
    return;
  const std::list<movepart*> on_table = table.part_list();
  for (movepart* const parcel : on_table) hand_over(*parcel, table, belt_3);
}

void sorter::carry_away(hbelt& belt, bool runs, sink& bin, kind expected, const char* mistake) {
  belt.change_speed(&belt == &belt_2 ? -belt_speed : belt_speed);
  if (runs) belt.activate();
  belt.react();
  belt.draw();
  const std::list<movepart*> on_belt = belt.part_list();
  for (movepart* const parcel : on_belt) {
    const int x = parcel->actual_first_xpos();
    if (x > left_bin - 56 && x < right_bin + 26) continue;
    if (parcels.kind_of(*parcel) != expected) fault(mistake);
    hand_over(*parcel, belt, bin);
  }
}

void sorter::paint() const {
  belt_1.paint();
  belt_2.paint();
  belt_3.paint();
  table.paint();
  parcels.paint();
  pusher.paint();
  paint_captions();
  paint_bin(left_bin - 90, lane_2, short_ones.count(short_parcel), FL_DARK_CYAN, "petits");
  paint_bin(right_bin, lane_3, long_ones.count(long_parcel), FL_DARK_GREEN, "grands");
  fl_rectbound(14, lane_1 - 34, tunnel_right - 14, 68, FL_DARK2);
  sensors.paint();
}
