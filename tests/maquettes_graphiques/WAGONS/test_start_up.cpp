// How a run begins and ends, seen from outside.
#include <gtest/gtest.h>
#include <sys/shm.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/display.h"

namespace {

// A controller that writes down how it was called.
struct recording_controller {
  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("wagons_test_" + std::to_string(getpid()));
  std::string program = folder / "controller";

  recording_controller() {
    std::filesystem::create_directories(folder);
    std::ofstream(program)
        << "#!/bin/sh\nfor a; do echo \"[$a]\"; done > \"$0.part\"; mv \"$0.part\" \"$0.args\"\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  }
  ~recording_controller() { std::filesystem::remove_all(folder); }
  recording_controller(const recording_controller&) = delete;
  recording_controller& operator=(const recording_controller&) = delete;

  std::string arguments() const {
    const std::string path = program + ".args";
    wait_until([&] { return std::filesystem::exists(path); });
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }
};

}  // namespace

TEST(start_up, without_a_controller_says_so_and_creates_nothing) {
  process simulator({built("wagons")}, {"DISPLAY=:none"});
  EXPECT_EQ(simulator.wait(), 0);
  EXPECT_EQ(simulator.errors(),
            "ERREUR de parametre:\n wagons <controleur>\n\nprobleme interne de memoire\n\n");
  EXPECT_EQ(area_of(simulator.pid()), -1);
}

TEST(start_up, hands_every_argument_to_the_shell_byte_for_byte) {
  const recording_controller controller;
  const std::string tell = "cat /proc/$$/cmdline > '" + controller.program + ".cmd';";
  process simulator({built("wagons"), tell, controller.program, "-notooltips", "'a  b' $((6*7))", ""});
  const open_area area(wait_for_area_of(simulator.pid()));
  const std::string ident = std::to_string(area.ident());
  EXPECT_EQ(controller.arguments(), "[-notooltips]\n[a  b]\n[42]\n[-automemlink]\n[" + ident + "]\n");
  std::ifstream file(controller.program + ".cmd");
  const std::string command{std::istreambuf_iterator<char>(file), {}};
  EXPECT_TRUE(command.ends_with(tell + " " + controller.program +
                                " -notooltips 'a  b' $((6*7))   -automemlink " + ident + " &" + '\0'))
      << command;
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.wait(), 0);
}

