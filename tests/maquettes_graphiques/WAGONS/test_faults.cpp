// The boxes of a run: true windows, which stop it while they are open.
#include <gtest/gtest.h>

#include <set>

#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

TEST(modal_box, suspends_the_run_and_leaves_the_scene_on_screen) {
  running_mine mine;
  mine.area.output(sortie::A_DROITE, 1);
  ASSERT_TRUE(mine.input_becomes(entree::pedA, 1));
  mine.click(buttons::about);
  const window_id box = mine.box();
  ASSERT_NE(box, 0U);
  const std::int64_t clock = mine.area.clock();
  for (const int y : {600, 250, 0}) put_aside(box, mine.where.x + 100, y);  // over the wagons, and away
  const auto scene_shows = [&] {
    const picture seen = mine.look();
    return seen.count(blue) == 3 * (40 * 5 + 2 * 5 * 20) && seen.count(black, 80, 35, 41, 20) == 41 * 20;
  };
  EXPECT_TRUE(wait_until(scene_shows, std::chrono::seconds(5)));
  EXPECT_EQ(mine.area.clock(), clock);
  close_box(box);
  EXPECT_TRUE(mine.area.cycles(5)) << "and the run goes on";
  mine.area.output(sortie::A_DROITE, 0);
  EXPECT_TRUE(wait_until(scene_shows)) << "without a ghost of the scene as it stood";
  EXPECT_EQ(mine.quit(), 0);
}

TEST(faults, of_one_cycle_are_shown_one_after_the_other_and_end_the_run) {
  running_mine mine;
  // Both at once for the simulator: it reads its outputs only between two pauses.
  const std::int64_t before = mine.area.clock();
  ASSERT_TRUE(wait_until([&] { return mine.area.clock() > before; }));
  for (const int output : {sortie::REMPLIR_B, sortie::REMPLIR_A}) mine.area.output(output, 1);
  window_id box = 0;
  std::set<std::int64_t> clocks;
  for (const char wagon : {'A', 'B'}) {
    ASSERT_TRUE(wait_until([&, last = box] { return (box = other_window_than({mine.window, last})) != 0; }));
    EXPECT_TRUE(box_says(box, not_loading(wagon)));
    clocks.insert(mine.area.clock());
    close_box(box);
  }
  EXPECT_EQ(clocks.size(), 1U) << "of the same cycle";
  EXPECT_EQ(mine.simulator.wait(), 0);
  EXPECT_EQ(mine.area.clock(), -1);
}
