#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "bibliocpp/formspp.h"
#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

namespace {

// With its scene's colours: blue on white.
template <typename Fixture>
Fixture coloured(Fixture fixture) {
  fixture.change_background(FL_WHITE);
  fixture.change_foreground(FL_BLUE);
  return fixture;
}

}  // namespace

TEST(cuve, fills_to_the_brim_and_tells_its_level) {
  a_window window;
  cuve tank(&window, 50, 150, 60, 100, 20, 80, 20, 2.0, 0);
  struct level {
    double in, out;
    int steps, reacts;
    double hpos;
    std::vector<int> empty_full_overfull;
  };
  for (const level& l : std::vector<level>{{0, 0, 1, 0, 20, {1, 0, 0}},    // at the lower mark
                                           {3, 2, 1, 1, 20.5, {0, 0, 0}},  // by the flow over convspeed
                                           {5, 5, 9, 0, 20.5, {0, 0, 0}},
                                           {0, 1, 41, 1, 0, {1, 0, 0}},  // no further than dry
                                           {2, 0, 79, 1, 79, {0, 0, 0}},
                                           {2, 0, 1, 1, 80, {0, 1, 0}},
                                           {2, 0, 40, 1, 99, {0, 1, 1}}}) {
    tank.change_in(l.in);
    tank.change_out(l.out);
    int changing = -1;
    for (int n = 0; n < l.steps; ++n) changing = tank.react();
    EXPECT_EQ(changing, l.reacts) << l.hpos;
    EXPECT_DOUBLE_EQ(tank.my_hpos(), l.hpos);
    EXPECT_EQ((std::vector{tank.empty(), tank.full(), tank.overfull()}), l.empty_full_overfull) << l.hpos;
  }
}

TEST(cuve, shows_level_and_walls_the_flag_notwithstanding) {
  a_window window;
  for (const int opencuve : {0, 1}) {
    auto tank = coloured(cuve(&window, 50, 150, 60, 100, 20, 80, 30, 1.0, opencuve));
    tank.draw();
    const picture seen = window.look();
    EXPECT_EQ(rows(seen, 80, white).last, 119) << "the empty part";
    EXPECT_EQ(rows(seen, 80, blue).first, 120);
    EXPECT_EQ(seen.at(80, 50) == black, opencuve == 1) << "a lid on the tank that is called open";
    EXPECT_EQ(seen.at(50, 100), black);
    EXPECT_EQ(seen.at(opencuve ? 109 : 110, 100), black);
    EXPECT_EQ(seen.at(80, opencuve ? 149 : 150), black);
  }
}

TEST(vanne, shows_its_gate_along_or_across_the_pipe) {
  a_window window;
  for (const int horizontal : {0, 1})
    for (const int open : {0, 1}) {
      fl_rectf(0, 0, 300, 200, bg);
      auto valve = coloured(vanne(&window, 100, 100, 80, 8, 30, open, horizontal));
      const auto draws_bar = [&](bool upright) {
        valve.draw();
        EXPECT_EQ(window.look().count(blue, 96, 85, 8, 30) == 8 * 30, upright);
        EXPECT_EQ(window.look().count(blue, 85, 96, 30, 8) == 8 * 30, !upright);
      };
      draws_bar(horizontal != open);
      EXPECT_EQ(window.pixel_at(86, 86), white) << "a new valve clears its gate";
      EXPECT_EQ(window.pixel_at(horizontal ? 60 : 96, horizontal ? 96 : 60), blue) << "pipe";
      EXPECT_EQ(window.pixel_at(110, 89), blue) << "rim";
      open ? valve.close() : valve.open();
      EXPECT_EQ(valve.is_close(), open);
      draws_bar(horizontal == open);
      fl_rectf(105, 86, 3, 3, FL_RED);
      valve.draw();
      EXPECT_EQ(window.pixel_at(106, 87), red) << "unchanged, it clears nothing";
    }
}

TEST(melangeur, erases_its_blades_only_while_it_turns) {
  a_window window;
  auto mixer = coloured(melangeur(&window, 100, 100, 60));
  fl_rectf(0, 0, 300, 200, FL_WHITE);
  const auto turn = [&](double speed) {
    mixer.change_speed(speed);
    mixer.react();
    mixer.draw();
  };
  turn(0.0005);
  EXPECT_EQ(window.pixel_at(90, 111), blue) << "40 radians, less six turns: 131.8 degrees";
  EXPECT_EQ(window.pixel_at(130, 100), blue) << "rim";
  turn(0.4);
  EXPECT_EQ(window.pixel_at(90, 111), white);
  EXPECT_EQ(window.pixel_at(82, 108), blue) << "154.7 degrees";
  fl_line(100, 100, 100 - 20, 100 + 22, FL_BLUE);
  turn(0.0005);
  EXPECT_DOUBLE_EQ(mixer.my_angle(), 40.4) << "that is at rest";
  EXPECT_EQ(window.pixel_at(90, 111), blue) << "where it erases nothing";
}

TEST(resistor, glows_while_it_heats) {
  a_window window;
  auto coil = coloured(resistor(&window, 150, 100, 120, 60));
  coil.draw();
  const picture cold = window.look();
  for (const auto& [x, y] : std::vector<std::pair<int, int>>{
           {160, 100}, {120, 90}, {120, 110}, {90, 80}, {90, 120}, {150, 70}, {205, 70}, {205, 130}})
    EXPECT_EQ(cold.at(x, y), blue) << x << ", " << y;
  EXPECT_EQ(cold.at(150, 100), grey) << "a hairpin, open between its runs";
  coil.heat();
  coil.draw();
  EXPECT_EQ(window.look().count(red), cold.count(blue));
  fl_line(10, 10, 30, 10, FL_BLACK);
  EXPECT_EQ(rows(window.look(), 20, black), (extent{10, 10})) << "lines are thin again";
}

TEST(trappe, a_horizontal_flap_leaves_no_trace_and_a_vertical_one_does) {
  a_window window;
  for (const bool horizontal : {true, false}) {
    fl_rectf(0, 0, 300, 200, FL_WHITE);
    auto flap = coloured(trappe(&window, 100, 100, 50, M_PI / 6, 0, horizontal));
    const auto shows = [&](const rgb& near_the_open_end, const rgb& near_the_closed_end) {
      flap.draw();
      EXPECT_EQ(horizontal ? window.pixel_at(143, 76) : window.pixel_at(124, 57), near_the_open_end);
      EXPECT_EQ(horizontal ? window.pixel_at(145, 100) : window.pixel_at(100, 145), near_the_closed_end);
    };
    shows(white, blue);
    flap.open();
    shows(blue, horizontal ? white : blue);
    flap.close();
    shows(horizontal ? white : blue, blue);
  }
  auto open_when_new = coloured(trappe(&window, 100, 100, 50, M_PI / 2, 1, 1));
  fl_rectf(0, 0, 300, 200, bg);
  open_when_new.draw();
  EXPECT_EQ(columns(window.look(), 100, white), (extent{101, 150})) << "the state it is not in";
  EXPECT_EQ(rows(window.look(), 100, blue), (extent{50, 100}));
}
