#include <gtest/gtest.h>

#include "bibliocpp/formspp/vision_sheet.h"
#include "bibliocpp/formspp/wait_form.h"
#include "tests/support/a_window.h"

#include <FL/fl_draw.H>

#include <functional>
#include <tuple>

namespace {

using operation = std::function<void(OFL_vision_sheet&)>;

// Each crosses the line x = 100.
const operation operations[] = {
    [](auto& s) { s.ofl_line(80, 100, 180, 100, FL_BLUE); },
    [](auto& s) { s.ofl_dash_line(60, 100, 180, 100, FL_BLUE); },
    [](auto& s) { s.ofl_break_line(85, 100, 135, 100, FL_BLUE); },
    [](auto& s) { s.ofl_rect(80, 60, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_rectf(80, 60, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_rectbound(80, 60, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_circ(80, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_circf(80, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_circbound(80, 60, 60, FL_BLUE); },
    [](auto& s) { s.ofl_arrowbound(90, 70, 50, 70, FL_BLUE); },
    [](auto& s) { s.ofl_drw_arrow_line(180, 100, 80, 100, FL_BLUE, 40, 3); },
    [](auto& s) { s.ofl_drw_text(FL_ALIGN_CENTER, 50, 60, 100, 60, FL_BLUE, 40, FL_TIMES, "MMM"); },
    [](auto& s) { s.ofl_drw_String(FL_ALIGN_CENTER, 50, 60, 100, 60, FL_BLUE, FL_TIMES, 40, "MMM"); }};

picture drawn(a_window& window, const operation& draw, OFL_vision_sheet sheet = {}) {
  fl_rectf(0, 0, 300, 200, FL_BACKGROUND_COLOR);
  draw(sheet);
  return window.look();
}

}  // namespace

TEST(vision_sheet, clips_every_drawing_when_it_has_an_area) {
  a_window window;
  OFL_vision_sheet sheet, no_height, negative;
  sheet.define(10, 10, 1, 1, FL_RED);
  sheet.resize(100, 0, 200, 200);
  no_height.resize(100, 50, 50, 0);
  negative.resize(100, 50, -50, 50);
  for (const operation& draw : operations) {
    SCOPED_TRACE(&draw - operations);
    const picture clipped = drawn(window, draw, sheet), whole = drawn(window, draw);
    EXPECT_EQ(clipped.count(grey, 0, 0, 100, 200), 100 * 200);
    EXPECT_LT(whole.count(grey, 0, 0, 100, 200), 100 * 200);
    EXPECT_GT(clipped.count(blue), 0) << "in the colour of the call";
    EXPECT_TRUE(clipped.part(100, 0, 200, 200) == whole.part(100, 0, 200, 200));
    EXPECT_TRUE(drawn(window, draw, no_height) == whole && drawn(window, draw, negative) == whole);
  }
  EXPECT_TRUE(drawn(window, operations[11]) == drawn(window, operations[12])) << "both texts draw alike";
}

TEST(vision_sheet, draws_where_it_is_due) {
  a_window window;
  const picture seen = drawn(window, [](auto& s) {
    s.ofl_dash_line(20, 10, 120, 10, FL_BLUE);
    s.ofl_line(20, 20, 120, 20, FL_BLUE);
    s.ofl_break_line(100, 100, 180, 100, FL_BLUE);
    s.ofl_break_line(10, 162, 20, 167, FL_BLUE);
    s.ofl_rectbound(20, 30, 40, 20, FL_BLUE);
    s.ofl_circbound(20, 60, 40, FL_BLUE);
  });
  const int dashes = seen.count(blue, 0, 10, 300, 1);
  EXPECT_TRUE(10 < dashes && dashes < 90) << dashes;
  EXPECT_EQ(seen.count(blue, 0, 20, 300, 1), 101) << "solid again";
  EXPECT_EQ(seen.count(black, 0, 30, 100, 20), 2 * 40 + 2 * 18);
  EXPECT_EQ(seen.count(blue, 0, 30, 100, 20), 38 * 18);
  // The zigzag, a second one whose quarter is truncated, the disc.
  for (const auto& [x, y] : {std::pair{120, 140}, {140, 100}, {160, 60}, {10, 168}, {40, 80}})
    EXPECT_EQ(seen.at(x, y), blue) << x << ", " << y;
  EXPECT_TRUE(seen.at(20, 80) == black && seen.at(21, 61) == grey);
}

TEST(vision_sheet, arrowheads_point_along_the_way) {
  a_window window;
  for (const auto& way : {std::pair{1, 0}, {0, 1}, {-1, 0}, {0, -1}}) {
    const int x = way.first, y = way.second;
    const picture sector =
        drawn(window, [x, y](auto& s) { s.ofl_arrowbound(150 - 40 * x, 60 - 40 * y, 150, 60, FL_BLUE); });
    // The square's corner is (150, 60) and its centre, the tip, 40 pixels further.
    EXPECT_TRUE(sector.at(190 - 20 * x, 100 - 20 * y) == blue &&
                sector.at(190 + 20 * x, 100 + 20 * y) == grey);
    EXPECT_EQ(fl_color(), FL_BLACK);
    const auto arrow_from = [&](int distance) {
      return drawn(window, [=](auto& s) {
        s.ofl_drw_arrow_line(150 - distance * x, 100 - distance * y, 150, 100, FL_BLUE, 40, 5);
      });
    };
    EXPECT_TRUE(arrow_from(10) == arrow_from(x == 1 ? 0 : 20)) << "no room for a shaft";
    const picture arrow = arrow_from(80);
    // The shaft is 5 wide; the head is pointed, 40 long and 29 wide at its base.
    const std::tuple<int, int, rgb> spots[] = {{60, 2, blue}, {60, 4, grey}, {36, 11, blue}, {36, 17, grey},
                                               {6, 5, grey},  {46, 8, grey}, {-3, 0, grey}};
    for (const auto& [along, across, colour] : spots)
      for (const int side : {-across, across})
        EXPECT_EQ(arrow.at(150 - x * along - y * side, 100 - y * along - x * side), colour)
            << along << ", " << side;
  }
}

TEST(wait_form, is_painted_before_the_task_begins_and_gone_after_it) {
  Fl_Window under_construction(100, 100);
  {
    const OFD_wait_form form("à 100 % %d");
    const window_id window = wait_for_window("travail en cours ...");
    XSync(fl_display, 0);
    const picture seen = picture_of(window);
    EXPECT_EQ(std::make_pair(seen.width(), seen.height()), std::make_pair(600, 60));
    EXPECT_GT(seen.dark(200, 10, 200, 40), 20) << "the message, in the middle";
    EXPECT_EQ(seen.dark(10, 10, 100, 40), 0);
  }
  EXPECT_TRUE(wait_until([] { return window_titled("travail en cours ...") == 0; }));
  EXPECT_TRUE(under_construction.children() == 0 && Fl_Group::current() == &under_construction);
  under_construction.end();
}
