// One cycle at a time, in a true window, with the test in the controller's place. What the boxes of faults
// look like is another program's affair (test_faults).
#include <gtest/gtest.h>

#include <semaphore.h>

#include <array>
#include <chrono>
#include <ctime>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/WAGONS/simulation_cycle.h"
#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/support/a_window.h"
#include "tests/support/area.h"
#include "tests/support/count_allocations.h"

namespace {

class a_mine {
 public:
  a_mine() {
    Fl::add_timeout(0, close_box, this);
    show_mine(run);
    wait_until([this] {
      Fl::check();
      return look().at(2, 395) == grey;
    });
    cycle();
  }
  ~a_mine() {
    Fl::remove_timeout(close_box, this);
    panel.mine->hide();
  }
  a_mine(const a_mine&) = delete;
  a_mine& operator=(const a_mine&) = delete;

  picture look() { return look_at(*panel.mine); }
  void cycle(int times = 1) {
    for (int n = 0; n < times; ++n) simulation_cycle(run);
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
  // Puts the wagons there, without their trays: nothing but their places and loads counts then.
  void place(int a, int b, int c, const std::string& loaded = "") {
    for (const auto& [name, w, x] :
         {std::tuple{'A', &scene.wA, a}, {'B', &scene.wB, b}, {'C', &scene.wC, c}}) {
      *w = {panel.mine, x, 150, 40, 20, 1.5, 30, 700, &scene.floor, FL_BACKGROUND_COLOR};
      if (loaded.find(name) != std::string::npos) w->load();
    }
  }
  // The wagons that bear coal, as their controller sees it.
  std::string loads() const {
    const auto if_0 = [&](int empty, const char* name) { return area.input(empty) ? "" : name; };
    return std::string(if_0(entree::wAvide, "A")) + if_0(entree::wBvide, "B") + if_0(entree::wCvide, "C");
  }

  mine_class panel;
  std::unique_ptr<Fl_Window> owned_window{panel.mine};
  mine_scene scene{&panel};
  std::unique_ptr<IOsharemem_server> server{init_partage_mem("true")};
  open_area area{server->memory_ident()};
  simulation run{&panel, scene, server.get()};
  std::vector<std::string> boxes;  // the texts of those that were shown, and closed at once

 private:
  static void close_box(void* mine) {
    Fl::repeat_timeout(0.002, close_box, mine);
    if (Fl::modal() == nullptr) return;
    static_cast<a_mine*>(mine)->boxes.emplace_back(Fl::modal()->child(0)->label());
    Fl::modal()->hide();
  }
};

}  // namespace

TEST(cycle, each_output_moves_its_wagon_at_the_speed_of_its_roller) {
  a_mine mine;
  const mine_class& p = mine.panel;
  const mine_scene& scene = mine.scene;
  EXPECT_EQ(std::tuple(scene.wA.my_xpos(), scene.wB.my_xpos(), scene.wC.my_xpos()),
            std::tuple(200, 500, 400));
  const auto ten_cycles = [&](const wagon& w, int output) {
    mine.area.output(output, 1);
    mine.cycle();
    const int before = w.my_xpos();
    mine.cycle(10);
    mine.area.output(output, 0);
    mine.cycle();
    return w.my_xpos() - before;
  };
  const auto expect_speeds = [&](int a, int b, int c) {
    for (const auto& [w, right, left, pixels] :
         {std::tuple{&mine.scene.wA, sortie::A_DROITE, sortie::A_GAUCHE, a},
          {&mine.scene.wB, sortie::B_DROITE, sortie::B_GAUCHE, b},
          {&mine.scene.wC, sortie::C_DROITE, sortie::C_GAUCHE, c}})
      EXPECT_EQ(std::pair(ten_cycles(*w, right), ten_cycles(*w, left)), std::pair(pixels, -pixels));
  };
  expect_speeds(15, 15, 30);
  for (const auto& [roller, at_first] :
       {std::pair{p.reglage_vitesse_A, 1.5}, {p.reglage_vitesse_B, 1.5}, {p.reglage_vitesse_C, 3.0}}) {
    EXPECT_EQ(std::tuple(roller->minimum(), roller->value(), roller->maximum()),
              std::tuple(0.1, at_first, 3.0));
    EXPECT_NEAR(roller->increment(1.0, 1), 1.1, 1e-9);
  }
  testing::internal::CaptureStderr();
  mine.turn(p.reglage_vitesse_A, 0.5);
  mine.turn(p.reglage_vitesse_B, 2.5);
  mine.turn(p.reglage_vitesse_C, 2.0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "vitesse A: 0.5\nvitesse B: 2.5\nvitesse C: 2\n");
  expect_speeds(5, 5, 20);  // B deliberately takes the value of roller A
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
}

TEST(cycle, sensors_see_wagons_less_than_ten_pixels_away) {
  a_mine mine;
  const struct {
    int input, wagon, station;
  } rows[] = {{entree::pcA, 0, 100},  {entree::pedA, 0, 230}, {entree::pdAB, 0, 300}, {entree::pcB, 1, 600},
              {entree::pedB, 1, 370}, {entree::pdAB, 1, 300}, {entree::pcC, 2, 300},  {entree::pdC, 2, 650}};
  for (const auto& row : rows)
    for (const int off : {-10, -9, 9, 10}) {
      int x[] = {200, 500, 400};
      x[row.wagon] = row.station + off;
      mine.place(x[0], x[1], x[2]);
      mine.cycle();
      for (int input = entree::pcA; input <= entree::pdC; ++input)
        EXPECT_EQ(mine.area.input(input), input == row.input && std::abs(off) < 10) << table_signaux[input];
    }
}

TEST(cycle, transfers_coal_in_order_and_only_at_its_stations) {
  using namespace sortie;
  const std::string F1 = not_loading('A'), F2 = not_unloading('A'), F3 = not_loading('C'),
                    F4 = not_loading('B'), F5 = not_unloading('B'),
                    F6 = "ERREUR:\n Le wagon C a ete vide hors de son poste de dechargement!!!";
  const struct {
    int a, b, c;
    std::string before;
    std::vector<int> outputs;
    std::string after;
    std::vector<std::string> faults;
  } rows[] = {
      {109, 500, 400, "", {REMPLIR_A}, "A", {}},
      {110, 500, 400, "", {REMPLIR_A}, "", {F1}},
      {90, 500, 400, "A", {REMPLIR_A}, "A", {F1}},
      {200, 591, 400, "", {REMPLIR_B}, "B", {}},
      {200, 590, 400, "", {REMPLIR_B}, "", {F4}},
      {309, 500, 291, "A", {VIDER_A}, "C", {}},
      {300, 500, 300, "ABC", {VIDER_A}, "BC", {}},
      {310, 500, 300, "A", {VIDER_A}, "", {F2}},
      {300, 500, 310, "A", {VIDER_A}, "", {F3}},
      {250, 500, 250, "AC", {VIDER_A}, "C", {F3}},
      {200, 300, 300, "B", {VIDER_B}, "C", {}},
      {200, 290, 300, "BC", {VIDER_B}, "C", {F5}},
      {200, 300, 290, "B", {VIDER_B}, "", {F3}},
      {200, 500, 641, "C", {VIDER_C}, "", {}},
      {200, 500, 660, "C", {VIDER_C}, "", {F6}},
      {200, 500, 400, "", {VIDER_A, VIDER_B, VIDER_C}, "", {}},
      {100, 600, 300, "", {REMPLIR_A, VIDER_A, REMPLIR_B, VIDER_B}, "", {F2, F5}},
      {300, 500, 300, "A", {VIDER_A, VIDER_C}, "", {F6}},
      {200, 300, 300, "B", {VIDER_B, VIDER_C}, "", {F6}},
      {200, 500, 400, "ABC", {REMPLIR_A, VIDER_A, REMPLIR_B, VIDER_B, VIDER_C}, "", {F1, F3, F4, F3, F6}},
  };
  a_mine mine;
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "row " << &row - rows);
    mine.place(row.a, row.b, row.c, row.before);
    for (const int output : row.outputs) mine.area.output(output, 1);
    mine.cycle();
    EXPECT_EQ(mine.loads(), row.before) << "this cycle's inputs were published before";
    EXPECT_EQ(std::exchange(mine.boxes, {}), row.faults);
    EXPECT_EQ(std::exchange(mine.run.termine, 0), !row.faults.empty());
    for (const int output : row.outputs) mine.area.output(output, 0);
    mine.cycle();
    EXPECT_EQ(mine.loads(), row.after);
    for (const auto& [full, empty] :
         {std::pair{entree::wAplein, entree::wAvide}, {entree::wBplein, entree::wBvide}})
      EXPECT_NE(mine.area.input(full), mine.area.input(empty));
  }
  mine.place(200, 500, 650, "ABC");
  mine.activate(mine.panel.bouton_intervention);
  EXPECT_EQ(mine.loads(), "") << "by hand, anywhere";
  EXPECT_FALSE(mine.run.termine);
}

