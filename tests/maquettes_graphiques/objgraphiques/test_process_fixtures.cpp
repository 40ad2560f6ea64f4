#include <gtest/gtest.h>

#include <cmath>

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
  cuve tank(nullptr, 50, 150, 60, 100, 20, 80, 20, 2.0, 0);
  // From the lower mark, by the flow over convspeed, no further than dry or the brim.
  for (const auto& [in, out, steps, reacts, hpos, empty, full, overfull] :
       {std::tuple{0, 0, 1, 0, 20.0, 1, 0, 0},
        {3, 2, 1, 1, 20.5, 0, 0, 0},
        {5, 5, 9, 0, 20.5, 0, 0, 0},
        {0, 1, 41, 1, 0, 1, 0, 0},
        {2, 0, 79, 1, 79, 0, 0, 0},
        {2, 0, 1, 1, 80, 0, 1, 0},
        {2, 0, 40, 1, 99, 0, 1, 1}}) {
    tank.change_in(in);
    tank.change_out(out);
    int changing = -1;
    for (int n = 0; n < steps; ++n) changing = tank.react();
    EXPECT_EQ(std::tuple(changing, tank.my_hpos(), tank.empty(), tank.full(), tank.overfull()),
              std::tuple(reacts, hpos, empty, full, overfull));
  }
}

TEST(cuve, shows_its_level_and_a_lid_when_it_is_called_open) {
  a_scene scene;
  for (const int open : {0, 1}) {
    auto tank = coloured(cuve(&scene.window, 50, 150, 60, 100, 20, 80, 30, 2.0, open));
    tank.change_out(1);
    tank.react();  // 29.5
    EXPECT_EQ(scene.calls([&] { tank.draw(); }),
              std::string("white 50 50 60 71; blue 50 121 60 29; black ") +
                  (open ? "rect 50 50 60 100"
                        : "line 50 50 50 150; black line 50 150 110 150; black line 110 50 110 150"));
  }
}

TEST(vanne, shows_its_gate_along_or_across_the_pipe) {
  a_scene scene;
  for (const int way : {0, 1, 2, 3}) {
    const bool horizontal = way / 2, open = way % 2;
    auto valve = coloured(vanne(&scene.window, 100, 100, 81, 9, 31, open, horizontal));
    const auto draws = [&](bool upright) {
      const std::string painted =
          std::string(horizontal ? "blue line 60 96 140 96; blue line 60 104 140 104; "
                                 : "blue line 96 60 96 140; blue line 104 60 104 140; ") +
          (upright ? "blue 96 85 9 31" : "blue 85 96 31 9") +
          "; blue begin_line; blue circle 100 100 15; blue end_line";
      EXPECT_EQ(scene.calls_here([&] { valve.draw(); }), "white 85 85 31 31; " + painted);
      EXPECT_EQ(scene.calls_here([&] { valve.draw(); }), painted) << "unchanged, it clears nothing";
    };
    draws(horizontal != open);
    open ? valve.close() : valve.open();
    EXPECT_EQ(valve.is_close(), open);
    draws(horizontal == open);
  }
}

TEST(melangeur, erases_its_blades_only_while_it_turns) {
  a_scene scene;
  auto mixer = coloured(melangeur(&scene.window, 100, 100, 60));
  const std::string turned = "blue line 73 112 127 88; blue line 88 73 112 127; ";
  for (const auto& [speed, calls] : {
           std::pair{0.0005,
                     std::string("blue line 80 122 120 78; blue line 78 80 122 120; ")},  // 40 radians
           {0.4, "white line 80 122 120 78; white line 78 80 122 120; " + turned},
           {-0.0005, turned},
       }) {
    mixer.change_speed(speed);
    mixer.react();
    EXPECT_EQ(scene.calls_here([&] { mixer.draw(); }),
              calls + "blue begin_line; blue circle 100 100 30; blue end_line");
  }
}

TEST(resistor, glows_while_it_heats_and_leaves_lines_thin) {
  a_scene scene;
  auto coil = coloured(resistor(&scene.window, 150, 100, 121, 65));
  EXPECT_NE(scene.calls_here([&] { coil.draw(); }).find("blue arc 140 90 21 21 -90 90;"), std::string::npos);
  coil.heat();
  EXPECT_EQ(
      scene.calls_here([&] { coil.draw(); }),
      "black line_style 0 5; red arc 140 90 21 21 -90 90; red line 150 90 100 90; red line 150 110 100 110; "
      "red arc 90 68 21 21 90 270; red arc 90 110 21 21 90 270; red line 100 68 210 68; "
      "red line 100 132 210 132; red line_style 0 0");
}

TEST(trappe, a_horizontal_flap_leaves_no_trace_and_a_vertical_one_does) {
  a_scene scene;
  for (const int way : {0, 1, 2, 3}) {
    const bool horizontal = way / 2, open_when_new = way % 2;
    auto flap = coloured(trappe(&scene.window, 100, 100, 50, M_PI / 6, open_when_new, horizontal));
    const auto draws = [&](bool open) {
      const auto line = [&](bool as_open) -> std::string {
        if (horizontal) return as_open ? " line 100 100 143 76" : " line 100 100 150 100";
        return as_open ? " line 100 100 124 57" : " line 100 100 100 150";
      };
      EXPECT_EQ(scene.calls_here([&] { flap.draw(); }),
                "white" + line(open != horizontal) + "; blue" + line(open));
      EXPECT_EQ(scene.calls_here([&] { flap.draw(); }), "blue" + line(open)) << "unchanged";
    };
    draws(open_when_new);
    open_when_new ? flap.close() : flap.open();
    draws(!open_when_new);
  }
}
