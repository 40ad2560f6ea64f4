#include <gtest/gtest.h>

#include <type_traits>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

namespace {

template <typename Jack>
constexpr bool takes_a_travel =
    std::is_constructible_v<Jack, FL_FORM*, int, int, int, int, int, int, double, double, movepart*, double>;
static_assert(!takes_a_travel<rsjack> && !takes_a_travel<lsjack> && !takes_a_travel<tsjack>,
              "three single-acting ones always start in");

template <typename Jack>
int steps_out(Jack& jack, int number) {
  int moved = 0;
  for (int n = 0; n < number; ++n) {
    jack.activate_out();
    moved = jack.react();
    jack.draw();
  }
  return moved;
}

// A jack anchored at (150, 100), body 50 * 20, finger 60 * 5, 7.9 pixels out and 4 in a step; its part is
// out of the way until a test puts something there.
template <typename Jack>
struct a_jack : a_scene {
  std::unique_ptr<movepart> load = part(20, 20, 10, 10, FL_GREEN);
  Jack jack = make();

  Jack make() {
    if constexpr (takes_a_travel<Jack>)
      return {&window, 150, 100, 50, 20, 60, 5, 7.9, 4, load.get(), 0.0};
    else
      return {&window, 150, 100, 50, 20, 60, 5, 7.9, 4, load.get()};
  }
  int step_out() { return steps_out(jack, 1); }
  std::string painted() {
    return calls_here([this] { jack.paint(); });
  }
};

// What one step out draws: the push of the part and the jack, then the part once more.
template <typename Jack>
void expect(const std::string& strip, const std::string& part, const std::string& jack) {
  a_jack<Jack> a;
  EXPECT_EQ(a.calls([&] { a.step_out(); }), strip + "; " + part + "; " + jack + "; " + part);
  EXPECT_EQ(a.painted(), jack);
  EXPECT_TRUE(a.calls([&] { a.jack.draw(); }).starts_with("grey")) << "every drawing pushes";
}

template <typename Jack>
void expect_to_undraw_itself() {
  a_jack<Jack> a;
  a.jack.change_background(FL_WHITE);
  a.step_out();
  const std::string erased = "white 150 100 21 51; white 158 107 5 60";  // one pixel more of the body
  EXPECT_EQ(a.calls([&] { a.jack.undraw(); }), erased);
  EXPECT_EQ(a.calls([&] { a.jack.draw(150, 100); }).find("white"), std::string::npos) << "it stands there";
  EXPECT_TRUE(a.calls([&] { a.jack.draw(150, 90); }).starts_with(erased));
  a.jack.draw(200, 90);
  EXPECT_TRUE(a.painted().starts_with("blue 200 90 20 50;"));
}

}  // namespace

TEST(jacks, each_variant_is_painted_and_pushes_as_its_row_of_the_table) {
  const std::string right = "grey 19 20 9 10", at_right = "green 28 20 10 10";
  const std::string rightwards =
      "blue 150 100 50 20; black rect 150 100 50 20; "
      "black 157 108 60 5; black rect 157 108 60 5; black line 157 100 157 119";
  expect<rdjack>(right, at_right, rightwards);
  expect<rsjack>(right, at_right, rightwards);
  expect<ldjack>("grey 22 20 9 10", "green 12 20 10 10",
                 "blue 150 100 -50 20; black rect 150 100 -50 20; "
                 "black 143 108 -60 5; black rect 143 108 -60 5; black line 143 100 143 119");
  expect<lsjack>(right, at_right,
                 "blue 100 100 50 20; black rect 100 100 50 20; "
                 "black 143 108 60 5; black rect 143 108 60 5; black line 143 100 157 119");
  const std::string downwards =
      "blue 150 100 20 50; black rect 150 100 20 50; "
      "black 158 107 5 60; black rect 158 107 5 60; black line 150 107 169 107";
  expect<bdjack>("grey 20 20 10 9", "green 20 28 10 10", downwards);
  expect<bsjack>("grey 20 20 10 9", "green 20 28 10 10", downwards);
  expect<tdjack>(right, at_right,
                 "blue 150 100 20 -50; black rect 150 100 20 -50; "
                 "black 158 93 5 -60; black rect 158 93 5 -60; black line 150 93 169 93");
  expect<tsjack>("grey 20 22 10 7", "green 20 12 10 10",
                 "blue 150 50 20 50; black rect 150 50 20 50; "
                 "black 158 33 5 60; black rect 158 33 5 60; black line 150 93 169 93");
}

