#include <gtest/gtest.h>

#include "bibliocpp/formspp/vision_sheet.h"
#include "bibliocpp/formspp/wait_form.h"
#include "tests/support/a_window.h"

#include <FL/fl_draw.H>

#include <functional>

namespace {

struct operation {
  const char* name;
  std::function<void(OFL_vision_sheet&)> draw;
};

// Each crosses the sheet's left edge at x = 100 and stays between y = 50 and y = 150.
const std::vector<operation> operations{
    {"line", [](auto& s) { s.ofl_line(80, 100, 180, 100, FL_BLUE); }},
    {"dash_line", [](auto& s) { s.ofl_dash_line(60, 100, 180, 100, FL_BLUE); }},
    {"break_line", [](auto& s) { s.ofl_break_line(85, 100, 135, 100, FL_BLUE); }},
    {"rect", [](auto& s) { s.ofl_rect(80, 60, 60, 60, FL_BLUE); }},
    {"rectf", [](auto& s) { s.ofl_rectf(80, 60, 60, 60, FL_BLUE); }},
    {"rectbound", [](auto& s) { s.ofl_rectbound(80, 60, 60, 60, FL_BLUE); }},
    {"circ", [](auto& s) { s.ofl_circ(80, 60, 60, FL_BLUE); }},
    {"circf", [](auto& s) { s.ofl_circf(80, 60, 60, FL_BLUE); }},
    {"circbound", [](auto& s) { s.ofl_circbound(80, 60, 60, FL_BLUE); }},
    {"arrowbound", [](auto& s) { s.ofl_arrowbound(90, 70, 50, 70, FL_BLUE); }},
    {"drw_arrow_line", [](auto& s) { s.ofl_drw_arrow_line(180, 100, 80, 100, FL_BLUE, 40, 3); }},
    {"drw_text",
     [](auto& s) { s.ofl_drw_text(FL_ALIGN_CENTER, 50, 60, 100, 60, FL_BLUE, 40, FL_HELVETICA, "MMM"); }},
    {"drw_String",
     [](auto& s) { s.ofl_drw_String(FL_ALIGN_CENTER, 50, 60, 100, 60, FL_BLUE, FL_HELVETICA, 40, "MMM"); }},
};

picture drawn(a_window& window, OFL_vision_sheet sheet, const operation& o) {
  fl_rectf(0, 0, 300, 200, FL_BACKGROUND_COLOR);
  o.draw(sheet);
  return window.look();
}

int anything(const picture& seen, int x, int y, int w, int h) { return w * h - seen.count(grey, x, y, w, h); }

}  // namespace

TEST(vision_sheet, clips_every_drawing_when_it_has_an_area) {
  a_window window;
  OFL_vision_sheet sheet, no_height, negative;
  sheet.define(10, 10, 1, 1, FL_RED);
  sheet.resize(100, 0, 200, 200);
  no_height.define(100, 50, 50, 0, FL_RED);
  negative.define(100, 50, -50, 50, FL_RED);
  for (const operation& o : operations) {
    SCOPED_TRACE(o.name);
    const picture clipped = drawn(window, sheet, o);
    const picture whole = drawn(window, {}, o);
    EXPECT_EQ(anything(clipped, 0, 0, 100, 200), 0);
    EXPECT_GT(clipped.count(blue), 0) << "in the colour of the call";
    EXPECT_GT(anything(whole, 0, 0, 100, 200), 0);
    EXPECT_TRUE(clipped.part(100, 0, 200, 200) == whole.part(100, 0, 200, 200));
    EXPECT_TRUE(drawn(window, no_height, o) == whole);
    EXPECT_TRUE(drawn(window, negative, o) == whole);
  }
  fl_line(10, 10, 20, 10);
  EXPECT_GT(window.look().count(black) + window.look().count(blue, 0, 0, 30, 30), 0)
      << "no clip is left behind";
}

TEST(vision_sheet, both_texts_draw_alike) {
  a_window window;
  const auto& text = operations[operations.size() - 2];
  const auto& String_ = operations.back();
  EXPECT_TRUE(drawn(window, {}, text) == drawn(window, {}, String_));
}

