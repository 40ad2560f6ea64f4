#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <vector>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

TEST(movepart, adds_up_moves_of_a_fraction_of_a_pixel) {
  a_scene scene;
  const auto part = scene.part(50, 60, 20, 10);
  part->draw();
  EXPECT_EQ(part->moveredraw(0.4, 0), 0);
  EXPECT_EQ(columns(scene.window.look(), 65, blue), (extent{50, 69}));
  part->moveredraw(0.4, 0);
  part->moveredraw(0.4, 0);
  EXPECT_EQ(columns(scene.window.look(), 65, blue), (extent{51, 70}));
  EXPECT_DOUBLE_EQ(part->actual_precision_first_xpos(), 51.2);
  EXPECT_EQ(part->actual_first_xpos(), 51);
}

TEST(movepart, leaves_no_trail_but_upwards_by_fractions) {
  a_scene scene;
  const auto part = scene.part(100, 100, 20, 10);
  part->draw();
  const auto move = [&](double dx, double dy) {
    for (int n = 0; n < 10; ++n) part->moveredraw(dx, dy);
  };
  for (const double step : {0.3, 1.0, 1.5, 2.7}) {
    move(step, 0);
    move(-step, 0);
    move(0, step);
  }
  move(0, -3);
  EXPECT_EQ(scene.window.look().count(blue), 20 * 10);
  move(0, -0.5);
  EXPECT_GT(scene.window.look().count(blue), 20 * 10) << "less than a pixel upwards erases nothing";
}

TEST(movepart, erases_as_scenes_rely_on) {
  a_scene scene;
  fl_rectf(0, 0, 300, 200, FL_WHITE);
  const auto part = scene.part(100, 100, 20, 10);
  part->draw();
  part->moveredraw(5, 0);  // one pixel more than the strip, on the far side
  EXPECT_EQ(columns(scene.window.look(), 105, grey), (extent{99, 104}));
  part->moveredraw(-5, 0);  // one more than the strip
  EXPECT_EQ(columns(scene.window.look(), 105, grey).last, 125);
  fl_rectf(0, 0, 300, 200, FL_WHITE);
  part->moveredraw(0, 5);  // the extra pixel is covered by the box
  EXPECT_EQ(rows(scene.window.look(), 110, grey), (extent{100, 104}));
  fl_rectf(0, 0, 300, 200, FL_WHITE);
  part->moveredraw(0, -2.6);  // truncated, no extra pixel: box at 102, its bottom rows were 112..114
  EXPECT_EQ(rows(scene.window.look(), 110, grey), (extent{112, 113}));
}

TEST(movepart, a_refused_move_changes_nothing) {
  a_scene scene;
  const auto part = scene.part(50, 50, 20, 10);
  const auto wall = scene.part(72, 40, 10, 40, FL_RED);
  auto load = scene.part(50, 30, 10, 5, FL_GREEN);
  part->link(load.get());
  part->draw();
  wall->draw();
  const picture before = scene.window.look();
  EXPECT_EQ(load->is_linked(), 1);
  EXPECT_EQ(part->part_have_link(), load.get());
  EXPECT_EQ(part->moveredraw(3, 0), 1);
  EXPECT_EQ(part->actual_first_xpos(), 50);
  EXPECT_EQ(load->actual_first_xpos(), 50) << "the carried part has moved first and comes back";
  EXPECT_EQ(scene.window.look().part(45, 25, 40, 40).count(blue), before.part(45, 25, 40, 40).count(blue));
  EXPECT_EQ(part->moveredraw(2, 0), 0) << "boxes may touch";
  EXPECT_EQ(load->actual_first_xpos(), 52);
  const auto in_the_load_s_way = scene.part(63, 20, 10, 20);
  EXPECT_EQ(part->moveredraw(-2, 0) + part->moveredraw(2, 0) + part->moveredraw(0, -1), 0);
  EXPECT_EQ(load->moveredraw(2, 0), 1);
  EXPECT_EQ(part->moveredraw(2, 0), 1) << "a blocked load stops its carrier";
  part->unlink();
  EXPECT_EQ(load->is_linked(), 0);
}

TEST(movepart, moves_to_a_place_by_its_smallest_offsets) {
  a_scene scene;
  const auto part = scene.part(5, 3, 20, 10);
  part->add(10, 30, 5, 5, FL_RED);
  part->draw();
  const auto wall = scene.part(200, 100, 20, 20);
  EXPECT_EQ(part->absmoveredraw(100.9, 60.9), 0);
  EXPECT_EQ(part->actual_precision_first_xpos(), 100.9);
  EXPECT_EQ(columns(scene.window.look(), 65, blue), (extent{100, 119})) << "truncated, not rounded";
  EXPECT_EQ(part->absmoveredraw(195, 100), 1);
  EXPECT_EQ(part->actual_first_ypos(), 60);
  EXPECT_EQ(scene.window.look().count(blue), 20 * 10);
  EXPECT_EQ(part->actual_last_xpos(), 120);
  EXPECT_EQ(part->actual_last_ypos(), 60 + 27 + 5);
}

TEST(movepart, a_carrier_destroys_its_load_and_erases_both) {
  a_scene scene;
  auto carrier = scene.part(50, 50, 20, 10);
  carrier->link(scene.part(50, 30, 10, 10, FL_RED).release());
  carrier->draw();
  ASSERT_EQ(scene.window.look().count(red), 100);
  carrier.reset();
  EXPECT_EQ(scene.window.look().count(red) + scene.window.look().count(blue), 0);
  EXPECT_EQ(scene.man.busy_position(55, 35), 0) << "both have left the registry";
}

TEST(movepart, may_outlive_the_shown_window) {
  a_scene scene;
  auto part = scene.part(50, 50, 20, 10);
  scene.window.hide();
  part.reset();
}

