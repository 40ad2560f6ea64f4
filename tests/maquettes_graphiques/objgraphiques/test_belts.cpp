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

struct a_turntable : a_scene {
  rbelt table{&window, 150, 100, 60, 10, 30};
  std::unique_ptr<movepart> load = part(190, 95, 20, 10);  // its centre 50 to the right of the axle
  a_turntable() { table.add_ppart(load.get()); }
};

}  // namespace

TEST(belt, wraps_its_counter_at_both_ends_and_carries_on_by_whole_steps) {
  a_scene scene;
  for (const auto& [speed, counters] : std::vector<std::pair<int, std::vector<int>>>{
           {30, {30, 60, 90, 20}}, {-30, {70, 40, 10, 80}}, {50, {50, 100, 50}}, {-50, {50, 0, 50}}}) {
    hbelt belt(&scene.window, 50, 100, 100, 20, speed);
    const auto part = scene.part(80, 80, 5, 5);
    belt.add_ppart(part.get());
    for (const int counter : counters) {
      part->absmoveredraw(80, 80);
      belt.activate();
      EXPECT_EQ(belt.react(), 1);
      belt.draw();
      EXPECT_EQ(belt.traveling(), counter) << speed;
      EXPECT_EQ(part->actual_precision_first_xpos(), 80 + speed) << "across the wrap as well";
    }
    belt.unreact();
    EXPECT_EQ(belt.traveling(), counters.back() - speed);
    EXPECT_EQ(belt.react(), 0) << "a command lasts one step";
  }
}

TEST(hbelt, carries_what_stands_over_it_with_both_ends) {
  a_scene scene;
  hbelt belt(&scene.window, 50, 100, 100, 20, 2);
  const std::pair<int, int> from_to[] = {{49, 49}, {50, 52}, {150, 152}, {151, 151}, {90, 90}};
  const auto in_the_way_of_the_last = scene.part(96, 160, 5, 5, FL_RED);
  std::vector<std::unique_ptr<movepart>> parts;
  int y = 10;  // at whatever height
  for (const auto& [from, to] : from_to)
    belt.add_ppart(parts.emplace_back(scene.part(from, y += 30, 5, 5)).get());
  run(belt);
  for (std::size_t n = 0; n < parts.size(); ++n)
    EXPECT_EQ(parts[n]->actual_first_xpos(), from_to[n].second) << from_to[n].first;
  belt.supp_ppart(parts[1].get());
  run(belt);
  EXPECT_EQ(parts[1]->actual_first_xpos(), 52) << "let go";
}

TEST(hbelt, redraws_only_after_a_step_forward_and_lets_its_mark_stick_out_below) {
  a_scene scene;
  const std::string body = "red 50 100 100 20; black rect 50 100 100 20; black line ";
  const std::string carried = "; grey 59 80 4 5; blue 63 80 5 5; blue 63 80 5 5";
  for (const int speed : {3, -3}) {
    hbelt belt(&scene.window, 50, 100, 100, 20, speed);
    const auto beside = scene.part(40, 80, 5, 5), part = scene.part(60, 80, 5, 5);
    for (movepart* const p : {beside.get(), part.get()}) belt.add_ppart(p);
    EXPECT_EQ(scene.calls([&] { belt.redraw(); }), "") << "not activated";
    EXPECT_EQ(scene.calls([&] { run(belt); }), speed > 0 ? body + "53 100 53 120" + carried : "");
    const std::string with_mark = body + (speed > 0 ? "53 100 53 119" : "147 100 147 119");
    EXPECT_EQ(scene.calls_here([&] { belt.paint(); }), with_mark);
    EXPECT_TRUE(scene.calls([&] { belt.draw(); }).starts_with(with_mark + "; grey"));
    EXPECT_EQ(part->actual_first_xpos(), speed > 0 ? 66 : 57) << "draw() has no such condition";
  }
}

TEST(rbelt, turns_its_parts_about_the_axle_without_turning_them_round) {
  a_turntable a;
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

TEST(rbelt, paints_a_disc_off_its_axle_and_a_radius_that_nothing_erases) {
  a_turntable a;
  const std::string disc = "white pie 150 100 60 60 0 360", radius = "; black line 150 100 201 129";
  EXPECT_EQ(a.calls([&] { a.table.draw(); }), disc);
  EXPECT_EQ(a.calls([&] { run(a.table); }), disc + "; grey 190 95 20 10; blue 183 119 20 10" + radius);
  EXPECT_EQ(a.calls_here([&] { a.table.paint(); }), disc + radius);
}
