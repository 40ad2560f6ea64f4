// How a run begins and ends, seen from outside.
#include <gtest/gtest.h>
#include <sys/shm.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/display.h"

namespace {

// A short way to the right: enough for one message of its value.
void drag_roller_of_A(const place& window) {
  hands::move_to(window.x + 45 + 35, window.y + 360);
  hands::press();
  hands::move_to(window.x + 45 + 65, window.y + 360);
}

}  // namespace

TEST(start_up, without_a_controller_says_so_and_creates_nothing) {
  process simulator({built("wagons")}, {"DISPLAY=:none"});
  EXPECT_EQ(simulator.wait(), 0);
  EXPECT_EQ(simulator.errors(),
            "ERREUR de parametre:\n wagons <controleur>\n\nprobleme interne de memoire\n\n");
  EXPECT_EQ(area_of(simulator.pid()), -1);
}

TEST(start_up, hands_every_argument_to_the_shell_byte_for_byte) {
  const std::string tell = "cat /proc/$$/cmdline;", controller = R"(printf '[%s]\n')";
  process simulator({built("wagons"), tell, controller, "-notooltips", "'a  b' $((6*7))", ""});
  const open_area area(wait_for_area_of(simulator.pid()));
  const std::string ident = std::to_string(area.ident());
  const std::string said = tell + " " + controller + " -notooltips 'a  b' $((6*7))   -automemlink " + ident +
                           " &" + '\0' + "[-notooltips]\n[a  b]\n[42]\n[-automemlink]\n[" + ident + "]\n";
  EXPECT_TRUE(wait_until([&] { return simulator.output().ends_with(said); })) << simulator.output();
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.wait(), 0);
}

TEST(start_up, opens_the_area_of_the_mine) {
  running_mine mine;
  std::string names;
  for (int i = 0; i < mine.area->nb_entrees; ++i) names += mine.area->nom_input[i] + std::string(" ");
  for (int k = 0; k < mine.area->nb_sorties; ++k) names += mine.area->nom_output[k] + std::string(" ");
  EXPECT_EQ(
      names,
      "pcA pcB pcC pdAB pedA pedB pdC wAvide wBvide wCvide wAplein wBplein dc ac atu init A_DROITE B_DROITE "
      "C_DROITE A_GAUCHE B_GAUCHE C_GAUCHE REMPLIR_A REMPLIR_B VIDER_A VIDER_B VIDER_C ");
  EXPECT_EQ(mine.area->nb_entrees, 16);
  EXPECT_EQ(mine.quit(), 0);
  shmid_ds segment{};
  ASSERT_EQ(shmctl(mine.area.ident(), IPC_STAT, &segment), 0) << "the segment stays";
  EXPECT_EQ(segment.shm_segsz, 4561U);
  EXPECT_EQ(segment.shm_perm.mode, 0600) << "and is not marked to go";
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
  drag_roller_of_A(mine.where);
  EXPECT_TRUE(wait_until([&] { return mine.simulator.errors().find("vitesse A: ") != std::string::npos; }));
  hands::release();
  EXPECT_EQ(mine.quit(), 0);
}

TEST(run, ends_with_the_window_and_by_a_signal_through_every_box) {
  std::signal(SIGHUP, SIG_DFL);
  for (const int number : {0, SIGTERM, SIGINT, SIGHUP}) {
    running_mine mine;
    hands::move_to(mine.where.x + 300, mine.where.y + 250);
    if (number == 0) hands::key("Escape");
    if (number == SIGTERM) {
      mine.area.output(sortie::REMPLIR_A, 1);
      mine.area.output(sortie::REMPLIR_B, 1);
      ASSERT_NE(mine.box(), 0U);
    }
    mine.simulator.signal(number);
    EXPECT_EQ(mine.simulator.wait(), 0);
    EXPECT_EQ(mine.area.clock(), -1);
  }
}

TEST(run, goes_on_when_a_hangup_is_ignored_and_nobody_reads_its_errors) {
  process simulator({"bash", "-c", "trap '' HUP; exec 2> >(:); wait $!; exec \"$@\"", "", built("wagons"),
                     "grep SigIgn /proc/self/status #"});
  const open_area area(wait_for_area_of(simulator.pid()));
  const place where = place_of(wait_for_window("mine de charbon"));
  area.cycles(2);
  simulator.signal(SIGHUP);
  const picture before = screen_at(where).part(45, 350, 100, 20);
  drag_roller_of_A(where);
  wait_until([&] { return screen_at(where).part(45, 350, 100, 20) != before || !simulator.runs(); });
  hands::release();
  EXPECT_TRUE(area.cycles(3));
  const auto ignored = std::stoull(simulator.output().substr(std::string("SigIgn:").size()), nullptr, 16);
  EXPECT_EQ(ignored >> (SIGHUP - 1) & 1, 1U) << "of the controller";
  EXPECT_EQ(ignored >> (SIGPIPE - 1) & 1, 0U) << "of the controller";
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.wait(), 0);
  EXPECT_EQ(area.clock(), -1);
}

TEST(run, a_lost_or_missing_display_ends_it_with_an_error) {
  x_server display;
  for (const bool lost : {true, false}) {
    process simulator({built("wagons"), "true"}, {"DISPLAY=" + (lost ? display.name() : ":none")});
    const open_area area(wait_for_area_of(simulator.pid()));
    if (lost) {
      EXPECT_TRUE(area.cycles(2));
      display.kill();
    }
    EXPECT_EQ(simulator.wait(), 1);
    EXPECT_NE(simulator.errors(), "");
    EXPECT_EQ(area.clock(), -1);
  }
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
  EXPECT_EQ(its_area->output[sortie::REMPLIR_A], 0);
  other.signal(SIGTERM);
  EXPECT_EQ(other.wait(), 0);
}

// On a fresh kernel the first segment has the identifier 0, which a controller refuses.
TEST(run, the_first_one_on_a_fresh_machine_works_like_any_other) {
  std::vector<std::string> fresh{"unshare", "--ipc"};
  if (getuid() != 0) fresh.insert(fresh.end(), {"--user", "--map-root-user"});
  auto trial = fresh;
  trial.emplace_back("true");
  if (process(trial).wait() != 0) GTEST_SKIP() << "this machine allows no fresh namespace";
  fresh.insert(fresh.end(),
               {built("wagons"), "run() {", built("controleur_mine"), "\"$@\"; echo $?; }; run"});
  process simulator(fresh);
  wait_for_window("mine de charbon");
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.wait(), 0);
  EXPECT_TRUE(wait_until([&] { return !simulator.output().empty(); }));
  EXPECT_EQ(simulator.output(), "0\n") << "the controller's status; " << simulator.errors();
}
