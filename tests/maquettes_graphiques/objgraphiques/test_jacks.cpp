#include <gtest/gtest.h>

#include <type_traits>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

namespace {

constexpr int lbox = 50, hbox = 20, lfinger = 60, hfinger = 6, outspeed = 7, inspeed = 4;

template <typename Jack>
constexpr bool takes_a_travel =
    std::is_constructible_v<Jack, FL_FORM*, int, int, int, int, int, int, double, double, movepart*, double>;

// A jack anchored at (150, 100), its part out of the way until a test puts something there.
template <typename Jack>
struct a_jack : a_scene {
  std::unique_ptr<movepart> load = part(20, 20, 10, 10, FL_GREEN);
  Jack jack = make();

  Jack make() {
    if constexpr (takes_a_travel<Jack>)
      return {&window, 150, 100, lbox, hbox, lfinger, hfinger, outspeed, inspeed, load.get(), 0.0};
    else
      return {&window, 150, 100, lbox, hbox, lfinger, hfinger, outspeed, inspeed, load.get()};
  }
  void step_out() {
    jack.activate_out();
    jack.react();
    jack.draw();
  }
};

struct segment {
  int x1, y1, x2, y2;
};

// What is painted after one step out: body and finger as rectangles (none where the toolkit paints
// nothing), the piston's face from end to end, and how the part was pushed.
struct seen_after_a_step {
  place body, finger;
  segment face;
  int dx, dy;
};

template <typename Jack>
void expect(const seen_after_a_step& row) {
  a_jack<Jack> a;
  a.step_out();
  const picture seen = a.window.look();
  const auto& [body, finger, face, dx, dy] = row;
  if (body.w > 0) {
    EXPECT_EQ(seen.at(body.x, body.y), black) << "border";
    EXPECT_EQ(seen.at(body.x + body.w - 1, body.y + body.h - 1), black);
    EXPECT_EQ(seen.at(body.x + 1, body.y + 1), blue);
  } else {
    EXPECT_EQ(seen.count(blue) + seen.count(black), hbox) << "the face alone";
  }
  EXPECT_EQ(seen.count(black, finger.x, finger.y, finger.w, finger.h), finger.w * finger.h);
  EXPECT_EQ(seen.at(face.x1, face.y1), black);
  EXPECT_EQ(seen.at(face.x2, face.y2), black);
  EXPECT_EQ(a.load->actual_first_xpos(), 20 + dx);
  EXPECT_EQ(a.load->actual_first_ypos(), 20 + dy);
  a.jack.paint();
  EXPECT_TRUE(a.window.look() == seen) << "painting again moves nothing";
  a.jack.draw();
  EXPECT_EQ(a.load->actual_first_xpos(), 20 + 2 * dx) << "every drawing pushes";
}

}  // namespace

TEST(jacks, each_variant_is_painted_and_pushes_as_its_row_of_the_table) {
  const seen_after_a_step rightwards{{150, 100, 50, 20}, {157, 107, 60, 6}, {157, 100, 157, 119}, 7, 0};
  expect<rdjack>(rightwards);
  expect<rsjack>(rightwards);
  expect<ldjack>({{0, 0, 0, 0}, {0, 0, 0, 0}, {143, 100, 143, 119}, -7, 0});
  expect<lsjack>({{100, 100, 50, 20}, {143, 107, 60, 6}, {143, 100, 157, 119}, 7, 0});
  const seen_after_a_step downwards{{150, 100, 20, 50}, {157, 107, 6, 60}, {150, 107, 169, 107}, 0, 7};
  expect<bdjack>(downwards);
  expect<bsjack>(downwards);
  expect<tdjack>({{0, 0, 0, 0}, {0, 0, 0, 0}, {150, 93, 169, 93}, 7, 0});
  expect<tsjack>({{150, 50, 20, 50}, {157, 33, 6, 60}, {150, 93, 169, 93}, 0, -7});
}

TEST(jacks, the_finger_is_centred_by_halves_of_whole_pixels) {
  a_scene scene;
  const auto load = scene.part(20, 20, 10, 10);
  rdjack jack(&scene.window, 50, 100, 50, 20, 60, 5, 1, 1, load.get(), 3.9);
  jack.draw();
  EXPECT_EQ(rows(scene.window.look(), 110, black), (extent{108, 112})) << "100 + 10 - 2";
  EXPECT_EQ(scene.window.pixel_at(53, 101), black) << "the travel is truncated";
  EXPECT_EQ(scene.window.pixel_at(54, 102), blue);
}

