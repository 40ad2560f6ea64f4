// The test bench and the controller played by hand, both with a real partner and scripted hands.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <fstream>
#include <iterator>
#include <utility>

#include "bibliocpp/drop_then_set.h"
#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/a_directory.h"

namespace {

using names = std::vector<std::string>;
const names sensors(table_signaux, table_signaux + entree::count);
const names actuators(table_signaux + entree::count, std::end(table_signaux));
constexpr rgb yellow{255, 255, 0};
constexpr point init{40, 385}, go{210, 385}, quit{360, 385}, next_page{560, 385};

int line_of(const names& all, const std::string& name) {
  return 40 + 16 * static_cast<int>(std::find(all.begin(), all.end(), name) - all.begin());
}

// A window with check marks for some signals, and lamps for others.
struct hand_window : program_window {
  names marks, watched;

  hand_window(const std::string& title, names a_marks, names a_watched)
      : program_window(title), marks(std::move(a_marks)), watched(std::move(a_watched)) {}
  void set(const names& signals, const names& sticky = {}) const {
    for (const std::string& name : signals) click({20, line_of(marks, name)});
    for (const std::string& name : sticky) click({220, line_of(marks, name)});
    click(go);
  }
  // Waits until these lamps are blue, all others yellow.
  bool shows(const names& lit) const {
    return wait_until([&] {
      const picture seen = look();
      return std::all_of(watched.begin(), watched.end(), [&](const std::string& name) {
        const bool is_lit = std::find(lit.begin(), lit.end(), name) != lit.end();
        return seen.at(412, line_of(watched, name)) == (is_lit ? blue : yellow);
      });
    });
  }
};

bool vanishes(const std::string& title) {
  return wait_until([&] { return window_titled(title) == 0; });
}

}  // namespace

TEST(banc_essai, tries_a_real_controller_without_a_plant) {
  process bench({built("banc_essai"), built("controleur_mine")});
  const open_area area(wait_for_area_of(bench.pid()));
  const hand_window panel("banc d'essai", sensors, actuators);
  EXPECT_TRUE(panel.shows({})) << "it has answered, and is at rest";
  const struct {
    names set, sticky, answer;
  } rows[] = {{{"dc"}, {}, {"A_GAUCHE", "B_DROITE", "C_GAUCHE"}},
              {{"pcA", "wAvide", "wBvide", "wCvide"},
               {"pcA", "wAvide", "wBvide", "wCvide"},
               {"B_DROITE", "C_GAUCHE"}},
              {{"pcB", "pcC"}, {}, {"REMPLIR_A", "REMPLIR_B"}}};
  for (const auto& [set, sticky, answer] : rows) {
    panel.set(set, sticky);
    EXPECT_TRUE(panel.shows(answer)) << answer.front();
  }
  EXPECT_EQ(area.input(entree::dc), 0) << "delivered once";
  panel.click(init);
  EXPECT_TRUE(wait_until([&] { return area.input(entree::wCvide) == 0; })) << "no sensor is left";
  panel.set({"dc"});
  EXPECT_TRUE(wait_until([&] { return area.input(entree::dc) == 1; }));
  EXPECT_EQ(area.input(entree::pcA), 0) << "and marks have gone with it";
  panel.click(quit);
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
}

TEST(banc_essai, goes_step_by_step_with_signals_of_a_file) {
  const a_directory here;
  std::ofstream file("signals");
  file << "entree capteur\r\n\n";
  names outputs;
  for (int n = 0; n < 22; ++n)
    file << " sortie  " << outputs.emplace_back("s" + std::to_string(n)) << std::endl;
  process bench({built("banc_essai"), "--signaux", "signals", "--pas-a-pas", built("commande_manuelle")});
  const open_area area(wait_for_area_of(bench.pid()));
  const hand_window plant("banc d'essai", {"capteur"}, {outputs.begin(), outputs.begin() + 20});
  const hand_window controller("commande manuelle", outputs, {"capteur"});
  move_window(controller, 0, 0);
  move_window(plant, 640, 390);
  EXPECT_TRUE(wait_until([&] { return plant.at({412, 40}) == red; })) << "the controller has not spoken yet";
  EXPECT_EQ(area.clock(), 0);
  plant.set({"capteur"});
  EXPECT_TRUE(controller.shows({"capteur"}));
  EXPECT_EQ(area.clock(), 1);
  controller.set({"s1", "s7"});
  EXPECT_TRUE(plant.shows({"s1", "s7"}));
  plant.click(next_page);
  area.output(21, 1);
  EXPECT_TRUE(wait_until([&] { return plant.at({412, 56}) == blue; })) << "live, on the next page";
  hands::close(plant);
  EXPECT_EQ(bench.wait(), 0);
  EXPECT_TRUE(vanishes("commande manuelle")) << "ends with the run";
}