TEST(cycle, reads_the_outputs_when_the_inputs_are_published) {
  a_mine mine;
  sem_wait(&mine.area->mutex);  // no input can be published
  std::thread controller([&] {
    // Only an order that is wrong needs the time, to be seen.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    mine.area.output(sortie::A_DROITE, 1);
    sem_post(&mine.area->mutex);
  });
  mine.cycle();
  controller.join();
  EXPECT_EQ(actionneur[sortie::A_DROITE], 1);
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

TEST(cycle, the_tray_lags_by_half_a_step_and_an_extra_drawing_puts_it_ahead_for_good) {
  a_mine mine;
  mine.scene.wA.load();
  mine.turn(mine.panel.reglage_vitesse_A, 2.0);
  mine.area.output(sortie::A_DROITE, 1);
  const auto left_edges = [&] {
    const picture seen = mine.look();
    int body = 12, tray = 12;
    while (seen.at(body, 137) != black) ++body;
    while (seen.at(tray, 157) != blue) ++tray;
    return std::pair(body, tray);
  };
  mine.cycle();
  EXPECT_EQ(left_edges(), std::pair(182, 176));
  mine.cycle();
  EXPECT_EQ(left_edges(), std::pair(184, 178));
  for (int n = 0; n < 2; ++n) mine.activate(mine.panel.bouton_redraw);
  mine.area.output(sortie::A_DROITE, 0);
  mine.cycle(3);
  EXPECT_EQ(left_edges(), std::pair(188, 185));
}

TEST(cycle, leaves_no_trails_and_allocates_nothing) {
  a_mine mine;
  const picture at_first = mine.look();
  for (const auto& outputs : {std::array{sortie::A_GAUCHE, sortie::B_DROITE, sortie::C_DROITE},
                              {sortie::A_DROITE, sortie::B_GAUCHE, sortie::C_GAUCHE}}) {
    for (const int output : outputs) mine.area.output(output, 1);
    mine.cycle();
    const long before = allocations();
    mine.cycle(59);
    EXPECT_EQ(allocations() - before, 0);
    for (const int output : outputs) mine.area.output(output, 0);
    mine.cycle();
  }
  EXPECT_EQ(mine.look(), at_first);
}

TEST(scene, stands_where_the_stations_are) {
  a_mine mine;
  const picture seen = mine.look();
  for (const int hopper : {100, 600}) {
    EXPECT_EQ(seen.count(black, hopper - 20, 35, 41, 20), 41 * 20) << "full";
    for (const int side : {-10, 10}) EXPECT_EQ(seen.count(black, hopper + side, 60, 1, 71), 71) << "spout";
  }
  EXPECT_EQ(seen.count(black, 281, 171, 39, 100), 2 * 76 + 2 * 9) << "the middle one is empty";
  for (const auto& [x, y] : {std::pair{175, 140}, {475, 140}, {375, 290}})
    EXPECT_EQ(seen.count(blue, x, y, 50, 20), 400) << "trays";
  for (const int track : {170, 320}) EXPECT_EQ(seen.count(black, 20, track, 681, 1), 681);
  for (const auto& [x, y] : {std::pair{600, 340}, {650, 360}, {700, 380}}) EXPECT_EQ(seen.at(x, y), black);
}

TEST(panel, shows_every_widget_in_its_place) {
  const a_mine mine;
  const mine_class& p = mine.panel;
  std::string members;
  for (const Fl_Button* const b : {p.bouton_about, p.bouton_quit, p.bouton_intervention, p.bouton_ac,
                                   p.bouton_dc, p.bouton_atu, p.bouton_init, p.bouton_redraw})
    members += b->label() + std::string(" ");
  for (const Fl_Roller* const r : {p.reglage_vitesse_A, p.reglage_vitesse_B, p.reglage_vitesse_C})
    members += r->label() + std::string(" ");
  EXPECT_EQ(members, "A propos Quit Interv. ac dc ATU init Redessiner Vitesse A Vitesse B Vitesse C ");
  EXPECT_EQ(p.simul, p.mine->child(1));
  std::ostringstream seen;  // place, size, font, type, box, alignment, label
  for (int i = 0; i < p.mine->children(); ++i) {
    const Fl_Widget& it = *p.mine->child(i);
    for (const int n : {it.x(), it.y(), it.w(), it.h(), it.labelfont(), int{it.type()}, int{it.box()},
                        static_cast<int>(it.align())})
      seen << n << " ";
    seen << (it.label() == nullptr ? "" : it.label()) << (i % 3 == 2 ? "\n" : ", ");
  }
  EXPECT_EQ(seen.str(), R"(0 0 925 560 0 0 2 0 , 10 10 705 380 8 0 10 0 , 365 345 70 35 8 0 2 0 A propos
760 345 80 35 8 0 2 0 Quit, 760 235 80 35 8 0 2 0 Interv., 725 129 70 20 8 0 2 0 ac
800 129 80 20 8 0 1 20 stop cycle, 725 89 70 20 8 0 2 0 dc, 800 89 80 20 8 0 1 20 start cycle
725 169 70 20 8 0 2 0 ATU, 800 169 95 20 8 0 1 20 arret d'urgence, 725 49 70 20 8 0 2 0 init
800 49 80 20 8 0 1 20 initialisation, 760 295 80 35 8 0 2 0 Redessiner, 45 350 70 20 8 1 2 2 Vitesse A
125 350 70 20 8 1 2 2 Vitesse B, 205 350 70 20 8 1 2 2 Vitesse C, )");
  EXPECT_EQ(std::pair(p.mine->w(), p.mine->h()), std::pair(925, 400));
}

TEST(heure10, counts_half_seconds_since_midnight) {
  const long before = time(nullptr) % 86'400 * 2;
  const long now = heure10();
  const long after = time(nullptr) % 86'400 * 2 + 1;
  EXPECT_TRUE(before <= after ? before <= now && now <= after : now >= before || now <= after);
}