TEST(start_up, opens_the_area_of_the_mine) {
  running_mine mine;
  EXPECT_EQ(mine.area->nb_entrees, 16);
  EXPECT_EQ(mine.area->nb_sorties, 11);
  const char* const inputs[] = {"pcA",    "pcB",    "pcC",     "pdAB",    "pedA", "pedB", "pdC", "wAvide",
                                "wBvide", "wCvide", "wAplein", "wBplein", "dc",   "ac",   "atu", "init"};
  const char* const outputs[] = {"A_DROITE",  "B_DROITE",  "C_DROITE", "A_GAUCHE", "B_GAUCHE", "C_GAUCHE",
                                 "REMPLIR_A", "REMPLIR_B", "VIDER_A",  "VIDER_B",  "VIDER_C"};
  for (int i = 0; i < 16; ++i) EXPECT_STREQ(mine.area->nom_input[i], inputs[i]);
  for (int k = 0; k < 11; ++k) EXPECT_STREQ(mine.area->nom_output[k], outputs[k]);
  shmid_ds segment{};
  ASSERT_EQ(shmctl(mine.area.ident(), IPC_STAT, &segment), 0);
  EXPECT_EQ(segment.shm_segsz, 4561U);
  EXPECT_EQ(segment.shm_perm.mode & 0777, 0600);
  EXPECT_EQ(mine.quit(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
  EXPECT_EQ(shmctl(mine.area.ident(), IPC_STAT, &segment), 0) << "the segment stays";
}

TEST(desk, a_button_counts_while_it_is_held) {
  running_mine mine;
  for (const auto& [where, input] :
       {std::pair{buttons::start, entree::dc}, std::pair{buttons::stop, entree::ac},
        std::pair{buttons::emergency, entree::atu}, std::pair{buttons::init, entree::init}}) {
    mine.hold(where);
    EXPECT_TRUE(mine.input_becomes(input, 1)) << table_signaux[input];
    hands::release();
    EXPECT_TRUE(mine.input_becomes(input, 0)) << table_signaux[input];
  }
  hands::move_to(mine.where.x + 45 + 35, mine.where.y + 360);
  hands::press();
  hands::move_to(mine.where.x + 45 + 65, mine.where.y + 360);
  EXPECT_TRUE(wait_until([&] { return mine.simulator.errors().find("vitesse A: ") != std::string::npos; }));
  hands::release();
  EXPECT_EQ(mine.quit(), 0);
}

TEST(run, ends_with_the_window) {
  running_mine mine;
  hands::move_to(mine.where.x + 300, mine.where.y + 250);
  hands::key("Escape");
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
}

TEST(run, a_signal_ends_it_as_the_operator_would) {
  for (const int number : {SIGTERM, SIGINT}) {
    running_mine mine;
    mine.simulator.signal(number);
    EXPECT_EQ(mine.simulator.wait(), 0);
    EXPECT_EQ(mine.area.clock(), -1);
  }
}

TEST(run, a_signal_ends_it_through_every_box_of_a_cycle) {
  running_mine mine;
  mine.area.output(sortie::REMPLIR_A, 1);
  mine.area.output(sortie::REMPLIR_B, 1);
  ASSERT_NE(mine.box(), 0U);
  mine.simulator.signal(SIGTERM);
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
}

TEST(run, a_lost_or_missing_display_ends_it_with_an_error) {
  x_server display;
  process simulator({built("wagons"), "true"}, {"DISPLAY=" + display.name()});
  const open_area area(wait_for_area_of(simulator.pid()));
  ASSERT_TRUE(area.cycles(2));
  display.kill();
  EXPECT_EQ(simulator.wait(), 1);
  EXPECT_NE(simulator.errors(), "");
  EXPECT_EQ(area.clock(), -1);
  process without({built("wagons"), "true"}, {"DISPLAY=:none"});
  const open_area its_area(wait_for_area_of(without.pid()));
  EXPECT_EQ(without.wait(), 1);
  EXPECT_NE(without.errors(), "");
  EXPECT_EQ(its_area.clock(), -1);
}

TEST(run, two_at_once_never_see_each_other) {
  running_mine one;
  move_window(one.window, 0, 0);
  process other({built("wagons"), "true"});
  const open_area its_area(wait_for_area_of(other.pid()));
  ASSERT_NE(its_area.ident(), one.area.ident());
  one.area.output(sortie::REMPLIR_A, 1);
  ASSERT_NE(one.box(), 0U);
  EXPECT_TRUE(its_area.cycles(10));
  EXPECT_EQ(std::atomic_ref(its_area->output[sortie::REMPLIR_A]).load(), 0);
  other.signal(SIGTERM);
  EXPECT_EQ(other.wait(), 0);
}

// On a fresh kernel the first segment has the identifier 0, which a controller refuses.
TEST(run, the_first_one_on_a_fresh_machine_works_like_any_other) {
  std::vector<std::string> fresh{"unshare", "--ipc"};
  if (getuid() != 0) fresh.insert(fresh.end(), {"--user", "--map-root-user"});
  std::vector<std::string> trial = fresh;
  trial.emplace_back("true");
  if (process(trial).wait() != 0) GTEST_SKIP() << "this machine allows no fresh namespace";
  fresh.insert(fresh.end(), {built("wagons"), built("controleur_mine")});
  process simulator(fresh);
  const window_id window = wait_for_window("mine de charbon");
  const place where = place_of(window);
  ASSERT_TRUE(wait_until([&] { return simulator.errors().find("ident_mem=") != std::string::npos; }));
  EXPECT_EQ(simulator.errors().find("ident_mem=0\n"), std::string::npos);
  EXPECT_EQ(simulator.errors().find("ident_mem ==0"), std::string::npos);
  const picture before = screen_at(where);
  hands::move_to(where.x + buttons::init.x, where.y + buttons::init.y);
  hands::press();
  EXPECT_TRUE(
      wait_until([&] { return screen_at(where).part(50, 130, 200, 40) != before.part(50, 130, 200, 40); }));
  hands::release();
  hands::click(where.x + buttons::quit.x, where.y + buttons::quit.y);
  EXPECT_EQ(simulator.wait(), 0);
}
