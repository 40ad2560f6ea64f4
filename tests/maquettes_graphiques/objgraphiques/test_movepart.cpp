#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

TEST(movepart, adds_up_moves_of_a_fraction_of_a_pixel_and_leaves_no_trail) {
  a_scene scene;
  const auto part = scene.part(50, 60, 20, 10);
  for (int n = 0; n < 3; ++n) EXPECT_EQ(part->moveredraw(0.4, 0), 0);
  EXPECT_DOUBLE_EQ(part->actual_precision_first_xpos(), 51.2);
  EXPECT_EQ(columns(scene.window.look(), 65, blue), (extent{51, 70}));
  for (const double step : {0.3, 1.0, 1.5, 2.7})
    for (const int direction : {1, -1, 0})
      for (int n = 0; n < 10; ++n) part->moveredraw(direction * step, direction == 0 ? step : 0);
  part->moveredraw(0, -3);
  EXPECT_EQ(scene.window.look().count(blue), 20 * 10);
}

TEST(movepart, erases_as_scenes_rely_on) {
  a_scene scene;
  struct move {
    double dx, dy;
    extent erased;
  };
  for (const auto& [dx, dy, erased] : std::vector<move>{{2.6, 0, {99, 102}},    // one pixel too many in front
                                                        {-2.6, 0, {117, 120}},  // and one behind
                                                        {0, 2.6, {100, 102}},
                                                        {0, -2.6, {107, 108}},  // truncated: a row stays
                                                        {0, -0.9, {}}}) {
    const auto part = scene.part(100, 100, 20, 10);
    fl_rectf(0, 0, 300, 200, FL_WHITE);
    part->moveredraw(dx, dy);
    const picture seen = scene.window.look();
    EXPECT_EQ(dx != 0 ? columns(seen, 105, grey) : rows(seen, 110, grey), erased) << dx << ", " << dy;
  }
}

TEST(movepart, a_refused_move_changes_nothing) {
  a_scene scene;
  const auto part = scene.part(50, 50, 20, 10);
  const auto wall = scene.part(72, 40, 10, 40, FL_RED);
  const auto load = scene.part(50, 30, 10, 5, FL_GREEN);
  part->link(load.get());
  part->draw();
  const picture before = scene.window.look();
  EXPECT_EQ(part->moveredraw(3, 0), 1);
  EXPECT_EQ(part->actual_first_xpos(), 50);
  EXPECT_EQ(load->actual_first_xpos(), 50) << "the carried part has moved first and comes back";
  EXPECT_EQ(scene.window.look().count(blue), before.count(blue));
  EXPECT_EQ(part->moveredraw(2, 0), 0) << "boxes may touch";
  EXPECT_EQ(load->actual_first_xpos(), 52);
  const auto in_the_load_s_way = scene.part(63, 20, 10, 20);
  EXPECT_EQ(part->moveredraw(2, -10), 1) << "a blocked load stops its carrier";
  part->unlink();
  EXPECT_EQ(part->moveredraw(0, 2), 0);
  EXPECT_EQ(load->actual_first_ypos(), 30);
}

TEST(movepart, moves_to_a_place_by_its_smallest_offsets) {
  a_scene scene;
  const auto part = scene.part(5, 3, 20, 10);
  part->add(10, 30, 5, 5, FL_RED);
  const auto wall = scene.part(200, 100, 20, 20);
  EXPECT_EQ(part->absmoveredraw(100.9, 60.9), 0);
  EXPECT_EQ(part->actual_precision_first_xpos(), 100.9);
  EXPECT_EQ(columns(scene.window.look(), 65, blue), (extent{100, 119})) << "truncated, not rounded";
  EXPECT_EQ(part->absmoveredraw(195, 100), 1);
  EXPECT_EQ(scene.window.look().count(blue), 20 * 10);
  EXPECT_EQ(part->actual_last_xpos(), 120);
  EXPECT_EQ(part->actual_last_ypos(), 60 + 27 + 5);
}

