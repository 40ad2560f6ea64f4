#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

TEST(movepart, erases_as_scenes_rely_on_and_adds_up_fractions_of_a_pixel) {
  a_scene scene;
  for (const auto& [dx, dy, calls] : {
           std::tuple{0.0, 0.0, ""},
           {0.5, 0, "grey 99 100 2 10; blue 101 100 20 10"},   // halves away from zero
           {2.6, 0, "grey 99 100 4 10; blue 103 100 20 10"},   // one pixel too many behind
           {-2.6, 0, "grey 117 100 4 10; blue 97 100 20 10"},  // and one in front
           {0, 2.6, "grey 100 100 20 4; blue 100 103 20 10"},
           {0, -2.6, "grey 100 107 20 2; blue 100 97 20 10"},  // truncated: a row stays
           {0, -0.9, "grey 100 109 20 0; blue 100 99 20 10"},
           {2.6, 3, "grey 99 100 4 10; blue 103 103 20 10; grey 100 100 20 4; blue 103 103 20 10"},
           {2.6, -3, "grey 99 100 4 10; blue 103 97 20 10; grey 103 107 20 3; blue 103 97 20 10"},
           {-2.6, 3, "grey 117 103 4 10; blue 97 103 20 10; grey 100 100 20 4; blue 97 103 20 10"},
           {-2.6, -3, "grey 117 97 4 10; blue 97 97 20 10; grey 97 107 20 3; blue 97 97 20 10"},
       }) {
    const auto part = scene.part(100, 100, 20, 10);
    EXPECT_EQ(scene.calls([&, x = dx, y = dy] { part->moveredraw(x, y); }), calls) << dx << ", " << dy;
  }
  const auto part = scene.part(50, 60, 20, 10);
  for (const int x : {50, 51, 51})
    EXPECT_TRUE(
        scene.calls([&] { part->moveredraw(0.4, 0); }).ends_with("blue " + std::to_string(x) + " 60 20 10"));
  EXPECT_DOUBLE_EQ(part->actual_precision_first_xpos(), 51.2);
}

TEST(movepart, a_refused_move_changes_nothing) {
  a_scene scene;
  const auto part = scene.part(50, 50, 20, 10);
  const auto wall = scene.part(72, 40, 10, 40), load = scene.part(50, 30, 10, 5, FL_GREEN);
  part->link(load.get());
  EXPECT_EQ(scene.calls([&] { EXPECT_EQ(part->moveredraw(3, 0), 1); }),
            "grey 49 30 4 5; green 53 30 10 5; grey 60 30 4 5; green 50 30 10 5")
      << "the carried part has moved first and comes back";
  EXPECT_EQ(part->moveredraw(2, 0), 0) << "boxes may touch";
  const auto in_the_load_s_way = scene.part(63, 20, 10, 20);
  EXPECT_EQ(scene.calls([&] { EXPECT_EQ(part->moveredraw(2, -10), 1); }), "")
      << "a blocked load stops its carrier";
  part->unlink();
  EXPECT_EQ(load->is_linked(), 0);
  EXPECT_EQ(part->part_have_link(), nullptr);
  EXPECT_EQ(scene.calls([&] { part->moveredraw(0, 2); }), "grey 52 50 20 3; blue 52 52 20 10");
}

TEST(movepart, moves_to_a_place_by_its_smallest_offsets_and_leaves_its_load) {
  a_scene scene;
  const auto part = scene.part(5, 3, 20, 10);
  part->add(10, 30, 5, 5, FL_RED);
  const auto load = scene.part(5, 150, 5, 5, FL_GREEN);
  part->link(load.get());
  const auto wall = scene.part(200, 100, 20, 20);
  const std::string there = "blue 100 60 20 10; red 105 87 5 5";
  EXPECT_EQ(scene.calls([&] { EXPECT_EQ(part->absmoveredraw(100.9, 60.9), 0); }),
            "grey 5 3 20 10; grey 10 30 5 5; " + there)
      << "truncated, not rounded";
  EXPECT_EQ(part->actual_precision_first_xpos(), 100.9);
  EXPECT_EQ(part->actual_last_xpos(), 120);
  EXPECT_EQ(part->actual_last_ypos(), 60 + 27 + 5);
  EXPECT_EQ(scene.calls([&] { EXPECT_EQ(part->absmoveredraw(195, 100), 1); }),
            "grey 100 60 20 10; grey 105 87 5 5; " + there);
  part->unlink();
}