TEST(vision_sheet, draws_lines_and_outlines_where_they_are_due) {
  a_window window;
  const auto seen = [&](const std::function<void(OFL_vision_sheet&)>& draw) {
    return drawn(window, {}, {"", draw});
  };
  EXPECT_EQ(seen([](auto& s) { s.ofl_line(20, 30, 60, 30, FL_BLUE); }).count(blue), 41) << "both ends";
  const int dashes = seen([](auto& s) { s.ofl_dash_line(20, 30, 120, 30, FL_BLUE); }).count(blue);
  EXPECT_TRUE(10 < dashes && dashes < 90) << dashes;
  EXPECT_EQ(seen([](auto& s) { s.ofl_line(20, 30, 120, 30, FL_BLUE); }).count(blue), 101) << "solid again";

  const picture zigzag = seen([](auto& s) { s.ofl_break_line(100, 100, 180, 100, FL_BLUE); });
  EXPECT_EQ(zigzag.at(120, 140), blue);
  EXPECT_EQ(zigzag.at(140, 100), blue);
  EXPECT_EQ(zigzag.at(160, 60), blue);
  EXPECT_EQ(zigzag.at(120, 100), grey);
  // (20 + 2 * -5 + 3 * 10) / 4 is 10 and (27 + 2 * 10 + 3 * 22) / 4 is 28.25: truncated
  EXPECT_EQ(seen([](auto& s) { s.ofl_break_line(10, 22, 20, 27, FL_BLUE); }).at(10, 28), blue);

  for (const unsigned colour : {FL_BLUE, FL_BLACK}) {
    const picture box = seen([=](auto& s) { s.ofl_rectbound(20, 30, 40, 20, colour); });
    EXPECT_EQ(box.count(black, 20, 30, 40, 1) + box.count(black, 20, 49, 40, 1), 80);
    EXPECT_EQ(box.at(30, 40), colour == FL_BLUE ? blue : black);
  }
  const picture disc = seen([](auto& s) { s.ofl_circbound(20, 30, 40, FL_BLUE); });
  EXPECT_EQ(disc.at(20, 50), black);
  EXPECT_EQ(disc.at(40, 50), blue);
  EXPECT_EQ(anything(disc, 20, 30, 40, 40), anything(disc, 0, 0, 300, 200)) << "nothing outside its square";
  EXPECT_EQ(seen([](auto& s) { s.ofl_rect(20, 30, 40, 20, FL_BLUE); }).count(blue), 2 * 40 + 2 * 18);
}

TEST(vision_sheet, arrowheads_point_along_the_way) {
  a_window window;
  for (const auto& [dx, dy] : std::vector<std::pair<int, int>>{{40, 0}, {0, 40}, {-40, 0}, {0, -40}}) {
    const picture sector =
        drawn(window, {},
              {"", [dx = dx, dy = dy](auto& s) { s.ofl_arrowbound(150 - dx, 60 - dy, 150, 60, FL_BLUE); }});
    // The square's corner is (150, 60) and its centre, the tip, 40 pixels further.
    EXPECT_EQ(sector.at(190 - dx / 2, 100 - dy / 2), blue) << dx << ", " << dy;
    EXPECT_EQ(sector.at(190 + dx / 2, 100 + dy / 2), grey) << dx << ", " << dy;
    EXPECT_EQ(fl_color(), FL_BLACK);

    const picture arrow =
        drawn(window, {}, {"", [dx = dx, dy = dy](auto& s) {
                             s.ofl_drw_arrow_line(150 - 2 * dx, 100 - 2 * dy, 150, 100, FL_BLUE, 40, 5);
                           }});
    const auto at = [&](int along, int across) {
      return arrow.at(150 - dx * along / 40 - dy * across / 40, 100 - dy * along / 40 - dx * across / 40);
    };
    for (const int side : {-1, 1}) {
      EXPECT_EQ(at(60, 2 * side), blue) << "the shaft, 5 wide";
      EXPECT_EQ(at(60, 4 * side), grey);
      EXPECT_EQ(at(36, 11 * side), blue) << "the head, 14.6 on either side of its base";
      EXPECT_EQ(at(36, 17 * side), grey);
      EXPECT_EQ(at(6, 5 * side), grey) << "and pointed";
      EXPECT_EQ(at(46, 8 * side), grey) << "no longer than 40";
    }
    EXPECT_EQ(at(-3, 0), grey) << "nothing past the tip";
  }
  const auto whole = [&](int x1) {
    return drawn(window, {}, {"", [=](auto& s) { s.ofl_drw_arrow_line(x1, 100, 150, 100, FL_BLUE, 40, 5); }});
  };
  EXPECT_TRUE(whole(140) == whole(150)) << "no room for a shaft";
}

TEST(wait_form, is_painted_before_the_task_begins_and_gone_after_it) {
  {
    const OFD_wait_form form("à 100 % %d");
    const window_id window = window_titled("travail en cours ...");
    ASSERT_NE(window, 0U);
    const place where = place_of(window);
    EXPECT_EQ(std::make_pair(where.w, where.h), std::make_pair(600, 60));
    XSync(fl_display, 0);
    const picture seen = picture_of(window);
    EXPECT_GT(seen.count(grey), 600 * 60 / 2);
    EXPECT_GT(seen.count(black, 200, 10, 200, 40), 20) << "the message, in the middle";
    EXPECT_EQ(seen.count(black, 10, 10, 100, 40), 0);
  }
  EXPECT_TRUE(wait_until([] { return window_titled("travail en cours ...") == 0; }));
}

TEST(wait_form, is_a_window_of_its_own_while_another_is_being_built) {
  Fl_Window under_construction(100, 100);
  const OFD_wait_form form("");
  EXPECT_EQ(under_construction.children(), 0);
  EXPECT_EQ(Fl_Group::current(), &under_construction);
  under_construction.end();
}
