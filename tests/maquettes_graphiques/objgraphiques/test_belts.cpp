#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

namespace {

template <typename Belt>
void run(Belt& b, int steps = 1) {
  for (int n = 0; n < steps; ++n) {
    b.activate();
    b.react();
    b.redraw();
  }
}

}  // namespace

TEST(hbelt, wraps_its_counter_and_carries_on_by_whole_steps) {
  a_scene scene;
  hbelt belt(&scene.window, 50, 100, 100, 20, 30);
  const auto part = scene.part(50, 80, 5, 5);
  belt.add_ppart(part.get());
  for (const int counter : {30, 60, 90, 20}) {
    part->absmoveredraw(50, 80);
    belt.activate();
    EXPECT_EQ(belt.react(), 1);
    EXPECT_EQ(belt.is_activing(), 0);
    belt.redraw();
    EXPECT_EQ(belt.traveling(), counter);
    EXPECT_EQ(part->actual_precision_first_xpos(), 80) << "by the speed, across the wrap as well";
    EXPECT_EQ(scene.window.pixel_at(50 + counter, 110), black);
  }
  belt.unreact();
  EXPECT_EQ(belt.traveling(), -10) << "back by one step, below 0 after a wrap";
}

TEST(hbelt, carries_what_stands_over_it_with_both_ends) {
  a_scene scene;
  hbelt belt(&scene.window, 50, 100, 100, 20, 2);
  const std::vector<std::pair<int, int>> from_to{{49, 49}, {50, 52}, {150, 152}, {151, 151}, {90, 90}};
  const auto in_the_way_of_the_last = scene.part(96, 160, 5, 5, FL_RED);
  std::vector<std::unique_ptr<movepart>> parts;
  int y = 10;  // at whatever height
  for (const auto& [from, to] : from_to)
    belt.add_ppart(parts.emplace_back(scene.part(from, y += 30, 5, 5)).get());
  run(belt);
  for (std::size_t n = 0; n < parts.size(); ++n)
    EXPECT_EQ(parts[n]->actual_first_xpos(), from_to[n].second) << from_to[n].first;
  EXPECT_EQ(scene.window.look().count(blue), 3 * 25) << "those not over it are not painted either";
  belt.supp_ppart(parts[1].get());
  run(belt);
  EXPECT_EQ(parts[1]->actual_first_xpos(), 52) << "let go";
}

TEST(hbelt, redraws_only_after_a_step_forward_and_lets_its_mark_stick_out_below) {
  a_scene scene;
  for (const int speed : {3, -3}) {
    fl_rectf(0, 0, 300, 200, bg);
    hbelt belt(&scene.window, 50, 100, 100, 20, speed);
    const auto part = scene.part(100, 80, 5, 5);
    belt.add_ppart(part.get());
    EXPECT_EQ(belt.react(), 0);
    belt.redraw();
    EXPECT_EQ(scene.window.look().count(red), 0) << "not activated";
    run(belt);
    EXPECT_EQ(scene.window.look().count(red) > 0, speed > 0);
    EXPECT_EQ(part->actual_first_xpos(), speed > 0 ? 103 : 100) << "backwards deliberately nothing";
    belt.draw();
    EXPECT_EQ(part->actual_first_xpos(), speed > 0 ? 106 : 97) << "draw() has no such condition";
    if (speed < 0) continue;
    run(belt);
    const picture seen = scene.window.look();
    EXPECT_EQ(seen.at(53, 120), black) << "nothing erases the end of the old mark";
    EXPECT_EQ(seen.at(53, 110), red);
    belt.paint();
    EXPECT_TRUE(scene.window.look() == seen);
  }
}

namespace {

struct a_turntable : a_scene {
  rbelt table{&window, 150, 100, 60, 10, 30};
  std::unique_ptr<movepart> load = part(190, 95, 20, 10);  // its centre 50 to the right of the axle
};

}  // namespace

TEST(rbelt, turns_its_parts_about_the_axle_without_turning_them_round) {
  a_turntable a;
  a.table.add_ppart(a.load.get());
  run(a.table, 3);
  EXPECT_EQ(a.table.radius(), 90) << "the angle, despite the name";
  EXPECT_NEAR(a.load->actual_precision_first_xpos(), 140 + 50 * std::cos(3.1415 / 2), 1e-9) << "almost pi";
  a.table.react();
  a.table.redraw();
  EXPECT_NEAR(a.load->actual_precision_first_ypos(), 145, 0.01) << "not activated, not turned";
  run(a.table, 10);
  EXPECT_EQ(a.table.radius(), 30) << "13 steps: wrapped past 360";
  EXPECT_NEAR(a.load->actual_precision_first_xpos(), 140 + 50 * std::cos(M_PI / 6), 0.05);
}

TEST(rbelt, leaves_a_part_that_is_blocked_and_ignores_invisible_steps) {
  a_turntable a;
  a.table.add_ppart(a.load.get());
  const auto wall = a.part(160, 115, 60, 20, FL_RED);
  run(a.table);
  EXPECT_EQ(a.load->actual_first_xpos(), 190);
  EXPECT_EQ(a.table.radius(), 30) << "the table turns under it";
  wall->absmoveredraw(0, 0);
  a.table.change_speed(0.0005);
  run(a.table, 3);
  EXPECT_EQ(a.load->actual_precision_first_ypos(), 95);
  a.table.change_speed(30);
  a.table.activate();
  a.table.react();
  a.table.change_speed(90);
  a.table.redraw();
  EXPECT_NEAR(a.load->actual_precision_first_ypos(), 145, 0.01) << "parts turn by the speed of the moment";
}

TEST(rbelt, paints_a_disc_off_its_axle_and_a_radius_that_may_leave_it) {
  a_turntable a;
  a.table.draw();
  EXPECT_EQ(columns(a.window.look(), 130, white), (extent{150, 209}));
  EXPECT_EQ(a.window.look().count(black), 0);
  run(a.table, 4);
  const picture turned = a.window.look();
  EXPECT_EQ(turned.at(150 - 29, 100 + 51), black) << "at 120 degrees, outside the disc";
  a.table.paint();
  EXPECT_TRUE(a.window.look() == turned);
  run(a.table);
  EXPECT_EQ(a.window.pixel_at(150 - 29, 100 + 51), black) << "where it stays";
}
