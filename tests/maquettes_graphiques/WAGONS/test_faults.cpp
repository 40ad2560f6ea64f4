// Each fault of a controller, provoked for real: the box that the operator sees is compared, pixel by
// pixel, with one that shows the text asked for.
#include <gtest/gtest.h>

#include <functional>

#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

constexpr const char* A_not_loading =
    "ERREUR:\n Le wagon A n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* B_not_loading =
    "ERREUR:\n Le wagon B n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* C_not_loading =
    "ERREUR:\n Le wagon C n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* A_not_unloading =
    "ERREUR:\n Le wagon A n'etait pas à son poste de dechargement: aucun remplissage possible du wagon C !!!";
constexpr const char* B_not_unloading =
    "ERREUR:\n Le wagon B n'etait pas à son poste de dechargement: aucun remplissage possible du wagon C !!!";
constexpr const char* C_not_unloading =
    "ERREUR:\n Le wagon C a ete vide hors de son poste de dechargement!!!";

void load_A(const running_mine& mine) {
  ASSERT_TRUE(mine.drive(sortie::A_GAUCHE, entree::pcA));
  ASSERT_TRUE(mine.drive(sortie::REMPLIR_A, entree::wAplein));
}

void load_B(const running_mine& mine) {
  ASSERT_TRUE(mine.drive(sortie::B_DROITE, entree::pcB));
  ASSERT_TRUE(mine.drive(sortie::REMPLIR_B, entree::wBplein));
}

void load_C(const running_mine& mine) {
  load_A(mine);
  ASSERT_TRUE(mine.drive(sortie::C_GAUCHE, entree::pcC));
  ASSERT_TRUE(mine.drive(sortie::A_DROITE, entree::pdAB));
  ASSERT_TRUE(mine.drive(sortie::VIDER_A, entree::wCvide, 0));
}

struct fault {
  const char* name;
  std::function<void(const running_mine&)> prepare;
  std::vector<int> outputs;
  std::vector<const char*> texts;
};

void PrintTo(const fault& f, std::ostream* out) { *out << f.name; }

const fault faults[] = {
    {"F1_filling_A_elsewhere", [](const running_mine&) {}, {sortie::REMPLIR_A}, {A_not_loading}},
    {"F2_emptying_A_elsewhere",
     [](const running_mine& mine) {
       load_A(mine);
       ASSERT_TRUE(mine.drive(sortie::C_GAUCHE, entree::pcC));
     },
     {sortie::VIDER_A},
     {A_not_unloading}},
    {"F3_emptying_A_while_C_is_elsewhere", load_A, {sortie::VIDER_A}, {C_not_loading}},
    {"F3_emptying_B_while_C_is_elsewhere", load_B, {sortie::VIDER_B}, {C_not_loading}},
    {"F4_filling_B_elsewhere", [](const running_mine&) {}, {sortie::REMPLIR_B}, {B_not_loading}},
    {"F5_emptying_B_elsewhere",
     [](const running_mine& mine) {
       load_B(mine);
       ASSERT_TRUE(mine.drive(sortie::C_GAUCHE, entree::pcC));
     },
     {sortie::VIDER_B},
     {B_not_unloading}},
    {"F6_emptying_C_elsewhere", load_C, {sortie::VIDER_C}, {C_not_unloading}},
    {"several_in_one_cycle",
     [](const running_mine& mine) {
       load_A(mine);
       load_B(mine);
       ASSERT_TRUE(mine.drive(sortie::A_DROITE, entree::pcA, 0));
       ASSERT_TRUE(mine.drive(sortie::B_GAUCHE, entree::pcB, 0));
     },
     {sortie::VIDER_B, sortie::REMPLIR_B, sortie::VIDER_A, sortie::REMPLIR_A},
     {A_not_loading, C_not_loading, B_not_loading, C_not_loading}},
};

class every_fault : public testing::TestWithParam<fault> {};

}  // namespace

TEST_P(every_fault, shows_its_text_and_ends_the_run) {
  running_mine mine;
  GetParam().prepare(mine);
  // All at once for the simulator: it reads its outputs only between two pauses.
  const std::int64_t before = mine.area.clock();
  ASSERT_TRUE(wait_until([&] { return mine.area.clock() > before; }));
  for (const int output : GetParam().outputs) mine.area.output(output, 1);
  std::vector<window_id> seen{mine.window};
  for (const char* const text : GetParam().texts) {
    const window_id box = mine.box();
    EXPECT_TRUE(box_says(box, text));
    const std::int64_t clock = mine.area.clock();
    close_box(box);
    EXPECT_TRUE(wait_until([&] { return other_window_than({mine.window}) != box; }));
    if (text != GetParam().texts.back()) {
      EXPECT_EQ(mine.area.clock(), clock) << "still the same cycle";
    }
  }
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
}

INSTANTIATE_TEST_SUITE_P(mine, every_fault, testing::ValuesIn(faults),
                         [](const auto& row) { return row.param.name; });

TEST(modal_box, suspends_the_run_and_leaves_the_scene_on_screen) {
  running_mine mine;
  mine.area.output(sortie::A_DROITE, 1);
  ASSERT_TRUE(mine.input_becomes(entree::pedA, 1));
  mine.click(buttons::about);
  const window_id box = mine.box();
  ASSERT_NE(box, 0U);
  const std::int64_t clock = mine.area.clock();
  for (const int y : {600, 250, 0}) put_aside(box, mine.where.x + 100, y);  // over the wagons, and away
  const auto scene_shows = [&] {
    const picture seen = mine.look();
    return seen.count(blue) == 3 * (40 * 5 + 2 * 5 * 20) && seen.count(black, 80, 35, 41, 20) == 41 * 20;
  };
  EXPECT_TRUE(wait_until(scene_shows, std::chrono::seconds(5)));
  EXPECT_EQ(mine.area.clock(), clock);
  close_box(box);
  EXPECT_TRUE(mine.area.cycles(5)) << "and the run goes on";
  mine.area.output(sortie::A_DROITE, 0);
  EXPECT_TRUE(wait_until(scene_shows)) << "without a ghost of the scene as it stood";
  EXPECT_EQ(mine.quit(), 0);
}