TEST(movepart, a_carrier_destroys_its_load_and_erases_both_while_the_window_is_shown) {
  a_scene scene;
  auto carrier = scene.part(50, 50, 20, 10);
  carrier->link(scene.part(50, 30, 10, 10, FL_RED).release());
  carrier->draw();
  ASSERT_EQ(scene.window.look().count(red), 100);
  carrier.reset();
  EXPECT_EQ(scene.window.look().count(red) + scene.window.look().count(blue), 0);
  EXPECT_EQ(scene.man.busy_position(55, 35), 0) << "both have left the registry";
  const auto outlives_it = scene.part(50, 50, 20, 10);
  scene.window.hide();
}

TEST(movepart, tells_vertical_gaps_dumps_itself_and_reports_an_empty_part) {
  a_scene scene;
  struct gap {
    double first, second;
    int expected;
  };
  for (const gap& g : std::vector<gap>{{10, 20, 0}, {10, 30.7, 10}, {30.7, 10, 10}, {-50, 30.7, 30}})
    EXPECT_EQ(vertical_part_dist(*scene.part(0, g.first, 10, 10), *scene.part(50, g.second, 10, 10)),
              g.expected);
  const auto part = scene.part(1, 2, 3, 4, FL_BLACK);
  part->moveredraw(10, 20);
  std::ostringstream dump;
  dump << *part;
  EXPECT_EQ(dump.str(), "coords 10 20\n(1)\n(2)\n(3)\n(4)\n(56)\n");
  movepart empty(scene.man, &scene.window, bg);
  EXPECT_EQ(empty.actual_precision_first_ypos(), 2000);
  EXPECT_EQ(empty.actual_precision_last_xpos(), -2000);
  EXPECT_EXIT(
      empty.actual_precision_first_xpos(), testing::ExitedWithCode(1),
      "ERREUR dans movepart::actual_precision_first_xpos\\(\\)\nLISTE DE .* ANORMALEMENT VIDE !!!\n\n");
}

TEST(movepart_manager, truncates_the_place_of_a_part_then_that_of_its_box_before_it_looks_for_overlaps) {
  a_scene scene;
  const auto obstacle = scene.part(-0.9, -0.9, 10, 10);  // truncated towards 0: from 0 to 10
  struct approach {
    double offset;
    int size;
    double move;
    int refused;
  };
  for (const auto& [offset, size, move, refused] : std::vector<approach>{{0.7, 5, 9.9, 1},
                                                                         {0.7, 5, 10, 0},
                                                                         {0, -2, 2, 0},
                                                                         {0, -2, 3, 1},
                                                                         {0, -2, 9, 1},
                                                                         {0, -2, 10, 0},
                                                                         {-10.5, 10, 0.9, 0},
                                                                         {-10.5, 10, 1, 1},
                                                                         {-0.5, 5, 10.4, 1},
                                                                         {10.3, 5, -0.9, 0},
                                                                         {10.3, 5, -1, 1}})
    for (const bool across : {true, false}) {
      const auto part = scene.part(300, 300, 5, 5);
      across ? part->add(offset, 0, size, 5, FL_RED) : part->add(0, offset, 5, size, FL_RED);
      EXPECT_EQ(part->moveredraw(across ? move : 0, across ? 0 : move), refused) << offset << ", " << move;
    }
}

TEST(movepart_manager, counts_the_pixels_just_past_a_box_as_busy) {
  a_scene scene;
  const auto part = scene.part(50.7, 50.7, 20, 10);
  for (const auto& [x, y, busy] : std::vector<std::tuple<int, int, int>>{
           {50, 50, 1}, {70, 60, 1}, {71, 60, 0}, {70, 61, 0}, {49, 55, 0}})
    EXPECT_EQ(scene.man.busy_position(x, y), busy) << x << ", " << y;
  EXPECT_EQ(scene.man.busy_position_debug(150, 100), 0);
  EXPECT_EQ(columns(scene.window.look(), 100, black), (extent{100, 200}));
  EXPECT_EQ(rows(scene.window.look(), 150, black), (extent{50, 150}));
}

TEST(movepart_manager, lets_free_parts_fall_and_leaves_the_carried_to_their_carriers) {
  a_scene scene;
  const auto upper = scene.part(50, 50, 20, 10);
  const auto lower = scene.part(50, 60, 20, 10);
  const auto carrier = scene.part(100, 60, 20, 5);
  const auto load = scene.part(150, 50, 20, 10);
  carrier->link(load.get());
  for (int n = 0; n < 5; ++n) scene.man.parts_fall();
  EXPECT_EQ(lower->actual_first_ypos(), 65);
  EXPECT_EQ(upper->actual_first_ypos(), 54) << "the first to fall waits for what it rests on";
  EXPECT_EQ(load->actual_first_ypos(), 55);
  carrier->unlink();
}

