// grafcet at work: what it says of a file, and what the mine does under charts.
#include <gtest/gtest.h>
#include <sys/shm.h>

#include <random>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/a_directory.h"

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

// A plant with the mine's signals and a model of its wagons, for one controller.
class model_mine {
 public:
  model_mine(const std::string& controller, const std::string& options)
      : area(server.memory_ident()),
        program({"sh", "-c",
                 "exec " + controller + " " + options + " -automemlink " + std::to_string(area.ident())}) {}

  // One batch: buttons in, outputs back, as "AC" for the outputs 0 and 2; empty when none come.
  std::string cycle(int button) {
    const auto sees = [this](int wagon, int x) { return std::abs(at[wagon] - x) < 10; };
    const int sensors[] = {sees(0, 100), sees(1, 600), sees(2, 300), sees(0, 300) || sees(1, 300),
                           sees(0, 230), sees(1, 370), sees(2, 650), !loaded[0],
                           !loaded[1],   !loaded[2],   loaded[0],    loaded[1]};
    for (int i = 0; i < entree::count; ++i)
      server.setreset_input(i, i < entree::dc ? sensors[i] : static_cast<int>(i == button));
    server.inputs_go();
    const std::int64_t answer = server.get_outputs_clock() + 1;
    if (!wait_until([&] { return server.get_outputs_clock() >= (answer); })) return "";
    std::string active;
    for (int k = 0; k < sortie::count; ++k)
      if (server.output_value(k) == 1) active += static_cast<char>('A' + k);
    move(active);
    return "." + active;
  }
  int end() {
    server.sharing_terminate();
    return program.wait();
  }
  bool is_loaded(std::size_t wagon) const { return loaded[wagon]; }

 private:
  static std::list<std::string> names(int from, int to) { return {table_signaux + from, table_signaux + to}; }

  void move(const std::string& active) {
    const auto on = [&](int k) { return active.find(static_cast<char>('A' + k)) != std::string::npos; };
    for (int w = 0; w < 3; ++w) at[w] += 6 * (on(w) - on(3 + w));
    for (const std::size_t w : {0U, 1U})
      if (on(sortie::REMPLIR_A + static_cast<int>(w))) loaded[w] = true;
    for (const std::size_t w : {0U, 1U})
      if (on(sortie::VIDER_A + static_cast<int>(w)) && loaded[w]) loaded[w] = false, loaded[2] = true;
    if (on(sortie::VIDER_C)) loaded[2] = false;
  }

  std::list<std::string> inputs = names(0, entree::count), outputs = names(entree::count, 27);
  IOsharemem_server server{inputs, outputs};
  open_area area;
  process program;
  std::array<int, 3> at{200, 500, 400};
  std::array<bool, 3> loaded{};
};

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
            "2 grafcet: unknown plant: mars; there are: galerie wagons\n");
  EXPECT_EQ(said({"--verifier", "missing"}), "1 grafcet: missing: No such file or directory\n");
  EXPECT_EQ(said({"--verifier", "."}), "1 grafcet: .: Is a directory\n");
  for (const std::vector<std::string>& bad : {std::vector<std::string>{},
                                              {"a"},
                                              {"--periode", "5", "a", "-automemlink", "1"},
                                              {"--verifier", "a", "b"}})
    EXPECT_TRUE(said(bad).starts_with("2 usage: ")) << said(bad);
}

TEST(grafcet, knows_the_signals_of_the_plants) {
  const auto listed = [](const char* const kind, auto from, auto to) {
    std::string text;
    for (; from != to; ++from) text += std::string(kind) + " " + *from + "\n";
    return text;
  };
  EXPECT_EQ(contents(in_repository("share/signaux/wagons.txt")),
            listed("entree", table_signaux, table_signaux + entree::count) +
                listed("sortie", table_signaux + entree::count, std::end(table_signaux)));
  EXPECT_EQ(said({"--verifier", "--maquette", "wagons", mine_charts}), "0 ");
  EXPECT_EQ(said({"--verifier", "--maquette", "galerie", in_repository("share/grafcets/galerie.grafcet")}),
            "0 ");
}