TEST(movepart, a_chain_is_drawn_each_part_in_its_own_window_and_erased_when_its_carrier_is_destroyed) {
  a_scene scene;
  auto carrier = scene.part(50, 50, 20, 10);
  auto load = std::make_unique<movepart>(scene.man, &scene.elsewhere, FL_WHITE);
  load->add(50, 30, 10, 10, FL_RED);
  load->link(scene.part(50, 20, 10, 5, FL_GREEN).release());
  carrier->link(load.release());
  EXPECT_EQ(scene.calls([&] { carrier->draw(); }),
            "blue 50 50 20 10; elsewhere red 50 30 10 10; green 50 20 10 5");
  EXPECT_EQ(scene.calls_here([&] { carrier->paint(); }),
            "blue 50 50 20 10; red 50 30 10 10; green 50 20 10 5");
  const std::string load_erased = "; elsewhere white 50 30 10 10; grey 50 20 10 5";
  EXPECT_EQ(scene.calls([&] { carrier.reset(); }),
            "grey 50 50 20 10" + load_erased + load_erased + "; grey 50 20 10 5");
  for (const int y : {55, 35, 22})
    EXPECT_EQ(scene.man.busy_position(55, y), 0) << "all have left the registry";
  const auto outlives_it = scene.part(50, 50, 20, 10);
  scene.window.hide();
}

TEST(movepart, tells_vertical_gaps_dumps_itself_and_reports_an_empty_part) {
  a_scene scene;
  for (const auto& [first, second, gap] :
       {std::tuple{10.0, 20.0, 0}, {10, 30.7, 10}, {30.7, 10, 10}, {-50, 30.7, 30}})
    EXPECT_EQ(vertical_part_dist(*scene.part(0, first, 10, 10), *scene.part(50, second, 10, 10)), gap);
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
  for (const auto& [offset, size, move, refused] : {std::tuple{0.7, 5, 9.9, 1},
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
      EXPECT_EQ(part->moveredraw(across ? move : 0, across ? 0 : move), refused) << offset << ' ' << move;
    }
}

TEST(movepart_manager,
     draws_in_order_passes_over_null_entries_and_finds_a_part_in_its_own_way_by_its_second) {
  a_scene scene;
  scene.man.addpart(nullptr);
  const auto first = scene.part(50, 50, 20, 10, FL_RED), second = scene.part(50, 80, 20, 10);
  for (const std::string& calls :
       {scene.calls([&] { scene.man.draw(); }), scene.calls_here([&] { scene.man.paint(); })})
    EXPECT_EQ(calls, "red 50 50 20 10; blue 50 80 20 10");
  scene.man.parts_fall();
  EXPECT_EQ(first->actual_first_ypos(), 51);
  EXPECT_EQ(scene.man.busy_position(100, 100), 0);
  scene.man.addpart(second.get());
  EXPECT_EQ(second->moveredraw(1, 0), 1);
  scene.man.suppart(second.get());
  EXPECT_EQ(second->moveredraw(1, 0), 0) << "of two entries in a row the second stays";
}

TEST(movepart_manager, counts_the_pixels_just_past_a_box_as_busy) {
  a_scene scene;
  const auto part = scene.part(50.7, 50.7, 20, 10);
  for (const auto& [x, y, busy] : {std::tuple{50, 50, 1}, {70, 60, 1}, {71, 60, 0}, {70, 61, 0}, {49, 55, 0}})
    EXPECT_EQ(scene.man.busy_position(x, y), busy) << x << ", " << y;
  EXPECT_EQ(scene.calls_here([&] { EXPECT_EQ(scene.man.busy_position_debug(150, 100), 0); }),
            "black line 100 100 200 100; black line 150 50 150 150");
}

TEST(movepart_manager, lets_free_parts_fall_and_leaves_the_carried_to_their_carriers) {
  a_scene scene;
  const auto upper = scene.part(50, 50, 20, 10), lower = scene.part(50, 60, 20, 10);
  const auto carrier = scene.part(100, 60, 20, 5), load = scene.part(150, 50, 20, 10);
  carrier->link(load.get());
  for (int n = 0; n < 5; ++n) scene.man.parts_fall();
  EXPECT_EQ(lower->actual_first_ypos(), 65);
  EXPECT_EQ(upper->actual_first_ypos(), 54) << "the first to fall waits for what it rests on";
  EXPECT_EQ(load->actual_first_ypos(), 55);
  carrier->unlink();
  scene.man.parts_fall();
  EXPECT_EQ(load->actual_first_ypos(), 56) << "let go, it falls by itself";
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
  a_wagon(int x, int l, double speed) : w(&window, x, 100, l, 21, speed, 30, 300, &tray, bg) {
    tray.add(x - 20, 105, 40, 5, FL_BLUE);
  }
  void cycles(int number) {
    for (int n = 0; n < number; ++n) {
      w.draw();
      w.react();
      w.draw();
    }
  }
};

}  // namespace

