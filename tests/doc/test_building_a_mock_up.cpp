#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/area.h"
#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

TEST(building_a_mock_up, the_page_makes_a_cylinder_that_works_for_ever) {
  process plant{{built("poussoir"), built("controleur_poussoir")}};
  const open_area area(wait_for_area_of(plant.pid()));
  const window_id window = wait_for_window("poussoir");
  constexpr rgb dark_green{0, 145, 0};
  for (int stroke = 0; stroke < 2; ++stroke) {
    ASSERT_TRUE(wait_until([&] { return area.input(1) == 1; }));
    ASSERT_TRUE(wait_until([&] { return picture_of(window).at(203, 43) == dark_green; })) << "pushed by 60";
    ASSERT_TRUE(wait_until([&] { return area.input(0) == 1; }));
  }
  plant.signal(SIGTERM);
  EXPECT_EQ(plant.wait(), 0) << plant.errors();
  EXPECT_EQ(area.clock(), -1);
}