TEST(grafcet, does_batch_by_batch_what_the_mines_own_controller_does) {
  model_mine one(built("controleur_mine"), ""), other(built("grafcet"), "--periode 10ms " + mine_charts);
  std::mt19937 random(7);
  int button = -1, held = 0, deliveries = 0;
  for (int n = 0; n < 1'000; ++n) {
    if (held-- == 0) {
      const std::size_t choice = n < 5 ? 0 : random() % 12;
      constexpr std::array<int, 12> pushed{entree::dc, entree::dc,   entree::dc,  entree::ac,
                                           entree::ac, entree::init, entree::atu, -1,
                                           -1,         -1,           -1,          -1};
      button = pushed[choice];
      held = 1 + static_cast<int>(random() % (button == -1 ? 150 : 5));
    }
    const bool C_was_loaded = one.is_loaded(2);
    const std::string wanted = one.cycle(button);
    ASSERT_EQ(other.cycle(button), wanted) << n;
    ASSERT_NE(wanted, "") << n;
    deliveries += C_was_loaded && !one.is_loaded(2);
  }
  EXPECT_GT(deliveries, 3);
  EXPECT_EQ(one.end(), 0);
  EXPECT_EQ(other.end(), 0);
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

// --- The exercises: their solutions work, and a wrong one shows what its page says ---

TEST(exercises, are_solved_by_their_solutions) {
  for (const char* const name :
       {"1-un-wagon", "2-deux-wagons", "3-trois-wagons", "4-arret-de-cycle", "5-arret-d-urgence"}) {
    charted_mine mine(in_repository("doc/exercices/solutions/") + name + ".grafcet");
    mine.push(buttons::start);
    if (*name == '1') {
      EXPECT_TRUE(mine.input_becomes(entree::wAplein, 1) && mine.input_becomes(entree::pedA, 1));
      EXPECT_TRUE(mine.area.cycles(10) && mine.at_rest() && mine.shows({entree::pedA}));
      continue;
    }
    EXPECT_TRUE(mine.hauls(1)) << name;
    if (*name == '4') {
      mine.push(buttons::stop);
      EXPECT_TRUE(
          wait_until([&] { return mine.all_home() && mine.at_rest() && mine.shows({entree::wCvide}); }));
    }
    if (*name == '5') {
      mine.push(buttons::emergency);
      EXPECT_TRUE(mine.at_rest());
      mine.push(buttons::start);
      EXPECT_TRUE(mine.at_rest());
      mine.push(buttons::init);
      mine.push(buttons::start);
      EXPECT_TRUE(mine.hauls(1));
    }
  }
}

TEST(exercises, show_what_a_wrong_solution_does) {
  for (const char* const name :
       {"1-un-wagon", "2-deux-wagons", "3-trois-wagons", "4-arret-de-cycle", "5-arret-d-urgence"}) {
    charted_mine mine(in_repository("doc/exercices/fausses/") + name + ".grafcet");
    mine.push(buttons::start);
    if (*name < '4') {
      EXPECT_NE(mine.box(), 0U) << name << ": the mine tells a fault";
      continue;
    }
    ASSERT_TRUE(mine.input_becomes(entree::wCvide, 0) && mine.input_becomes(entree::pcC, 0));
    mine.push(*name == '4' ? buttons::stop : buttons::emergency);
    if (*name == '4')
      EXPECT_TRUE(mine.area.cycles(10) && mine.at_rest() && !mine.shows({entree::pcC}) &&
                  !mine.shows({entree::wCvide}));
    else
      EXPECT_TRUE(mine.input_becomes(entree::pdC, 1) && mine.input_becomes(entree::pdC, 0)) << "C runs on";
  }
}
