// The reference controller against the real mine, with an operator at the desk.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <random>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

struct a_run : running_mine {
  explicit a_run(const char* controller = "controleur_mine") : running_mine(built(controller)) {}

  bool all_home() const {
    return area.input(entree::pcA) && area.input(entree::pcB) && area.input(entree::pcC);
  }
  bool at_rest() const {
    for (int k = 0; k < sortie::count; ++k)
      if (std::atomic_ref(area->output[k]).load() != 0) return false;
    return true;
  }
  // Waits until wagon C has been emptied n times at its station.
  bool hauls(int n) const {
    for (; n > 0; --n)
      if (!input_becomes(entree::wCvide, 0) || !input_becomes(entree::wCvide, 1)) return false;
    return true;
  }
};

// The roller turns by a tenth of a pixel a cycle for each pixel of the hand, if the hand takes its time.
void turn_roller(const running_mine& mine, int index, int pixels) {
  const int x = mine.where.x + 45 + 80 * index + 35, y = mine.where.y + 360;
  hands::move_to(x, y);
  hands::press();
  mine.area.cycles(2);
  hands::move_to(x + pixels, y);
  mine.area.cycles(2);
  hands::release();
}

}  // namespace

TEST(controleur_mine, takes_its_area_from_a_strict_command_line) {
  const std::vector<std::vector<std::string>> wrong = {{},
                                                       {"-automemlink"},
                                                       {"-automemlink", ""},
                                                       {"-automemlink", "x"},
                                                       {"-automemlink", "12x"},
                                                       {"-automemlink", "-1"},
                                                       {"-automemlink", "99999999999"},
                                                       {"automemlink", "12"},
                                                       {"-automemlink", "12", "13"}};
  for (std::vector<std::string> words : wrong) {
    words.insert(words.begin(), built("controleur_mine"));
    process controller(words);
    EXPECT_EQ(controller.wait(), 2);
    EXPECT_EQ(controller.errors(), "usage: " + built("controleur_mine") + " [...] -automemlink <ident>\n");
  }
  process refused({built("controleur_mine"), "-automemlink", "0"});
  EXPECT_EQ(refused.wait(), 1);
}

TEST(controleur_mine, initialisation_brings_every_wagon_home) {
  a_run run;
  EXPECT_TRUE(run.at_rest());
  run.push(buttons::init);
  EXPECT_TRUE(wait_until([&] { return run.all_home() && run.at_rest(); }));
  EXPECT_EQ(run.quit(), 0);
}

TEST(controleur_mine, finds_home_from_the_ends_of_the_tracks_and_after_overshooting) {
  struct {
    int output, leaves;  // a movement that passes or flees the wagon's home
  } const moves[] = {
      {sortie::A_GAUCHE, entree::pcA}, {sortie::B_DROITE, entree::pcB}, {sortie::C_GAUCHE, entree::pcC}};
  for (const bool to_the_end : {false, true}) {
    running_mine mine;
    for (const auto& move : moves) {
      mine.area.output(move.output, 1);
      ASSERT_TRUE(mine.input_becomes(move.leaves, 1));
      ASSERT_TRUE(mine.input_becomes(move.leaves, 0));
      if (to_the_end) {
        ASSERT_TRUE(mine.area.cycles(200));
      }
      mine.area.output(move.output, 0);
    }
    const process controller({built("controleur_mine"), "-automemlink", std::to_string(mine.area.ident())});
    mine.area.cycles(20);
    mine.push(buttons::init);
    const auto home = [&] {
      return mine.area.input(entree::pcA) && mine.area.input(entree::pcB) && mine.area.input(entree::pcC);
    };
    EXPECT_TRUE(wait_until([&] { return home() && mine.area.cycles(20) && home(); })) << to_the_end;
    EXPECT_EQ(mine.quit(), 0);
  }
}

TEST(controleur_mine, hauls_and_stops_at_home_when_the_load_in_hand_is_delivered) {
  a_run run;
  run.push(buttons::start);
  ASSERT_TRUE(run.hauls(2));
  ASSERT_TRUE(run.input_becomes(entree::wAplein, 1));
  run.push(buttons::stop);
  const auto done = [&] {
    return run.all_home() && run.at_rest() && run.area.input(entree::wAvide) &&
           run.area.input(entree::wBvide) && run.area.input(entree::wCvide);
  };
  EXPECT_TRUE(wait_until(done));
  EXPECT_TRUE(run.area.cycles(50) && done()) << "and stays";
  run.push(buttons::start);
  EXPECT_TRUE(run.hauls(1));
  EXPECT_EQ(run.quit(), 0);
}

