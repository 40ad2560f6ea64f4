// What mock-ups are made of besides objects: signals, sensors, sources, desk, scene.
#include <gtest/gtest.h>

#include "maquettes_graphiques/mock_up/desk.h"
#include "maquettes_graphiques/mock_up/scene_view.h"
#include "maquettes_graphiques/mock_up/sensors.h"
#include "maquettes_graphiques/mock_up/signal_table.h"
#include "maquettes_graphiques/mock_up/source.h"
#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"
#include "tests/support/operate.h"

namespace {

namespace heard {
enum index : int { go, STOP_2, count };
}
enum class scoped { a, count };
constexpr std::string_view second = signal_names<heard::index>[1], scoped_one = signal_names<scoped>[0];
static_assert(second == "STOP_2" && scoped_one == "a" && signal_names<heard::index>.size() == 2);

// What a sensor says of each value in turn: "0110".
std::string said(const std::vector<double>& values, auto add) {
  double value = 0;
  bool seen = false;
  sensor_set sensors;
  add(sensors, seen, [&] { return value; });
  std::string all;
  for (const double v : values) {
    value = v;
    sensors.read();
    all += seen ? '1' : '0';
  }
  return all;
}

}  // namespace

TEST(sensors, see_what_is_near_or_high_enough_with_hysteresis_if_wanted) {
  const std::vector<double> drive{89, 90.5, 100, 112, 115.5, 112, 108};
  EXPECT_EQ(said(drive, [](auto& s, bool& seen, auto at) { s.proximity(seen, 0, 0, at, 100, 10); }),
            "0110001");
  EXPECT_EQ(said(drive, [](auto& s, bool& seen, auto at) { s.proximity(seen, 0, 0, at, 100, 10, 15); }),
            "0111001");
  EXPECT_EQ(
      said({49, 50, 45, 39.9, 45, 50}, [](auto& s, bool& seen, auto at) { s.level(seen, 0, 0, at, 50, 40); }),
      "011001");
}

TEST(sensors, a_light_gate_shows_what_it_sees) {
  a_scene scene;
  const auto box = scene.part(50, 50, 20, 10);
  sensor_set sensors;
  bool seen = false;
  sensors.light_gate(seen, scene.man, 80, 40, 100);
  const auto dot_when_at = [&](int x) {
    box->absmoveredraw(x, 50);
    sensors.read();
    scene.window.make_current();
    sensors.paint();
    return scene.window.pixel_at(80, 33);
  };
  constexpr rgb yellow{255, 255, 0};
  EXPECT_NE(dot_when_at(60), yellow) << "it only touches";
  EXPECT_EQ(dot_when_at(61), yellow);
  EXPECT_EQ(scene.window.pixel_at(80, 95).g, scene.window.pixel_at(80, 95).r) << "the beam is interrupted";
  EXPECT_NE(dot_when_at(81), yellow);
  EXPECT_EQ(scene.window.pixel_at(80, 95), red);
}

TEST(source, gives_parts_by_lot_by_time_and_by_command_and_a_sink_counts_them) {
  a_scene scene;
  const std::vector<part_kind> kinds{{{-5, -5, 10, 10, FL_RED}},
                                     {{-9, -5, 18, 10, FL_BLUE}, {-2, -9, 4, 4, FL_BLACK}}};
  const auto sequence = [&](unsigned seed) {
    source parts(scene.man, &scene.window, bg, 50, 50, kinds, seed);
    std::string all;
    for (int n = 0; n < 12; ++n) {
      movepart* const part = parts.give();
      all += std::to_string(parts.kind_of(*part));
      parts.destroy(*part);
    }
    return all;
  };
  EXPECT_EQ(sequence(7), sequence(7));
  EXPECT_NE(sequence(7), sequence(8));

  source parts(scene.man, &scene.window, bg, 50, 50, kinds, 7);
  sink bin(parts, 2);
  std::string came;
  movepart* last = nullptr;
  for (int n = 0; n < 8; ++n) {
    movepart* const part = parts.every(3);
    came += part != nullptr ? '1' : '0';
    if (part != nullptr) last = part;
    if (n == 5) last->moveredraw(40, 0);  // until then it is in the way
  }
  EXPECT_EQ(came, "00100010");
  EXPECT_EQ(parts.give(1), nullptr) << "there is one";
  last->moveredraw(80, 0);
  movepart* const big = parts.give(1);
  ASSERT_NE(big, nullptr);
  EXPECT_EQ(big->actual_first_xpos(), 41);
  EXPECT_EQ(big->actual_first_ypos(), 41);
  take(bin, *big);
  EXPECT_EQ(bin.count(0), 0);
  EXPECT_EQ(bin.count(1), 1);
  EXPECT_EQ(scene.man.part_in(30, 30, 40, 40), nullptr) << "it has gone";
  EXPECT_EQ(parts.parts().size(), 2u);
}