TEST(jacks, a_double_acting_one_obeys_one_command_for_one_step) {
  a_jack<rdjack> a;
  a.jack.activate_out();
  a.jack.activate_in();
  EXPECT_EQ(a.jack.is_out_activing() + a.jack.is_in_activing(), 2);
  EXPECT_EQ(a.jack.react(), 0) << "both chambers fed hold the finger";
  EXPECT_EQ(a.jack.is_out_activing() + a.jack.is_in_activing(), 0);
  for (int n = 0; n < 8; ++n) {  // 0, 7, .., 49, 50
    EXPECT_EQ(a.jack.out_stop(), 0);
    a.jack.activate_out();
    EXPECT_EQ(a.jack.react(), 1);
    EXPECT_EQ(a.jack.react(), 0) << "no command, no move";
  }
  EXPECT_EQ(a.jack.out_stop(), 1);
  for (int n = 0; n < 13; ++n) {  // 50, 46, .., 2, 0
    EXPECT_EQ(a.jack.in_stop(), 0);
    a.jack.activate_in();
    a.jack.react();
  }
  EXPECT_EQ(a.jack.in_stop(), 1);
}

TEST(jacks, a_single_acting_one_is_returned_by_its_spring_whatever_the_in_command) {
  a_jack<bsjack> a;
  a.jack.activate_out();
  a.jack.activate_in();
  for (const int in_stop : {0, 0, 1}) {  // 7, 7 - 4, 3 - 4 held at 0
    EXPECT_EQ(a.jack.react(), 1);
    EXPECT_EQ(a.jack.in_stop(), in_stop);
  }
  EXPECT_EQ(a.jack.react(), 0);
}

static_assert(!takes_a_travel<rsjack> && !takes_a_travel<lsjack> && !takes_a_travel<tsjack>,
              "three single-acting ones always start in");

TEST(jacks, a_blocked_part_holds_the_finger) {
  a_jack<rdjack> a;
  const auto wall = a.part(45, 15, 10, 20, FL_RED);  // 15 pixels from the part
  for (int n = 0; n < 5; ++n) a.step_out();
  EXPECT_EQ(a.load->actual_first_xpos(), 34);
  EXPECT_EQ(a.window.pixel_at(150 + 14, 103), black) << "the face stands where the part was stopped";
}

TEST(jacks, erase_nothing_but_where_they_can_undraw_themselves) {
  a_jack<bdjack> a;
  a.jack.change_background(FL_WHITE);
  for (int n = 0; n < 4; ++n) a.step_out();
  a.jack.activate_in();
  a.jack.react();
  a.jack.draw();
  EXPECT_EQ(rows(a.window.look(), 160, black).last, 100 + 28 + lfinger - 1) << "the old finger's end stays";
  a.jack.draw(150, 100);
  EXPECT_EQ(a.window.look().count(white), 0) << "it stands there already";
  a.jack.draw(200, 90);
  const picture moved = a.window.look();
  EXPECT_EQ(columns(moved, 110, white), (extent{150, 150 + hbox})) << "one pixel more";
  EXPECT_EQ(rows(moved, 150, white), (extent{100, 100 + lbox}));
  EXPECT_EQ(moved.at(160, 100 + 24 + lfinger - 1), white);
  EXPECT_EQ(moved.at(160, 100 + 28 + lfinger - 1), black);
  EXPECT_EQ(moved.at(201, 91), blue);
}

TEST(jacks, a_rotary_one_swings_its_part_clockwise_and_stops_where_it_is_blocked) {
  a_scene scene;
  const auto load = scene.part(0, 0, 10, 10, FL_GREEN);
  hrdjack jack(&scene.window, 150, 100, 12, 30, 60, 10, 5, load.get(), 0.0);
  const auto turn = [&jack](int steps) {
    for (int n = 0; n < steps; ++n) {
      jack.activate_out();
      jack.react();
      jack.draw();
    }
  };
  jack.draw();
  EXPECT_EQ(load->actual_first_xpos(), 210) << "the base angle has no effect";
  EXPECT_EQ(columns(scene.window.look(), 106, blue), (extent{150, 161})) << "right of and below the axle";
  EXPECT_EQ(columns(scene.window.look(), 100, black).last, 209);
  turn(9);
  EXPECT_EQ(load->actual_first_ypos(), 159) << "just short of 160: the angle is not quite a right one";
  EXPECT_EQ(scene.window.pixel_at(200, 100), grey) << "the old arm is gone";
  EXPECT_EQ(scene.window.pixel_at(150, 140), black);
  const auto wall = scene.part(80, 60, 40, 30, FL_RED);
  turn(40);
  EXPECT_GT(load->actual_first_ypos(), 89);
  EXPECT_EQ(jack.out_stop(), 0);
  wall->absmoveredraw(0, 180);
  turn(36);
  EXPECT_EQ(jack.out_stop(), 1);
  EXPECT_EQ(load->actual_first_xpos(), 209) << "a turn does not quite close";
}
