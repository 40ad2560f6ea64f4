// Mock-ups led through two pipes: the real programs, the test as their leader.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "maquettes_graphiques/WAGONS/mine_signals.h"
#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/support/a_directory.h"
#include "tests/support/area.h"
#include "tests/support/led_plant.h"
#include "tests/support/program_window.h"

namespace {

struct led_mine : led_plant {
  explicit led_mine(const std::string& controller = ":") : led_plant({built("wagons"), controller}) {}

  open_area area{std::stoi(line().substr(5))};  // "area <ident>"
  std::string first_pause = line();
};

}  // namespace

TEST(led_cycle, goes_on_only_with_leave_and_hands_act_in_a_certain_cycle) {
  led_mine mine;
  EXPECT_EQ(mine.first_pause, "pause 1");
  const auto start = [&] { return mine.area.input(entree::dc); };
  mine.tell("hold dc\n");
  EXPECT_EQ(mine.ask("hold dc"), "error it is held already");
  EXPECT_EQ(mine.area.clock(), 1);
  EXPECT_EQ(start(), 0) << "no cycle has run";
  EXPECT_EQ(mine.ask("go"), "pause 2");
  EXPECT_EQ(start(), 1);
  EXPECT_EQ(mine.ask("release dc\ngo"), "pause 3");
  EXPECT_EQ(start(), 0);

  // Three pixels a cycle, from 200 to where the waiting place is seen (221): seven cycles, and one that
  // tells.
  EXPECT_EQ(mine.ask("set 3 Vitesse A\ngo"), "pause 4");
  EXPECT_EQ(mine.plant.errors(), "vitesse A: 3\n");
  mine.area.output(sortie::A_DROITE, 1);
  int cycles = 0;
  for (; mine.area.input(entree::pedA) == 0 && cycles < 100; ++cycles) mine.ask("go");
  EXPECT_EQ(cycles, 8);

  for (const auto& [line, answer] : {
           std::pair{"hold start", R"("start" is none of: "A propos" "Quit" "Interv." "ac" "dc" "ATU")"},
           {"hold stop cycle", R"("stop cycle" is none of:)"},
           {"set 3 dc", R"("dc" is none of: "Vitesse A" "Vitesse B" "Vitesse C")"},
           {"set 3.1 Vitesse A", "it goes from 0.1"},
           {"set nan Vitesse A", "it goes from 0.1"},
           {"set fast Vitesse A", "set <number> <label>"},
           {"release dc", "it is not held"},
           {"", "hold, release, set, blind, look, quit or go is wanted"},
       })
    EXPECT_TRUE(mine.ask(line).starts_with(std::string("error ") + answer)) << line;

  mine.tell("hold A propos\ngo\nrelease A propos\ngo\n");
  EXPECT_EQ(mine.line(), "pause 13");
  EXPECT_EQ(mine.ask("go"), "pause 14") << "the box has been closed";
  EXPECT_EQ(mine.line(), "pause 15");
  EXPECT_EQ(mine.ask("quit"), "end");
  EXPECT_EQ(mine.plant.wait(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
}

TEST(led_cycle, tells_faults_instead_of_waiting_in_their_boxes) {
  led_mine mine;
  for (const int output : {sortie::REMPLIR_B, sortie::REMPLIR_A}) mine.area.output(output, 1);
  mine.tell("go\n");
  for (const char wagon : {'A', 'B'}) {
    std::string text = not_loading(wagon);
    text.replace(text.find('\n'), 1, "\\n");
    EXPECT_EQ(mine.line(), "fault " + text);
  }
  EXPECT_EQ(mine.line(), "pause 2");
  EXPECT_EQ(mine.ask("go"), "end");
  EXPECT_EQ(mine.plant.wait(), 0);
}

TEST(led_cycle, is_not_the_controllers_and_ends_with_its_leader) {
  const a_directory folder;
  const std::string kept = folder.path / "seen";
  led_mine mine("ls -l /proc/self/fd >" + kept + "; env >>" + kept + "; touch " + kept + ".whole; :");
  EXPECT_TRUE(wait_until([&] { return access((kept + ".whole").c_str(), F_OK) == 0; }));
  const std::string seen = contents(kept);
  EXPECT_NE(seen.find("DISPLAY="), std::string::npos);
  EXPECT_EQ(seen.find("MOCK_UP_LED"), std::string::npos);
  for (const int end : {mine.to.ours, mine.from.ours}) {
    struct stat its {};
    fstat(end, &its);
    EXPECT_EQ(seen.find("pipe:[" + std::to_string(its.st_ino) + "]"), std::string::npos);
  }
  mine.leave();
  EXPECT_EQ(mine.line(), "end");
  EXPECT_EQ(mine.plant.wait(), 0);
}

TEST(led_cycle, works_switches_by_their_labels_and_refuses_bad_descriptors) {
  led_plant gallery({built("galerie")});
  EXPECT_EQ(gallery.line(), "pause 1");
  for (const char* wish : {"hold TAPIS", "release TAPIS", "hold POUSSER", "set 2 Tapis"})
    gallery.tell(std::string(wish) + "\n");
  // One widget a cycle: TAPIS, Tapis, Quit.
  EXPECT_EQ(gallery.ask("hold Quit\nrelease Quit\ngo"), "pause 2");
  EXPECT_EQ(gallery.ask("go"), "pause 3");
  EXPECT_EQ(gallery.ask("go"), "pause 4");
  EXPECT_EQ(gallery.ask("go"), "end");
  EXPECT_EQ(gallery.plant.wait(), 0);

  for (const char* text : {"", "3", "0,", "0,99", "99,1", "0,1x"}) {
    process plant({built("wagons"), ":"}, {std::string("MOCK_UP_LED=") + text, "LC_ALL=en"});
    EXPECT_EQ(plant.wait(), 1) << text;
    EXPECT_EQ(plant.errors(),
              std::string("MOCK_UP_LED=") + text + ": two open file descriptors are needed, as in 3,4\n");
  }
}

TEST(led_cycle, shows_a_scene_that_has_gone_unseen_as_it_stands) {
  const auto after_cycles = [](bool blind) {
    led_mine mine;
    const program_window window("mine de charbon");
    EXPECT_EQ(mine.ask("look"), "seen");
    const picture at_first = window.look();
    mine.area.output(sortie::A_DROITE, 1);
    mine.area.output(sortie::C_DROITE, 1);
    if (blind) mine.tell("blind\n");
    for (int n = 0; n < 50; ++n) mine.ask("go");
    EXPECT_EQ(mine.ask("look"), "seen");
    EXPECT_FALSE(window.look() == at_first);
    return window.look();
  };
  EXPECT_TRUE(after_cycles(true) == after_cycles(false));
}

TEST(led_cycle, is_led_by_the_program_of_the_page) {
  const std::string page = std::string(PAGE_FOLDER) + "/lead.py";
  process fine({"python3", page, "60", built("wagons"), ":"});
  EXPECT_EQ(fine.wait(), 0) << fine.errors();
  EXPECT_TRUE(fine.output().ends_with("end\n"));
  EXPECT_EQ(fine.output().find("fault"), std::string::npos);
}
