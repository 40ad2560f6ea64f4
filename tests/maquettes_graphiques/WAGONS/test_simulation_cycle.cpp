// One cycle at a time, in a true window, with the test in the controller's place. The boxes of faults are
// another program's affair (test_faults).
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <memory>
#include <utility>
#include <vector>

#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/WAGONS/simulation_cycle.h"
#include "tests/support/a_window.h"
#include "tests/support/area.h"
#include "tests/support/count_allocations.h"

namespace {

class a_mine {
 public:
  a_mine() {
    show_mine(run);
    wait_until([this] {
      Fl::check();
      return look_at(*panel.mine).at(2, 395) == grey;
    });
    cycle();
  }
  ~a_mine() { panel.mine->hide(); }
  a_mine(const a_mine&) = delete;
  a_mine& operator=(const a_mine&) = delete;

  void cycle(int times = 1) {
    for (int n = 0; n < times; ++n) simulation_cycle(run);
  }
  // Keeps an output active until an input has the value, then drops it and lets the wagon come to rest.
  void drive(int output, int input, int value = 1) {
    area.output(output, 1);
    for (int n = 0; area.input(input) != value; ++n) {
      ASSERT_LT(n, 10'000) << "the input does not come";
      cycle();
    }
    area.output(output, 0);
    cycle(2);
  }
  // What the operator's mouse would leave in the toolkit's queue.
  void activate(Fl_Widget* widget) {
    widget->do_callback();
    cycle();
  }
  void turn(Fl_Roller* roller, double value) {
    roller->value(value);
    activate(roller);
  }

  mine_class panel;
  std::unique_ptr<Fl_Window> owned_window{panel.mine};
  mine_scene scene{&panel};
  std::unique_ptr<IOsharemem_server> server{init_partage_mem("true")};
  open_area area{server->memory_ident()};
  simulation run{&panel, scene, server.get()};
};

// How far a wagon moves in a cycle while an output is active.
int pixels_in_ten_cycles(a_mine& mine, const wagon& w, int output) {
  mine.area.output(output, 1);
  mine.cycle();
  const int before = w.my_xpos();
  mine.cycle(10);
  mine.area.output(output, 0);
  mine.cycle();
  return w.my_xpos() - before;
}

}  // namespace

TEST(cycle, begins_with_empty_wagons_between_their_stations) {
  a_mine mine;
  for (int i = 0; i < entree::count; ++i) {
    const bool empty = i == entree::wAvide || i == entree::wBvide || i == entree::wCvide;
    EXPECT_EQ(mine.area.input(i), empty) << table_signaux[i];
  }
}

TEST(cycle, each_output_moves_its_wagon_at_its_speed) {
  a_mine mine;
  struct {
    const wagon& w;
    int output, pixels;
  } const rows[] = {{mine.scene.wA, sortie::A_DROITE, 15}, {mine.scene.wA, sortie::A_GAUCHE, -15},
                    {mine.scene.wB, sortie::B_DROITE, 15}, {mine.scene.wB, sortie::B_GAUCHE, -15},
                    {mine.scene.wC, sortie::C_DROITE, 30}, {mine.scene.wC, sortie::C_GAUCHE, -30}};
  for (const auto& row : rows) EXPECT_EQ(pixels_in_ten_cycles(mine, row.w, row.output), row.pixels);
}

TEST(cycle, only_the_value_1_is_active) {
  a_mine mine;
  for (const int value : {2, -1, 256, 1 << 30, static_cast<int>(0x80000001)}) {
    for (int k = 0; k < sortie::count; ++k) mine.area.output(k, value);
    mine.cycle(3);
  }
  EXPECT_EQ(mine.scene.wA.my_xpos(), 200);
  EXPECT_FALSE(mine.run.termine);
}

TEST(cycle, both_directions_leave_a_wagon_as_it_was) {
  a_mine mine;
  mine.area.output(sortie::A_DROITE, 1);
  mine.area.output(sortie::A_GAUCHE, 1);
  mine.cycle(10);
  EXPECT_EQ(mine.scene.wA.my_xpos(), 200) << "at rest";
  mine.turn(mine.panel.reglage_vitesse_A, 2.0);
  mine.cycle(9);
  EXPECT_EQ(mine.scene.wA.my_xpos(), 180) << "a roller sets a wagon at rest off to the left";
  mine.area.output(sortie::A_GAUCHE, 0);
  mine.cycle(5);
  mine.area.output(sortie::A_GAUCHE, 1);
  mine.cycle(5);
  EXPECT_EQ(mine.scene.wA.my_xpos(), 200) << "under way";
}

TEST(cycle, sensors_see_wagons_less_than_ten_pixels_away) {
  a_mine mine;
  mine.turn(mine.panel.reglage_vitesse_A, 1.0);
  mine.turn(mine.panel.reglage_vitesse_B, 0.0);  // takes A's value
  mine.turn(mine.panel.reglage_vitesse_C, 1.0);
  struct {
    const wagon& w;
    int output, direction, input, station;
  } const rows[] = {{mine.scene.wA, sortie::A_DROITE, 1, entree::pedA, 230},
                    {mine.scene.wA, sortie::A_DROITE, 1, entree::pdAB, 300},
                    {mine.scene.wA, sortie::A_GAUCHE, -1, entree::pcA, 100},
                    {mine.scene.wB, sortie::B_GAUCHE, -1, entree::pedB, 370},
                    {mine.scene.wB, sortie::B_GAUCHE, -1, entree::pdAB, 300},
                    {mine.scene.wB, sortie::B_DROITE, 1, entree::pcB, 600},
                    {mine.scene.wC, sortie::C_GAUCHE, -1, entree::pcC, 300},
                    {mine.scene.wC, sortie::C_DROITE, 1, entree::pdC, 650}};
  for (const auto& row : rows) {
    int first = 0, last = 0, seen = 0;
    mine.area.output(row.output, 1);
    for (int n = 0; n < 600 && (seen == 0 || mine.area.input(row.input)); ++n) {
      const int at = row.direction * (row.w.my_xpos() - row.station);  // published before the cycle's motion
      mine.cycle();
      if (!mine.area.input(row.input)) continue;
      if (seen++ == 0) first = at;
      last = at;
    }
    mine.area.output(row.output, 0);
    mine.cycle();
    EXPECT_EQ(std::pair(first, last), std::pair(-9, 9)) << table_signaux[row.input];
  }
}

TEST(cycle, tips_a_load_into_C_within_one_cycle) {
  a_mine mine;
  mine.scene.wA.load();
  mine.drive(sortie::C_GAUCHE, entree::pcC);
  mine.drive(sortie::A_DROITE, entree::pdAB);
  mine.area.output(sortie::VIDER_A, 1);
  mine.cycle();
  EXPECT_EQ(mine.area.input(entree::wCvide), 1) << "this cycle's inputs were published before";
  mine.cycle();
  EXPECT_EQ(mine.area.input(entree::wAvide), 1);
  EXPECT_EQ(mine.area.input(entree::wCvide), 0);
}

TEST(cycle, takes_one_widget_a_cycle) {
  a_mine mine;
  mine.panel.bouton_dc->do_callback();
  mine.panel.reglage_vitesse_A->value(3.0);
  mine.panel.reglage_vitesse_A->do_callback();
  mine.area.output(sortie::A_DROITE, 1);
  mine.cycle();
  mine.cycle();
  EXPECT_EQ(mine.scene.wA.my_xpos(), 205) << "201.5, then 204.5";
  mine.panel.bouton_quit->do_callback();
  mine.cycle();
  EXPECT_EQ(mine.scene.wA.my_xpos(), 208) << "the cycle that reads \"Quit\" runs to its end";
  EXPECT_FALSE(goes_on(mine.run));
}

TEST(cycle, roller_B_gives_wagon_B_the_value_of_roller_A) {
  a_mine mine;
  testing::internal::CaptureStderr();
  mine.turn(mine.panel.reglage_vitesse_A, 0.5);
  mine.turn(mine.panel.reglage_vitesse_B, 2.5);
  mine.turn(mine.panel.reglage_vitesse_C, 2.0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "vitesse A: 0.5\nvitesse B: 2.5\nvitesse C: 2\n");
  EXPECT_EQ(pixels_in_ten_cycles(mine, mine.scene.wA, sortie::A_DROITE), 5);
  EXPECT_EQ(pixels_in_ten_cycles(mine, mine.scene.wB, sortie::B_DROITE), 5);
  EXPECT_EQ(pixels_in_ten_cycles(mine, mine.scene.wC, sortie::C_DROITE), 20);
}

TEST(cycle, the_operator_empties_all_wagons_anywhere) {
  a_mine mine;
  mine.scene.wA.load();
  mine.scene.wB.load();
  mine.scene.wC.load();
  mine.activate(mine.panel.bouton_intervention);
  for (const int empty : {entree::wAvide, entree::wBvide, entree::wCvide})
    EXPECT_EQ(mine.area.input(empty), 1);
  EXPECT_FALSE(mine.run.termine);
}

TEST(cycle, redrawing_while_a_wagon_moves_puts_its_tray_ahead_for_good) {
  a_mine mine;
  mine.turn(mine.panel.reglage_vitesse_A, 2.0);
  mine.area.output(sortie::A_DROITE, 1);
  mine.cycle(3);
  mine.activate(mine.panel.bouton_redraw);
  mine.activate(mine.panel.bouton_redraw);
  mine.area.output(sortie::A_DROITE, 0);
  mine.cycle(3);
  EXPECT_EQ(mine.scene.plateau_wA.actual_first_xpos() + 25 - mine.scene.wA.my_xpos(), 2);
}

TEST(cycle, leaves_no_trails) {
  a_mine mine;
  const auto look = [&] { return look_at(*mine.panel.mine); };
  const picture at_first = look();
  for (const auto& [there, back] :
       {std::pair{sortie::A_GAUCHE, sortie::A_DROITE}, std::pair{sortie::B_DROITE, sortie::B_GAUCHE},
        std::pair{sortie::C_DROITE, sortie::C_GAUCHE}}) {
    for (const int output : {there, back}) {
      mine.area.output(output, 1);
      mine.cycle(60);
      mine.area.output(output, 0);
      mine.cycle();
    }
  }
  EXPECT_EQ(look(), at_first);
}

TEST(cycle, allocates_nothing_of_its_own) {
  a_mine mine;
  for (const int output : {sortie::A_GAUCHE, sortie::B_DROITE, sortie::C_DROITE}) mine.area.output(output, 1);
  mine.cycle(3);
  const long before = allocations();
  mine.cycle(20);
  EXPECT_EQ(allocations() - before, 0);
}

TEST(scene, stands_where_the_stations_are) {
  a_mine mine;
  const picture seen = look_at(*mine.panel.mine);
  for (const int hopper : {100, 600}) {
    EXPECT_EQ(seen.count(black, hopper - 20, 35, 41, 20), 41 * 20) << "full";
    for (const int side : {-10, 10}) EXPECT_EQ(seen.count(black, hopper + side, 60, 1, 71), 71) << "spout";
  }
  EXPECT_EQ(seen.count(black, 281, 171, 39, 100), 2 * 76 + 2 * 9) << "the middle one is empty";
  for (const int track : {170, 320}) EXPECT_EQ(seen.count(black, 20, track, 681, 1), 681);
  for (const auto& [x, y] : {std::pair{600, 340}, {650, 360}, {700, 380}}) EXPECT_EQ(seen.at(x, y), black);
}

TEST(heure10, counts_half_seconds_since_midnight) {
  const long before = time(nullptr) % 86'400 * 2;
  const long now = heure10();
  const long after = time(nullptr) % 86'400 * 2 + 1;
  EXPECT_TRUE(before <= after ? before <= now && now <= after : now >= before || now <= after);
}
