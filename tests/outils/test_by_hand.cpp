// The test bench and the controller played by hand, both with a real partner and scripted hands.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

using names = std::vector<std::string>;
const names sensors(table_signaux, table_signaux + entree::count);
const names actuators(table_signaux + entree::count, std::end(table_signaux));

// A window with check marks for some signals, and lamps for others.
struct hand_window {
  names marks, watched;
  window_id window;

  hand_window(const std::string& title, names a_marks, names a_watched)
      : marks(std::move(a_marks)), watched(std::move(a_watched)), window(wait_for_window(title)) {}
  static int row(const names& all, const std::string& name) {
    return 40 + 16 * static_cast<int>(std::find(all.begin(), all.end(), name) - all.begin());
  }
  void click(int x, int y) const { hands::click(place_of(window).x + x, place_of(window).y + y); }
  void go() const { click(210, 385); }
  void quit() const { click(360, 385); }
  void set(const names& signals, const names& sticky = {}) const {
    for (const std::string& name : signals) click(20, row(marks, name));
    for (const std::string& name : sticky) click(220, row(marks, name));
    go();
  }
  // Waits until these lamps are blue, all others yellow.
  bool shows(const names& lit) const {
    return wait_until([&] {
      const picture seen = picture_of(window);
      return std::all_of(watched.begin(), watched.end(), [&](const std::string& name) {
        const bool is_lit = std::find(lit.begin(), lit.end(), name) != lit.end();
        return seen.at(412, row(watched, name)) == (is_lit ? blue : rgb{255, 255, 0});
      });
    });
  }
};

// What is on the screen goes to the folder KEEP_PICTURES, to be looked at.
void keep_picture(const std::string& name, const place& where) {
  if (const char* const folder = std::getenv("KEEP_PICTURES")) screen_at(where).save(folder + ("/" + name));
}

std::string file_of(const std::string& text) {
  std::string path = std::filesystem::temp_directory_path() / ("signals." + std::to_string(getpid()));
  std::ofstream(path) << text;
  return path;
}

bool vanishes(const std::string& title) {
  return wait_until([&] { return window_titled(title) == 0; });
}

}  // namespace

TEST(banc_essai, tries_a_real_controller_without_a_plant) {
  process bench({built("banc_essai"), built("controleur_mine")});
  const open_area area(wait_for_area_of(bench.pid()));
  const hand_window panel("banc d'essai", sensors, actuators);
  EXPECT_TRUE(panel.shows({})) << "it has answered, and is at rest";
  panel.set({"dc"});
  EXPECT_TRUE(panel.shows({"A_GAUCHE", "B_DROITE", "C_GAUCHE"})) << "all wagons go home";
  keep_picture("banc_essai.ppm", place_of(panel.window));
  panel.set({"pcA", "wAvide", "wBvide", "wCvide"}, {"pcA", "wAvide", "wBvide", "wCvide"});
  EXPECT_TRUE(panel.shows({"B_DROITE", "C_GAUCHE"})) << "A has come home";
  EXPECT_EQ(area.input(entree::dc), 0) << "delivered once";
  panel.set({"pcB", "pcC"});
  EXPECT_TRUE(panel.shows({"REMPLIR_A", "REMPLIR_B"})) << "and they set out to work";
  panel.click(40, 385);
  EXPECT_TRUE(wait_until([&] { return area.input(entree::pcA) == 0; })) << "INIT";
  panel.quit();
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
}

TEST(banc_essai, goes_step_by_step_with_signals_of_a_file) {
  std::string lines = "entree capteur\r\n\n";
  names outputs;
  for (int n = 0; n < 22; ++n) lines += " sortie  " + outputs.emplace_back("s" + std::to_string(n)) + "\n";
  process bench(
      {built("banc_essai"), "--signaux", file_of(lines), "--pas-a-pas", built("commande_manuelle")});
  const open_area area(wait_for_area_of(bench.pid()));
  const names first_page(outputs.begin(), outputs.begin() + 20);
  const hand_window plant("banc d'essai", {"capteur"}, first_page);
  const hand_window controller("commande manuelle", outputs, {"capteur"});
  move_window(controller.window, 0, 0);
  move_window(plant.window, 640, 390);
  wait_until([&] { return place_of(plant.window).y == 390 && place_of(controller.window).y == 0; });
  const auto first_lamp_is = [&](const rgb& c) { return picture_of(plant.window).at(412, 40) == c; };
  EXPECT_TRUE(wait_until([&] { return first_lamp_is(red); })) << "the controller has not spoken yet";
  EXPECT_EQ(area.clock(), 0);
  plant.set({"capteur"});
  EXPECT_TRUE(controller.shows({"capteur"}));
  EXPECT_EQ(area.clock(), 1);
  controller.set({"s1", "s7"});
  EXPECT_TRUE(plant.shows({"s1", "s7"}));
  plant.click(560, 385);
  area.output(21, 1);
  EXPECT_TRUE(wait_until([&] { return picture_of(plant.window).at(412, 56) == blue; }))
      << "live, on the next page";
  hands::close(plant.window);
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_TRUE(vanishes("commande manuelle")) << "ends with the run";
}

