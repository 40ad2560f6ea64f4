#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/hand_window.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

const std::vector<std::string> sensors(table_signaux, table_signaux + entree::count);
const std::vector<std::string> actuators(table_signaux + entree::count, std::end(table_signaux));

std::string file_of(const std::string& text) {
  const std::string path = std::filesystem::temp_directory_path() / ("signals." + std::to_string(getpid()));
  std::ofstream(path) << text;
  return path;
}

// Leaves a picture of the screen where KEEP_PICTURES says, to be looked at.
void keep_picture(const char* name, const place& where) {
  if (const char* const folder = std::getenv("KEEP_PICTURES"))
    screen_at(where).save(folder + std::string("/") + name);
}

}  // namespace

TEST(banc_essai, tries_a_real_controller_without_a_plant) {
  process bench({built("banc_essai"), built("controleur_mine")});
  const open_area area(wait_for_area_of(bench.pid()));
  const hand_window panel("banc d'essai", sensors, actuators);
  EXPECT_TRUE(panel.blue_become({})) << "it has answered, and is at rest";
  panel.set({"dc"});
  EXPECT_TRUE(panel.blue_become({"A_GAUCHE", "B_DROITE", "C_GAUCHE"})) << "all wagons go home";
  keep_picture("banc_essai.ppm", place_of(panel.window));
  for (const char* at_home : {"pcA", "wAvide", "wBvide", "wCvide"}) panel.mark_sticky(at_home);
  panel.set({"pcA", "wAvide", "wBvide", "wCvide"});
  EXPECT_TRUE(panel.blue_become({"B_DROITE", "C_GAUCHE"})) << "A has come home";
  EXPECT_EQ(area.input(entree::dc), 0) << "delivered once";
  panel.set({"pcB", "pcC"});
  EXPECT_TRUE(panel.blue_become({"REMPLIR_A", "REMPLIR_B"})) << "and sets out to work";
  panel.set({"atu"});
  EXPECT_TRUE(panel.blue_become({}));
  panel.init();
  EXPECT_TRUE(wait_until([&] { return area.input(entree::pcA) == 0 && area.input(entree::atu) == 0; }));
  panel.quit();
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
}

TEST(banc_essai, goes_step_by_step_with_signals_of_a_file) {
  std::string lines = "entree capteur\r\n\nsortie s0\n";
  std::vector<std::string> outputs{"s0"};
  for (int n = 1; n <= 21; ++n) {
    outputs.push_back("s" + std::to_string(n));
    lines += "  sortie  " + outputs.back() + "\n";
  }
  const std::string file = file_of(lines);
  process bench({built("banc_essai"), "--signaux", file, "--pas-a-pas", built("commande_manuelle")});
  const open_area area(wait_for_area_of(bench.pid()));
  const hand_window plant("banc d'essai", {"capteur"}, outputs);
  const hand_window controller("commande manuelle", outputs, {"capteur"});
  controller.move_to(0, 0);
  plant.move_to(640, 390);
  EXPECT_TRUE(plant.lamp_becomes("s0", red) && controller.lamp_becomes("capteur", red))
      << "nothing is known yet";
  EXPECT_EQ(area.clock(), 0);
  plant.set({"capteur"});
  EXPECT_TRUE(controller.lamp_becomes("capteur", blue));
  EXPECT_EQ(area.clock(), 1);
  controller.set({"s1", "s7"});
  EXPECT_TRUE(plant.lamp_becomes("s1", blue) && plant.lamp_becomes("s7", blue) &&
              plant.lamp_becomes("s0", yellow));
  plant.next_page();
  EXPECT_TRUE(plant.lamp_becomes("s2", grey)) << "two lamps on the second page";
  EXPECT_EQ(plant.lamp("s1"), yellow);
  area.output(21, 1);
  EXPECT_TRUE(plant.lamp_becomes("s1", blue)) << "live";
  plant.go();
  EXPECT_TRUE(controller.lamp_becomes("capteur", yellow));
  hands::close(plant.window);
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
  EXPECT_TRUE(wait_until([] { return window_titled("commande manuelle") == 0; })) << "ends with the run";
}

TEST(banc_essai, refuses_what_it_cannot_do) {
  std::string too_many;
  for (int n = 0; n < 42; ++n) too_many += "sortie s" + std::to_string(n) + "\n";
  const auto errors_with = [](std::vector<std::string> words) {
    words.insert(words.begin(), built("banc_essai"));
    process bench(words);
    EXPECT_EQ(bench.wait(), 2);
    return bench.errors();
  };
  for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
           {"entree a\nsortie\n", ", ligne 2: ni \"entree NOM\" ni \"sortie NOM\": sortie"},
           {"Entree a\n", ", ligne 1: ni \"entree NOM\" ni \"sortie NOM\": Entree a"},
           {"\n\nentree a b\n", ", ligne 3: ni \"entree NOM\" ni \"sortie NOM\": entree a b"},
           {"entree a\nsortie a\nentree a\n", ", ligne 3: deja donne: a"},
           {"entree " + std::string(50, 'n'), ", ligne 1: plus de 49 caracteres: " + std::string(50, 'n')},
           {too_many, ", ligne 42: plus de 41 signaux de cette sorte"},
           {"\n", ": aucun signal"}}) {
    const std::string file = file_of(text);
    EXPECT_EQ(errors_with({"--signaux", file, "true"}), "ERREUR dans " + file + reason + "\n");
  }
  EXPECT_EQ(errors_with({"--signaux", "/no/such", "true"}), "ERREUR dans /no/such: illisible\n");
  for (const auto& words :
       std::vector<std::vector<std::string>>{{}, {"--pas-a-pas"}, {"--signaux"}, {"--other", "true"}})
    EXPECT_EQ(errors_with(words),
              "ERREUR de parametre:\n banc_essai [--signaux FICHIER] [--pas-a-pas] <controleur>\n\n");
}