TEST(desk, is_read_and_shown_once_a_cycle_and_takes_one_widget_in_each) {
  Fl_Double_Window window(300, 200);
  desk operators(10, 10, 100);
  bool held = false, on = true, lit = false, wanted = false;
  int number = 41, pressed = 0;
  double speed = 1;
  Fl_Button* const button = operators.button("go", held, "caption");
  Fl_Light_Button* const toggle = operators.toggle("on", on);
  Fl_Light_Button* const shown = operators.toggle("seen", wanted, false);
  Fl_Box* const lamp = operators.lamp("lamp", lit, FL_RED);
  Fl_Box* const counter = operators.counter("parcels", number);
  Fl_Roller* const roller = operators.roller("speed", speed, 0, 3, 0.5);
  operators.button("action", [&] { ++pressed; });
  auto* const action = static_cast<Fl_Button*>(window.child(window.children() - 1));
  operators.at(150, 10).quit_and_about();
  EXPECT_GE(window.h(), action->y() + action->h()) << "it grows with the desk";
  window.end();
  window.show();
  const auto centre = [&](const Fl_Widget* w) {
    return point{window.x_root() + w->x() + w->w() / 2, window.y_root() + w->y() + w->h() / 2};
  };
  const auto heeds = [&](auto is_so) {
    return wait_until([&] {
      operators.heed();
      return is_so();
    });
  };
  ASSERT_TRUE(heeds([&] { return is_painted(&window); }));
  hands::move_to(centre(button).x, centre(button).y);
  hands::press();
  EXPECT_TRUE(heeds([&] { return held; })) << "while it is held";
  hands::release();
  EXPECT_TRUE(heeds([&] { return !held; }));
  hands::click(centre(toggle).x, centre(toggle).y);
  EXPECT_TRUE(heeds([&] { return !on; }));
  hands::click(centre(shown).x, centre(shown).y);
  lit = wanted = true;
  number = 42;
  EXPECT_TRUE(heeds([&] { return look_at(window).at(lamp->x() + 5, lamp->y() + 5) == red; }));
  EXPECT_STREQ(counter->label(), "42");
  EXPECT_TRUE(shown->value() && wanted) << "it only shows";
  roller->value(2.5);
  operators.heed();
  EXPECT_EQ(speed, 2.5);

  while (Fl::readqueue() != nullptr) continue;
  for (int n = 0; n < 2; ++n) action->do_callback();
  operators.heed();
  EXPECT_EQ(pressed, 1);
  operators.heed();
  EXPECT_EQ(pressed, 2);
  EXPECT_FALSE(operators.quit_pressed());
  const Fl_Widget* const quit = window.child(window.children() - 1);
  hands::click(centre(quit).x, centre(quit).y);
  EXPECT_TRUE(heeds([&] { return operators.quit_pressed(); }));
}

TEST(scene_view, moves_things_unseen_then_shows_the_scene_without_what_they_leave) {
  Fl_Double_Window window(200, 100);
  movepart_manager registry;
  movepart part(registry, &window, FL_WHITE);
  part.add(20, 40, 20, 20, FL_BLUE);
  scene_view scene(0, 0, 150, 100, [&] {
    part.paint();
    fl_rectf(140, 0, 50, 10, FL_RED);
  });
  window.end();
  window.show();
  ASSERT_TRUE(wait_until([&] {
    Fl::check();
    return is_painted(&window) && look_at(window).at(30, 50) == blue;
  }));
  EXPECT_EQ(look_at(window).at(160, 5), grey) << "nothing is painted beside it";
  const picture before = look_at(window);
  scene.animate([&] { part.moveredraw(50, 0); });
  EXPECT_EQ(look_at(window), before);
  Fl::check();
  EXPECT_EQ(look_at(window).at(80, 50), blue);
  EXPECT_EQ(look_at(window).at(30, 50), grey);
}
