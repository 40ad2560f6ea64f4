// grafcet at work: what it says of a file, and what the mine does under charts.
#include <gtest/gtest.h>

#include "bibliocpp/area_view.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/a_directory.h"
#include "tests/support/led_plant.h"

namespace {

const std::string mine_charts = in_repository("share/grafcets/mine.grafcet");

// The status, then what was said.
std::string said(std::vector<std::string> words, const std::string& language = "en_GB.UTF-8") {
  words.insert(words.begin(), built("grafcet"));
  process program(words, {"LC_ALL=" + language});
  const int status = program.wait();
  return std::to_string(status) + " " + program.output() + program.errors();
}

// The mine under charts that have answered its first batch: a button that is pushed earlier is not seen.
struct charted_mine : running_mine {
  explicit charted_mine(const std::string& file) : running_mine(built("grafcet") + " " + file) {
    wait_until([this] { return std::atomic_ref(area->output_clock).load() > 0; });
  }
};

void write(const std::string& file, const std::string& text) { std::ofstream(file) << text; }

}  // namespace

TEST(grafcet, tells_where_a_file_is_wrong) {
  const a_directory here;
  write("bad.grafcet",
        "grafcet G\n  step initial 0 : A_GOUCHE\n  transition 0 -> 0 : dc\n  transition 0 -> 0 : dc . ac\n");
  EXPECT_EQ(said({"--verifier", "--maquette", "wagons", "bad.grafcet"}),
            "1 bad.grafcet:2:20: error: no output is named \"A_GOUCHE\"; the nearest name is \"A_GAUCHE\"\n");
  EXPECT_EQ(
      said({"bad.grafcet", "--verifier"}, "fr_FR.UTF-8"),
      "0 bad.grafcet:4:14: avertissement : peut être franchie en même temps que la transition de la ligne 3 "
      "(dc = 1, ac = 1)\n");
  EXPECT_EQ(said({"--verifier", "--maquette", "mars", "bad.grafcet"}),
            "2 grafcet: unknown plant: mars; there are: galerie trieuse wagons\n");
  EXPECT_EQ(said({"--verifier", "missing"}), "1 grafcet: missing: No such file or directory\n");
  EXPECT_EQ(said({"--verifier", "."}), "1 grafcet: .: Is a directory\n");
  for (const std::vector<std::string>& bad : {std::vector<std::string>{},
                                              {"a"},
                                              {"--periode", "5", "a", "-automemlink", "1"},
                                              {"--verifier", "a", "b"}})
    EXPECT_TRUE(said(bad).starts_with("2 usage: ")) << said(bad);
}

TEST(grafcet, knows_the_signals_of_the_plants) {
  for (const std::string plant : {"wagons", "galerie", "trieuse"}) {
    led_plant led({built(plant), ":"});
    const area_view area(std::stoi(led.line().substr(5)));
    std::string names;
    for (const std::string& name : area.input_names()) names += "entree " + name + "\n";
    for (const std::string& name : area.output_names()) names += "sortie " + name + "\n";
    EXPECT_EQ(contents(in_repository("share/signaux/" + plant + ".txt")), names);
    led.leave();
    EXPECT_EQ(led.plant.wait(), 0);
  }
  EXPECT_EQ(said({"--verifier", "--maquette", "wagons", mine_charts}), "0 ");
  EXPECT_EQ(said({"--verifier", "--maquette", "galerie", in_repository("share/grafcets/galerie.grafcet")}),
            "0 ");
}

TEST(grafcet, hauls_in_the_mine_and_stops_at_home) {
  charted_mine mine(mine_charts);
  mine.push(buttons::start);
  ASSERT_TRUE(mine.hauls(2) && mine.input_becomes(entree::wAplein, 1));
  mine.push(buttons::stop);
  EXPECT_TRUE(wait_until([&] { return mine.all_home() && mine.at_rest() && mine.shows({entree::wCvide}); }));
  EXPECT_EQ(mine.quit(), 0);
}

TEST(grafcet, leaves_the_plant_at_rest_when_the_file_is_wrong) {
  const a_directory here;
  write("bad.grafcet", "grafcet G\n  step initial 0 : A_GAUCHE ; PCA\n");
  running_mine mine(built("surveillant") + " " + built("grafcet") + " bad.grafcet", {"LC_ALL=en"});
  EXPECT_TRUE(
      wait_until([&] { return mine.simulator.errors().find("ended with status 1\n") != std::string::npos; }));
  EXPECT_NE(mine.simulator.errors().find("bad.grafcet:2:31: error: no output is named \"PCA\""),
            std::string::npos);
  EXPECT_TRUE(mine.area.cycles(5) && mine.at_rest());
  EXPECT_EQ(mine.quit(), 0);
}

TEST(grafcet, tells_of_a_circle_once_and_goes_on) {
  const a_directory here;
  write(
      "circle.grafcet",
      "grafcet G\n  step initial 0 : A_GAUCHE\n  transition 0 -> 1 : dc\n  step 1\n  transition 1 -> 0 : dc\n"
      "  transition 0 -> 3 : ac and not dc\n  step 3 : A_DROITE\n");
  charted_mine mine("circle.grafcet");
  EXPECT_TRUE(mine.input_becomes(entree::pcA, 1));
  mine.push(buttons::start);
  mine.push(buttons::stop);
  EXPECT_TRUE(mine.input_becomes(entree::pedA, 1));
  const std::string told = mine.simulator.errors(), line = ": G.X0 (";
  EXPECT_NE(told.find(line), std::string::npos) << told;
  EXPECT_EQ(told.find(line), told.rfind(line)) << told;
  EXPECT_EQ(mine.quit(), 0);
}