TEST(jacks, a_double_acting_one_obeys_one_command_for_one_step) {
  a_jack<rdjack> a;
  a.jack.change_speeds(7, 4);
  for (int n = 0; n < 8; ++n) {  // 0, 7, .., 49, 50
    a.jack.activate_out();
    a.jack.activate_in();
    EXPECT_EQ(a.jack.is_out_activing() + a.jack.is_in_activing(), 2);
    EXPECT_EQ(a.jack.react(), 0) << "both chambers fed hold the finger wherever it stands";
    EXPECT_EQ(a.jack.is_out_activing() + a.jack.is_in_activing(), 0);
    EXPECT_EQ(a.jack.out_stop(), 0);
    EXPECT_EQ(a.step_out(), 1);
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
  for (const int in_stop : {0, 0, 1}) {  // 7.9, 7.9 - 4, 3.9 - 4 held at 0
    EXPECT_EQ(a.jack.react(), 1);
    EXPECT_EQ(a.jack.in_stop(), in_stop);
  }
  EXPECT_EQ(a.jack.react(), 0);
  for (int n = 0; n < 7; ++n) EXPECT_EQ(a.step_out() + a.jack.out_stop(), n < 6 ? 1 : 2);  // 47.4, then 50
}

TEST(jacks, a_blocked_part_holds_the_finger) {
  a_jack<rdjack> a;
  const auto wall = a.part(44, 15, 10, 20, FL_RED);  // 14 pixels from the part
  steps_out(a.jack, 5);
  EXPECT_EQ(a.load->actual_first_xpos(), 27);
  EXPECT_TRUE(a.painted().ends_with("black line 157 100 157 119")) << a.painted();
}

TEST(jacks, two_can_undraw_themselves_and_move) {
  expect_to_undraw_itself<bdjack>();
  expect_to_undraw_itself<bsjack>();
}

TEST(jacks, a_rotary_one_swings_its_part_clockwise_and_stops_where_it_is_blocked) {
  a_scene scene;
  const auto load = scene.part(0, 0, 10, 10, FL_GREEN);
  hrdjack jack(&scene.window, 150, 100, 12, 30, 60, 10, 5, load.get(), 0.0);
  jack.draw();
  const std::string hub_and_arm = "blue pie 150 100 12 12 0 360; black line 150 100 209 110";
  EXPECT_EQ(scene.calls([&] { steps_out(jack, 1); }),
            "grey 210 100 10 10; green 209 110 10 10; grey line 150 100 210 100; " + hub_and_arm +
                "; green 209 110 10 10")
      << "the base angle has no effect";
  EXPECT_EQ(scene.calls_here([&] { jack.paint(); }), hub_and_arm);
  steps_out(jack, 8);
  EXPECT_EQ(load->actual_first_ypos(), 159) << "just short of 160: the angle is not quite a right one";
  const auto wall = scene.part(80, 60, 40, 30, FL_RED);
  steps_out(jack, 40);
  EXPECT_GT(load->actual_first_ypos(), 89);
  EXPECT_EQ(jack.out_stop(), 0);
  wall->absmoveredraw(0, 180);
  steps_out(jack, 36);
  EXPECT_EQ(jack.out_stop(), 1);
  EXPECT_EQ(load->actual_first_xpos(), 209) << "a turn does not quite close";
}