TEST(banc_essai, ends_the_exchange_when_it_is_told_to_end) {
  process bench({built("banc_essai"), "true"});
  const open_area area(wait_for_area_of(bench.pid()));
  wait_for_window("banc d'essai");
  bench.signal(SIGTERM);
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
}

namespace {

struct a_mine_by_hand : running_mine {
  hand_window panel{"commande manuelle", actuators, sensors};

  a_mine_by_hand() : running_mine(built("commande_manuelle")) {
    panel.move_to(0, 0);
    move_window(window, 0, 400);
    wait_until([this] { return place_of(window).y == 400; });
    where = place_of(window);
  }
  // No hand is left over for the next test.
  ~a_mine_by_hand() {
    simulator.signal(SIGTERM);
    simulator.wait();
    wait_until([] { return window_titled("commande manuelle") == 0; });
  }
  a_mine_by_hand(const a_mine_by_hand&) = delete;
  a_mine_by_hand& operator=(const a_mine_by_hand&) = delete;

  // Turns a roller back: a hand needs time to stop a wagon at its station.
  void slow_down(int roller_x, int tenths) const {
    hands::move_to(where.x + roller_x, where.y + 360);
    hands::press();
    area.cycles(2);
    hands::move_to(where.x + roller_x - tenths, where.y + 360);
    area.cycles(2);
    hands::release();
  }
  // Drives until a sensor is on; the other way when it has been missed, or the stop has come too late.
  bool haul(const std::string& there, const std::string& back, int sensor) const {
    for (int attempt = 0; attempt < 10; ++attempt) {
      panel.set({attempt % 2 == 0 ? there : back});
      const bool seen = wait_until([&] { return area.input(sensor) == 1; }, std::chrono::seconds(6));
      panel.go();
      if (!wait_until([&] { return !moves(); })) return false;
      area.cycles(2);
      if (seen && area.input(sensor) == 1) return true;
    }
    return false;
  }
  bool moves() const {
    for (int k = sortie::A_DROITE; k <= sortie::C_GAUCHE; ++k)
      if (area->output[k] != 0) return true;
    return false;
  }
  bool act(const std::string& actuator, int input) const {
    panel.set({actuator});
    return input_becomes(input, 1);
  }
};

}  // namespace

TEST(commande_manuelle, hauls_a_load_then_provokes_a_fault) {
  a_mine_by_hand mine;
  const hand_window& panel = mine.panel;
  EXPECT_TRUE(panel.blue_become({"wAvide", "wBvide", "wCvide"}));
  mine.slow_down(100, 8);
  mine.slow_down(260, 22);
  ASSERT_TRUE(mine.haul("A_GAUCHE", "A_DROITE", entree::pcA));
  EXPECT_TRUE(panel.blue_become({"pcA", "wAvide", "wBvide", "wCvide"}));
  ASSERT_TRUE(mine.act("REMPLIR_A", entree::wAplein));
  panel.go();
  ASSERT_TRUE(mine.haul("C_GAUCHE", "C_DROITE", entree::pcC));
  ASSERT_TRUE(mine.haul("A_DROITE", "A_GAUCHE", entree::pdAB));
  EXPECT_TRUE(panel.blue_become({"pcC", "pdAB", "wAplein", "wBvide", "wCvide"}));
  keep_picture("commande_manuelle.ppm", {0, 0, 925, 800});
  ASSERT_TRUE(mine.act("VIDER_A", entree::wAvide));
  EXPECT_TRUE(mine.input_becomes(entree::wCvide, 0));
  ASSERT_TRUE(mine.haul("C_DROITE", "C_GAUCHE", entree::pdC));
  ASSERT_TRUE(mine.act("VIDER_C", entree::wCvide));
  EXPECT_TRUE(panel.blue_become({"pdAB", "pdC", "wAvide", "wBvide", "wCvide"}))
      << "one load hauled, no fault";

  panel.set({"REMPLIR_A"});
  window_id box = 0;
  ASSERT_TRUE(wait_until([&] { return (box = other_window_than({mine.window, panel.window})) != 0; }));
  EXPECT_TRUE(box_says(box,
                       "ERREUR:\n Le wagon A n'etait pas à son poste de chargement: "
                       "remplissage partiel ou aucun remplissage!!!"));
  keep_picture("fault.ppm", {0, 0, 1280, 800});
  close_box(box);
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_TRUE(wait_until([] { return window_titled("commande manuelle") == 0; })) << "ends with the run";
}

TEST(commande_manuelle, stops_everything_when_it_quits_first) {
  a_mine_by_hand mine;
  mine.panel.mark_sticky("C_DROITE");
  mine.panel.set({"A_GAUCHE", "C_DROITE"});
  EXPECT_TRUE(wait_until([&] { return mine.area->output[sortie::A_GAUCHE] == 1; }));
  mine.panel.go();
  EXPECT_TRUE(wait_until([&] { return mine.area->output[sortie::A_GAUCHE] == 0; }));
  EXPECT_EQ(mine.area->output[sortie::C_DROITE], 1);
  mine.panel.quit();
  EXPECT_TRUE(wait_until([&] { return !mine.moves(); }));
  EXPECT_TRUE(mine.area.cycles(2)) << "the mine goes on";
  EXPECT_EQ(mine.quit(), 0);
}