TEST(controleur_mine, emergency_stop_drops_everything_until_initialisation) {
  a_run run;
  run.push(buttons::start);
  ASSERT_TRUE(run.input_becomes(entree::wAplein, 1));
  run.hold(buttons::emergency);
  EXPECT_TRUE(wait_until([&] { return run.at_rest(); }));
  hands::release();
  for (const button& b : {buttons::start, buttons::stop}) {
    run.push(b);
    EXPECT_TRUE(run.at_rest());
  }
  run.push(buttons::init);
  EXPECT_TRUE(wait_until([&] { return run.all_home() && run.at_rest(); }));
  EXPECT_TRUE(run.area.input(entree::wAplein)) << "the load is still in hand";
  run.push(buttons::start);
  EXPECT_TRUE(run.hauls(2));
  EXPECT_EQ(run.quit(), 0);
}

// The short form of the soak: SOAK_SECONDS makes it long, SOAK_SEED repeats one.
TEST(controleur_mine, raises_no_fault_whatever_the_operator_does) {
  const auto from_environment = [](const char* name, long otherwise) {
    const char* const text = std::getenv(name);
    return text != nullptr ? std::atol(text) : otherwise;
  };
  const auto seed = static_cast<unsigned>(from_environment("SOAK_SEED", 1));
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::seconds(from_environment("SOAK_SECONDS", 20));
  std::mt19937 random(seed);
  const auto up_to = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  a_run run;
  run.push(buttons::start);
  int deliveries = 0, actions = 0;
  std::int32_t C_was_empty = 1;
  for (; std::chrono::steady_clock::now() < end; ++actions) {
    const int choice = up_to(100);
    if (choice < 30)
      run.push(buttons::start);
    else if (choice < 45)
      run.push(buttons::stop);
    else if (choice < 55)
      run.push(buttons::init);
    else if (choice < 63)
      run.push(buttons::emergency);
    else if (choice < 70)
      run.click(buttons::empty_by_hand);
    else if (choice < 71)
      run.click(buttons::redraw);
    else
      turn_roller(run, up_to(3), up_to(60) - 30);
    for (int n = up_to(200); n > 0; n -= 4) {
      ASSERT_TRUE(run.area.cycles(3)) << "the run has ended: " << run.simulator.errors();
      const std::int32_t C_is_empty = run.area.input(entree::wCvide);
      deliveries += C_is_empty && !C_was_empty;
      C_was_empty = C_is_empty;
    }
    ASSERT_EQ(other_window_than({run.window}), 0U) << "seed " << seed << ", action " << actions;
  }
  std::cout << actions << " actions, " << deliveries << " deliveries, seed " << seed << "\n";
  for (const int roller : {0, 1, 2}) turn_roller(run, roller, 30);  // full speed
  run.push(buttons::init);
  EXPECT_TRUE(wait_until([&] { return run.all_home(); }, std::chrono::seconds(60))) << "seed " << seed;
  run.push(buttons::start);
  EXPECT_TRUE(run.hauls(2)) << "it can still work";
  EXPECT_EQ(run.quit(), 0);
}

TEST(independent_controller, hauls_a_load_by_the_layout_of_the_record_alone) {
  running_mine mine("python3 " +
                    in_repository("tests/maquettes_graphiques/WAGONS/controleurs/independent_controller.py"));
  EXPECT_TRUE(wait_until([&] { return mine.simulator.output() == "hauled\n"; })) << mine.simulator.errors();
  EXPECT_EQ(mine.area.input(entree::wCvide), 1);
  EXPECT_EQ(mine.quit(), 0);
}

TEST(controller_of_the_readme, hauls_and_a_journal_tells_it) {
  a_run run("shuttle");
  process journal(
      {built("signal_journal"), std::to_string(run.simulator.pid()), "--until", "wCvide", "1", "2"});
  ASSERT_TRUE(wait_until([&] { return !journal.output().empty(); }));
  run.push(buttons::start);
  EXPECT_TRUE(run.hauls(2));
  EXPECT_EQ(journal.wait(), 0);
  for (const char* const change :
       {" s  dc 1\n", " s  REMPLIR_A 1\n", " s  wAplein 1\n", " s  VIDER_C 1\n", " s  wCvide 1\n"})
    EXPECT_NE(journal.output().find(change), std::string::npos) << change;
  EXPECT_EQ(run.quit(), 0);
}
