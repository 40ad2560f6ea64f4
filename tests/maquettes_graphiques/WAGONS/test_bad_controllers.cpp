// Whatever a controller does, the window stays alive and "Quit" works.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

// A window that is alive answers a button: its border changes while it is held.
void expect_alive(running_mine& mine) {
  const picture released = mine.look().part(760, 295, 80, 35);
  mine.hold(buttons::redraw);
  EXPECT_TRUE(
      wait_until([&] { return mine.look().part(760, 295, 80, 35) != released; }, std::chrono::seconds(4)));
  hands::move_to(mine.where.x, mine.where.y);
  hands::release();
  EXPECT_EQ(mine.quit(), 0);
}

class bad_controller : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(bad_controller, leaves_the_operator_in_command) {
  running_mine mine(GetParam()[0] == '/' ? GetParam() : built("bad_controller") + " " + GetParam());
  expect_alive(mine);
}

INSTANTIATE_TEST_SUITE_P(mine, bad_controller,
                         testing::Values("/bin/true", "/nowhere/at/all", "/bin/false", "attaches_twice",
                                         "dies_holding_the_lock", "floods_the_outputs", "keeps_the_lock",
                                         "fills_the_record_with_garbage", "fills_the_record_with_ones",
                                         "fills_the_record_with_zeros"));

TEST(controller, may_be_killed_at_any_instant) {
  running_mine mine;
  for (int n = 0; n < 20; ++n) {
    process controller({built("controleur_mine"), "-automemlink", std::to_string(mine.area.ident())});
    ASSERT_TRUE(wait_until([&] { return !controller.errors().empty(); }));
    mine.area.cycles(n % 3);
    controller.signal(SIGKILL);
    controller.wait();
  }
  EXPECT_TRUE(mine.area.cycles(5));
  expect_alive(mine);
}