TEST(banc_essai, refuses_what_it_cannot_do) {
  const auto errors_with = [](names words) {
    words.insert(words.begin(), built("banc_essai"));
    process bench(words);
    EXPECT_EQ(bench.wait(), 2);
    return bench.errors();
  };
  std::string too_many;
  for (int n = 0; n < 42; ++n) too_many += "sortie s" + std::to_string(n) + "\n";
  const std::string malformed = "ni \"entree NOM\" ni \"sortie NOM\": ", long_name(50, 'n');
  for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
           {"entree a\nsortie\n", ", ligne 2: " + malformed + "sortie"},
           {"\nEntree a\n", ", ligne 2: " + malformed + "Entree a"},
           {"entree a b\n", ", ligne 1: " + malformed + "entree a b"},
           {"entree a\nsortie a\nentree a\n", ", ligne 3: deja donne: a"},
           {"entree " + long_name, ", ligne 1: plus de 49 caracteres: " + long_name},
           {too_many, ", ligne 42: plus de 41 signaux de cette sorte"},
           {"\n", ": aucun signal"}}) {
    const std::string file = file_of(text);
    EXPECT_EQ(errors_with({"--signaux", file, "true"}),
              std::string("ERREUR dans ").append(file).append(reason).append("\n"));
  }
  EXPECT_EQ(errors_with({"--signaux", "/no/such", "true"}), "ERREUR dans /no/such: illisible\n");
  for (const names& words : {names{}, {"--pas-a-pas"}, {"--signaux"}, {"--other", "true"}})
    EXPECT_EQ(errors_with(words).find("ERREUR de parametre:\n banc_essai [--signaux FICHIER]"), 0U);
}

namespace {

struct a_mine_by_hand : running_mine {
  hand_window panel{"commande manuelle", actuators, sensors};

  a_mine_by_hand() : running_mine(built("commande_manuelle")) {
    move_window(panel.window, 0, 0);
    move_window(window, 0, 400);
    wait_until([this] { return place_of(window).y == 400 && place_of(panel.window).y == 0; });
    where = place_of(window);
  }
  // No hand is left over for the next test.
  ~a_mine_by_hand() {
    simulator.signal(SIGTERM);
    simulator.wait();
    vanishes("commande manuelle");
  }
  a_mine_by_hand(const a_mine_by_hand&) = delete;
  a_mine_by_hand& operator=(const a_mine_by_hand&) = delete;

  // Turns a roller back: a hand needs time to stop a wagon at its station.
  void slow_down(int roller_x, int tenths) const {
    hold({roller_x, 360});
    area.cycles(2);
    hands::move_to(where.x + roller_x - tenths, where.y + 360);
    area.cycles(2);
    hands::release();
  }
  bool at_rest() const {
    return wait_until([this] { return std::count(area->output, area->output + sortie::REMPLIR_A, 1) == 0; });
  }
  // Drives to a sensor; back again when it has been missed, or the stop has come too late.
  bool haul(const std::string& there, const std::string& back, int sensor) const {
    for (int attempt = 0; attempt < 10; ++attempt) {
      panel.set({attempt % 2 == 0 ? there : back});
      const bool seen = wait_until([&] { return area.input(sensor) == 1; }, std::chrono::seconds(6));
      panel.go();
      if (at_rest() && area.cycles(2) && seen && area.input(sensor) == 1) return true;
    }
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
  EXPECT_TRUE(panel.shows({"wAvide", "wBvide", "wCvide"}));
  mine.slow_down(100, 8);
  mine.slow_down(260, 22);
  ASSERT_TRUE(mine.haul("A_GAUCHE", "A_DROITE", entree::pcA) && mine.act("REMPLIR_A", entree::wAplein));
  ASSERT_TRUE(mine.haul("C_GAUCHE", "C_DROITE", entree::pcC) &&
              mine.haul("A_DROITE", "A_GAUCHE", entree::pdAB));
  EXPECT_TRUE(panel.shows({"pcC", "pdAB", "wAplein", "wBvide", "wCvide"}));
  keep_picture("commande_manuelle.ppm", {0, 0, 925, 800});
  ASSERT_TRUE(mine.act("VIDER_A", entree::wAvide) && mine.input_becomes(entree::wCvide, 0));
  ASSERT_TRUE(mine.haul("C_DROITE", "C_GAUCHE", entree::pdC) && mine.act("VIDER_C", entree::wCvide));
  EXPECT_TRUE(panel.shows({"pdAB", "pdC", "wAvide", "wBvide", "wCvide"})) << "one load hauled, no fault";

  panel.set({"REMPLIR_A"});
  window_id box = 0;
  ASSERT_TRUE(wait_until([&] { return (box = other_window_than({mine.window, panel.window})) != 0; }));
  EXPECT_TRUE(
      box_says(box,
               "ERREUR:\n Le wagon A n'etait pas à son poste de chargement: remplissage partiel ou aucun "
               "remplissage!!!"));
  keep_picture("fault.ppm", {0, 0, 1280, 800});
  close_box(box);
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_TRUE(vanishes("commande manuelle")) << "ends with the run";
}

TEST(commande_manuelle, stops_everything_when_it_quits_first) {
  a_mine_by_hand mine;
  const auto becomes = [&](int output, int value) {
    return wait_until([&] { return mine.area->output[output] == value; });
  };
  EXPECT_TRUE(mine.panel.shows({"wAvide", "wBvide", "wCvide"})) << "painted, and ready for a hand";
  mine.panel.set({"A_GAUCHE", "C_DROITE"}, {"C_DROITE"});
  EXPECT_TRUE(becomes(sortie::A_GAUCHE, 1));
  mine.panel.go();
  EXPECT_TRUE(becomes(sortie::A_GAUCHE, 0) && becomes(sortie::C_DROITE, 1));
  mine.panel.quit();
  EXPECT_TRUE(mine.at_rest() && mine.area.cycles(2)) << "the mine goes on";
  EXPECT_EQ(mine.quit(), 0);
}