TEST(movepart, measures_vertical_gaps) {
  a_scene scene;
  const auto upper = scene.part(0, 10, 10, 10);
  const auto touching = scene.part(100, 20, 10, 10);
  const auto lower = scene.part(0, 30.7, 10, 10);
  EXPECT_EQ(vertical_part_dist(*upper, *touching), 0);
  EXPECT_EQ(vertical_part_dist(*upper, *lower), 10);
  EXPECT_EQ(vertical_part_dist(*lower, *upper), 10);
}

TEST(movepart, dumps_itself_and_reports_an_empty_part) {
  a_scene scene;
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

namespace {

struct box {
  double x, y;
  int l, h;
};

// The rule of the collision test, box by box.
bool boxes_overlap(const std::vector<box>& a, double ax, double ay, const std::vector<box>& b, double bx,
                   double by) {
  const auto place = [](double base, double offset) {
    return static_cast<int>(static_cast<int>(base) + offset);
  };
  for (const box& p : a)
    for (const box& q : b) {
      const int px = place(ax, p.x), py = place(ay, p.y), qx = place(bx, q.x), qy = place(by, q.y);
      if (qy + q.h > py && py + p.h > qy && qx + q.l > px && px + p.l > qx) return true;
    }
  return false;
}

}  // namespace

TEST(movepart_manager, agrees_with_the_rule_in_a_crowd_around_the_origin) {
  a_scene scene;
  std::mt19937 random(4);
  const auto between = [&](int low, int high) {
    return static_cast<int>(random() % static_cast<unsigned>(high - low + 1)) + low;
  };
  struct known {
    std::vector<box> boxes;
    std::unique_ptr<movepart> part;
    double x = 0, y = 0;
  };
  std::vector<known> crowd(60);
  for (known& k : crowd) {
    k.part = std::make_unique<movepart>(scene.man, &scene.window, bg);
    const int far = between(-80, 80);  // eighths of a pixel, so that every sum is exact
    for (int n = between(0, 3); n > 0; --n) {
      k.boxes.push_back({(between(-30, 30) * 8 + far) / 8.0, (between(-30, 30) * 8 - far) / 8.0,
                         between(-2, 9), between(-2, 9)});
      k.part->add(k.boxes.back().x, k.boxes.back().y, k.boxes.back().l, k.boxes.back().h, FL_BLUE);
    }
  }
  int refusals = 0;
  for (int n = 0; n < 6000; ++n) {
    known& moved = crowd[static_cast<std::size_t>(between(0, 59))];
    const double x = moved.x + between(-99, 99) / 8.0, y = moved.y + between(-99, 99) / 8.0;
    bool expected = false;
    for (const known& other : crowd)
      expected |= &other != &moved && boxes_overlap(other.boxes, other.x, other.y, moved.boxes, x, y);
    ASSERT_EQ(moved.part->moveredraw(x - moved.x, y - moved.y), expected) << n;
    refusals += expected;
    if (expected) continue;
    moved.x = x;
    moved.y = y;
  }
  EXPECT_GT(refusals, 500);
  EXPECT_LT(refusals, 5500);
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
  EXPECT_EQ(carrier->actual_first_ypos(), 65);
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
  a_wagon(int x, int l, double speed, int x_min, int x_max)
      : w(&window, x, 100, l, 20, speed, x_min, x_max, &tray, bg) {
    tray.add(x - 20, 105, 40, 5, FL_BLUE);
  }
};

}  // namespace

TEST(wagon, stops_exactly_at_the_ends_of_its_track) {
  a_wagon a(275, 41, 7, 30, 300);
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
  a_wagon a(100, 40, 2.0, 30, 290);
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

TEST(wagon, its_load_takes_half_of_the_way_in_each_drawing) {
  a_wagon a(100, 40, 4.0, 30, 290);
  a.w.right();
  a.w.react();
  a.w.draw();
  EXPECT_EQ(a.tray.actual_first_xpos(), 82);
  a.w.draw();
  EXPECT_EQ(a.tray.actual_first_xpos(), 84);
  a.w.draw();
  EXPECT_EQ(a.tray.actual_first_xpos(), 86) << "an extra drawing puts it ahead";
}

TEST(wagon, stops_where_its_load_meets_an_obstacle) {
  a_wagon a(100, 40, 4.0, 30, 290);
  const auto wall = a.part(125, 80, 5, 50, FL_RED);
  a.w.right();
  for (int n = 0; n < 10; ++n) {
    a.w.react();
    a.w.draw();
    a.w.draw();
  }
  EXPECT_LE(a.tray.actual_last_xpos(), 125);
  EXPECT_LT(a.w.my_xpos(), 110);
}

TEST(wagon, shows_its_load_and_leaves_no_trail) {
  a_wagon a(100, 40, 1.7, 30, 290);
  a.w.draw();
  const picture empty = a.window.look();
  EXPECT_EQ(empty.at(100, 90), grey);
  EXPECT_EQ(empty.at(95, 115), black) << "left wheel";
  EXPECT_EQ(empty.at(105, 115), black) << "right wheel";
  a.w.load();
  a.w.draw();
  EXPECT_EQ(a.window.look().count(black, 80, 85, 40, 20), 40 * 20);
  a.w.unload();
  for (const bool to_the_right : {true, false}) {
    to_the_right ? a.w.right() : a.w.left();
    for (int n = 0; n < 40; ++n) {
      a.w.draw();
      a.w.react();
      a.w.draw();
    }
  }
  a.w.stop();
  const picture back = a.window.look();
  EXPECT_EQ(back.count(black), empty.count(black));
  EXPECT_EQ(back.count(blue), empty.count(blue));
}