TEST(wagon, keeps_its_speed_while_it_moves_sets_off_to_the_left_at_rest_and_stops_exactly_at_both_ends) {
  a_wagon a(275, 41, 2);
  const auto reacts = [&a](int moved, int xpos) {
    EXPECT_EQ(a.w.react(), moved);
    EXPECT_EQ(a.w.my_xpos(), xpos);
  };
  a.w.change_speed_ref(3);
  reacts(1, 272);  // set off
  a.w.unreact();
  a.w.change_speed_ref(7.5);
  reacts(1, 272);  // as fast as before
  a.w.right();
  reacts(1, 280);  // 279.5 rounds away from zero
  EXPECT_EQ(a.w.right_stop(), 0);
  reacts(1, 280);  // half the length is 20
  EXPECT_EQ(a.w.right_stop(), 1);
  reacts(0, 280);
  a.w.left();
  for (int n = 0; n < 100; ++n) a.w.react();
  EXPECT_EQ(a.w.left_stop() * 10 + a.w.right_stop(), 10);
  reacts(0, 50);
}

TEST(wagon, draws_its_load_half_a_step_on_then_band_wheels_corners_and_body) {
  a_wagon a(100, 42, 2.5);
  const auto draws = [&a](const std::string& calls) { EXPECT_EQ(a.calls([&a] { a.w.draw(); }), calls); };
  const auto wheels = [](const std::string& colour, bool at_100) {
    return colour + (at_100 ? " pie 100 110 10 10 0 360; " : " pie 102 110 10 10 0 360; ") + colour +
           (at_100 ? " pie 89 110 10 10 0 360; " : " pie 91 110 10 10 0 360; ");
  };
  draws(wheels("grey", true) + wheels("black", true) + "grey 79 85 42 20; blue 80 105 40 5");
  a.w.load();
  a.w.right();
  a.w.react();
  const std::string loaded = wheels("black", false) + "grey 76 85 5 5; grey 123 85 5 5; black 81 85 42 20";
  const std::string on = "grey 79 79 2 42; " + wheels("grey", true) + loaded;
  draws("grey 79 105 2 5; blue 81 105 40 5; " + on + "; blue 81 105 40 5");
  draws("grey 80 105 2 5; blue 83 105 40 5; " + on + "; blue 83 105 40 5");
  EXPECT_EQ(a.calls_here([&a] { a.w.paint(); }), loaded);
  a.w.unload();
  a.w.left();
  a.w.react();
  a.w.change_background(FL_WHITE);
  draws("grey 121 105 2 5; blue 81 105 40 5; white 121 79 2 42; " + wheels("white", false) +
        wheels("black", true) + "white 79 85 42 20; blue 81 105 40 5");
}

TEST(wagon, is_followed_by_its_load_half_a_step_late_and_stopped_by_what_is_in_its_load_s_way) {
  a_wagon a(100, 40, 4);
  const auto wall = a.part(127, 80, 5, 50, FL_RED);
  a.w.load();
  a.w.right();
  a.cycles(1);
  const picture seen = a.window.look();
  EXPECT_EQ(seen.count(black, 84, 85, 40, 20), 40 * 20) << "the wagon at 104";
  EXPECT_EQ(seen.count(blue, 82, 105, 40, 5), 40 * 5) << "its tray at 102";
  a.cycles(10);
  EXPECT_LT(a.w.my_xpos(), 110);
}

TEST(wagon, leaves_no_trail) {
  a_wagon a(100, 40, 1.7);
  a.w.draw();
  const picture empty = a.window.look();
  for (const auto command : {&wagon::right, &wagon::left, &wagon::stop}) {
    (a.w.*command)();
    a.cycles(40);
  }
  for (const rgb& colour : {black, blue}) EXPECT_EQ(a.window.look().count(colour), empty.count(colour));
}