TEST(banc_essai, refuses_what_it_cannot_do) {
  const a_directory here;
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
    std::ofstream("signals") << text;
    EXPECT_EQ(errors_with({"--signaux", "signals", "true"}), "ERREUR dans signals" + reason + "\n");
  }
  EXPECT_EQ(errors_with({"--signaux", "/no/such", "true"}), "ERREUR dans /no/such: illisible\n");
  for (const names& words : {names{}, {"--pas-a-pas"}, {"--signaux"}, {"--other", "true"}})
    EXPECT_TRUE(errors_with(words).starts_with("ERREUR de parametre:\n banc_essai [--signaux FICHIER]"));
}

namespace {

struct a_mine_by_hand : running_mine {
  hand_window panel{"commande manuelle", actuators, sensors};

  a_mine_by_hand() : running_mine(built("commande_manuelle")) {
    move_window(panel, 0, 0);
    move_window(window, 0, 400);
  }
  // No hand is left over for the next test.
  ~a_mine_by_hand() {
    simulator.signal(SIGTERM);
    simulator.wait();
    vanishes("commande manuelle");
  }
  a_mine_by_hand(const a_mine_by_hand&) = delete;
  a_mine_by_hand& operator=(const a_mine_by_hand&) = delete;

  int output(int k) const { return std::atomic_ref(area->output[k]).load(); }
  // Drives to a sensor; back again when it has been missed, or the stop has come too late.
  bool haul(const std::string& there, const std::string& back, int sensor) const {
    for (int attempt = 0; attempt < 10; ++attempt) {
      panel.set({attempt % 2 == 0 ? there : back});
      const bool seen = wait_until([&] { return area.input(sensor) == 1; }, std::chrono::seconds(6));
      panel.click(go);
      if (wait_until([&] { return at_rest(); }) && area.cycles(2) && seen && area.input(sensor) == 1)
        return true;
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
  EXPECT_TRUE(mine.panel.shows({"wAvide", "wBvide", "wCvide"}));
  EXPECT_TRUE(mine.turn(0, 7) && mine.turn(2, 8)) << "a hand needs time to stop a wagon at its station";
  ASSERT_TRUE(mine.haul("A_GAUCHE", "A_DROITE", entree::pcA) && mine.act("REMPLIR_A", entree::wAplein));
  ASSERT_TRUE(mine.haul("C_GAUCHE", "C_DROITE", entree::pcC) &&
              mine.haul("A_DROITE", "A_GAUCHE", entree::pdAB));
  EXPECT_TRUE(mine.panel.shows({"pcC", "pdAB", "wAplein", "wBvide", "wCvide"}));
  ASSERT_TRUE(mine.act("VIDER_A", entree::wAvide) && mine.input_becomes(entree::wCvide, 0));
  ASSERT_TRUE(mine.haul("C_DROITE", "C_GAUCHE", entree::pdC) && mine.act("VIDER_C", entree::wCvide));
  EXPECT_TRUE(mine.panel.shows({"pdAB", "pdC", "wAvide", "wBvide", "wCvide"})) << "one load hauled, no fault";

  mine.panel.set({"REMPLIR_A"});
  window_id box = 0;
  ASSERT_TRUE(wait_until([&] { return (box = other_window_than({mine.window, mine.panel})) != 0; }));
  EXPECT_TRUE(box_says(box, not_loading('A')));
  close_box(box);
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_TRUE(vanishes("commande manuelle")) << "ends with the run";
}

TEST(commande_manuelle, drops_before_it_sets) {
  std::vector<std::pair<std::size_t, int>> written;
  drop_then_set({1, 0, 1, 0}, [&](std::size_t k, int level) { written.emplace_back(k, level); });
  EXPECT_EQ(written, (std::vector<std::pair<std::size_t, int>>{{1, 0}, {3, 0}, {0, 1}, {2, 1}}));
}

TEST(commande_manuelle, stops_everything_when_it_quits_first) {
  a_mine_by_hand mine;
  EXPECT_TRUE(mine.panel.shows({"wAvide", "wBvide", "wCvide"})) << "painted, and ready for a hand";
  mine.panel.set({"A_GAUCHE", "C_DROITE"}, {"C_DROITE"});
  EXPECT_TRUE(wait_until([&] { return mine.output(sortie::A_GAUCHE) == 1; }));
  mine.panel.click(go);
  EXPECT_TRUE(wait_until([&] { return mine.output(sortie::A_GAUCHE) == 0; }));
  EXPECT_EQ(mine.output(sortie::C_DROITE), 1);
  mine.panel.click(quit);
  EXPECT_TRUE(wait_until([&] { return mine.at_rest(); }) && mine.area.cycles(2)) << "the mine goes on";
  EXPECT_EQ(mine.quit(), 0);
}
