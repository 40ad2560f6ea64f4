// The reference controller against the real mine, with an operator at the desk.
#include <gtest/gtest.h>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

TEST(controleur_mine, takes_its_area_from_a_strict_command_line) {
  for (const char* const arguments :
       {"", "-automemlink", "-automemlink ''", "-automemlink x", "-automemlink 12x", "-automemlink -1",
        "-automemlink 99999999999", "automemlink 12", "-automemlink 12 13"}) {
    process controller({"sh", "-c", "exec " + built("controleur_mine") + " " + arguments});
    EXPECT_EQ(controller.wait(), 2) << arguments;
    EXPECT_EQ(controller.errors(), "usage: " + built("controleur_mine") + " [...] -automemlink <ident>\n");
  }
  process refused({built("controleur_mine"), "-automemlink", "0"});
  EXPECT_EQ(refused.wait(), 1);
}

TEST(controleur_mine, finds_home_from_everywhere_when_it_is_told_to) {
  struct {
    int output, leaves;  // a movement that passes or flees the wagon's home
  } const moves[] = {
      {sortie::A_GAUCHE, entree::pcA}, {sortie::B_DROITE, entree::pcB}, {sortie::C_GAUCHE, entree::pcC}};
  enum starts { untouched, past_home, at_the_end };
  for (const starts start : {untouched, past_home, at_the_end}) {
    running_mine mine;
    for (const auto& move : moves) {
      if (start == untouched) break;
      mine.area.output(move.output, 1);
      ASSERT_TRUE(mine.input_becomes(move.leaves, 1) && mine.input_becomes(move.leaves, 0));
      ASSERT_TRUE(start != at_the_end || mine.area.cycles(200));
      mine.area.output(move.output, 0);
    }
    // So slow that a first search does not reach home.
    ASSERT_TRUE(start != at_the_end || mine.turn(0, 1));
    const process controller({built("controleur_mine"), "-automemlink", std::to_string(mine.area.ident())});
    EXPECT_TRUE(mine.area.cycles(20) && mine.at_rest()) << "nothing moves unasked";
    mine.push(buttons::init);
    const auto home = [&] { return mine.all_home() && mine.at_rest(); };
    EXPECT_TRUE(wait_until([&] { return home() && mine.area.cycles(20) && home(); })) << start;
    EXPECT_EQ(mine.quit(), 0);
  }
}

TEST(controleur_mine, hauls_and_stops_at_home_when_the_load_in_hand_is_delivered) {
  running_mine mine(built("controleur_mine"));
  mine.push(buttons::start);
  ASSERT_TRUE(mine.hauls(2) && mine.input_becomes(entree::wAplein, 1));
  mine.push(buttons::stop);
  const auto done = [&] {
    return mine.all_home() && mine.at_rest() && mine.shows({entree::wAvide, entree::wBvide, entree::wCvide});
  };
  EXPECT_TRUE(wait_until(done));
  EXPECT_TRUE(mine.area.cycles(50) && done()) << "and stays";
  mine.push(buttons::start);
  EXPECT_TRUE(mine.hauls(1));
  EXPECT_EQ(mine.quit(), 0);
}

TEST(controleur_mine, emergency_stop_drops_everything_until_initialisation) {
  running_mine mine(built("controleur_mine"));
  mine.push(buttons::start);
  ASSERT_TRUE(mine.input_becomes(entree::wAplein, 1));
  mine.hold(buttons::emergency);
  EXPECT_TRUE(wait_until([&] { return mine.at_rest(); }));
  hands::release();
  for (const point button : {buttons::start, buttons::stop}) {
    mine.push(button);
    EXPECT_TRUE(mine.at_rest());
  }
  mine.push(buttons::init);
  EXPECT_TRUE(wait_until([&] { return mine.all_home() && mine.at_rest(); }));
  EXPECT_TRUE(mine.shows({entree::wAplein})) << "the load is still in hand";
  mine.push(buttons::start);
  EXPECT_TRUE(mine.hauls(2));
  EXPECT_EQ(mine.quit(), 0);
}

TEST(independent_controller, hauls_a_load_by_the_layout_of_the_record_alone) {
  running_mine mine("python3 " +
                    in_repository("tests/maquettes_graphiques/WAGONS/controleurs/independent_controller.py"));
  EXPECT_TRUE(wait_until([&] { return mine.simulator.output() == "hauled\n"; })) << mine.simulator.errors();
  EXPECT_EQ(mine.area.input(entree::wCvide), 1);
  EXPECT_EQ(mine.quit(), 0);
}

TEST(controller_of_the_readme, hauls_and_a_journal_tells_it) {
  const std::vector<std::string> environment{"PYTHONPATH=" + in_repository("python"),
                                             "PYTHONDONTWRITEBYTECODE=1"};
  for (const std::string& shuttle :
       {built("shuttle"), "python3 " + in_repository("python/examples/shuttle.py")}) {
    running_mine mine(shuttle, environment);
    process journal(
        {built("signal_journal"), std::to_string(mine.simulator.pid()), "--until", "wCvide", "1", "2"});
    const auto answers = [&] { return std::atomic_ref(mine.area->output_clock).load() > 0; };
    ASSERT_TRUE(wait_until([&] { return !journal.output().empty() && answers(); }))
        << mine.simulator.errors();
    mine.push(buttons::start);
    EXPECT_TRUE(mine.hauls(2)) << mine.simulator.errors();
    EXPECT_EQ(journal.wait(), 0);
    for (const char* const change :
         {" s  dc 1\n", " s  REMPLIR_A 1\n", " s  wAplein 1\n", " s  VIDER_C 1\n", " s  wCvide 1\n"})
      EXPECT_NE(journal.output().find(change), std::string::npos) << change;
    EXPECT_EQ(mine.quit(), 0);
  }
}