TEST(movepart_manager, ends_the_process_on_misuse) {
  a_scene scene;
  std::vector<std::unique_ptr<movepart>> parts;
  for (int n = 0; n < 100; ++n) parts.push_back(scene.part(0, 0, 1, 1));
  EXPECT_EXIT(scene.part(0, 0, 1, 1), testing::ExitedWithCode(1), "^too many part !\n$");
  movepart copy = *parts[0];
  EXPECT_EXIT(copy.moveredraw(1, 0), testing::ExitedWithCode(1),
              "^collision: erreur interne !\n0x[0-9a-f]+\n$");
  parts.pop_back();
  scene.part(0, 0, 1, 1);
}

namespace {

struct a_wagon : a_scene {
  movepart tray{man, &window, bg};
  cookwagon w;
  a_wagon(int x, int l, double speed) : w(&window, x, 100, l, 20, speed, 30, 300, &tray, bg) {
    tray.add(x - 20, 105, 40, 5, FL_BLUE);
  }
  void run(int steps) {
    for (int n = 0; n < steps; ++n) {
      w.draw();
      w.react();
      w.draw();
    }
  }
};

}  // namespace

TEST(wagon, stops_exactly_at_the_ends_of_its_track) {
  a_wagon a(275, 41, 7);
  a.w.right();
  EXPECT_EQ(a.w.react(), 1);
  EXPECT_EQ(a.w.my_xpos(), 280) << "half the length is 20";
  EXPECT_EQ(a.w.right_stop(), 1);
  EXPECT_EQ(a.w.react(), 0);
  a.w.left();
  a.w.react();
  EXPECT_EQ(a.w.right_stop(), 0);
  for (int n = 0; n < 100; ++n) a.w.react();
  EXPECT_EQ(a.w.left_stop(), 1);
  EXPECT_EQ(a.w.my_xpos(), 50);
}

TEST(wagon, sets_off_to_the_left_when_its_speed_is_changed_at_rest) {
  a_wagon a(100, 40, 2.0);
  a.w.change_speed_ref(3.0);
  a.w.react();
  EXPECT_EQ(a.w.my_xpos(), 97);
  a.w.unreact();
  EXPECT_EQ(a.w.my_xpos(), 100);
  a.w.right();
  a.w.change_speed_ref(0.5);
  a.w.react();
  EXPECT_EQ(a.w.my_xpos(), 103) << "a moving wagon keeps its speed";
  a.w.right();
  a.w.react();
  EXPECT_EQ(a.w.my_xpos(), 104) << "103.5 rounds away from zero";
}

TEST(wagon, its_load_takes_half_of_the_way_in_each_drawing_and_stops_it_at_an_obstacle) {
  a_wagon a(100, 40, 4.0);
  const auto wall = a.part(127, 80, 5, 50, FL_RED);
  a.w.right();
  a.w.react();
  for (const int x : {82, 84, 86}) {  // an extra drawing puts it ahead
    a.w.draw();
    EXPECT_EQ(a.tray.actual_first_xpos(), x);
  }
  a.run(10);
  EXPECT_LT(a.w.my_xpos(), 110);
}

TEST(wagon, shows_its_load_and_leaves_no_trail) {
  a_wagon a(100, 40, 1.7);
  a.w.draw();
  const picture empty = a.window.look();
  EXPECT_EQ(empty.at(100, 90), grey);
  EXPECT_EQ(empty.at(95, 115), black) << "left wheel";
  EXPECT_EQ(empty.at(105, 115), black) << "right wheel";
  a.w.load();
  a.w.draw();
  EXPECT_EQ(a.window.look().count(black, 80, 85, 40, 20), 40 * 20);
  a.w.unload();
  a.w.right();
  a.run(40);
  a.w.left();
  a.run(40);
  a.w.stop();
  EXPECT_EQ(a.window.look().count(black), empty.count(black));
  EXPECT_EQ(a.window.look().count(blue), empty.count(blue));
}
