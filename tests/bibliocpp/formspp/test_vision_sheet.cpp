#include <gtest/gtest.h>

#include "bibliocpp/formspp/vision_sheet.h"
#include "bibliocpp/formspp/wait_form.h"
#include "tests/support/a_window.h"
#include "tests/support/drawing_calls.h"

#include <array>

TEST(vision_sheet, draws_in_the_colour_of_the_call_and_clips_when_it_has_an_area) {
  const struct {
    void (*draw)(OFL_vision_sheet& s);
    const char* calls;
  } rows[] = {
      {[](auto& s) { s.ofl_line(80, 100, 180, 90, 4); }, "color 4; line 80 100 180 90; "},
      {[](auto& s) { s.ofl_dash_line(60, 100, 180, 90, 4); },
       "color 4; style 1 0; line 60 100 180 90; style 0 0; "},
      {[](auto& s) { s.ofl_break_line(10, 162, 20, 167, 4); },
       "color 4; line 10 162 10 168; line 10 168 20 160; line 20 160 20 167; "},
      {[](auto& s) { s.ofl_rect(80, 60, 50, 40, 4); }, "color 4; rect 80 60 50 40; "},
      {[](auto& s) { s.ofl_rectf(80, 60, 50, 40, 4); }, "color 4; rectf 80 60 50 40; "},
      {[](auto& s) { s.ofl_rectbound(80, 60, 50, 40, 4); },
       "color 4; rectf 80 60 50 40; color 56; rect 80 60 50 40; "},
      {[](auto& s) { s.ofl_circ(80, 60, 50, 4); }, "color 4; arc 80 60 50 50 0 360; "},
      {[](auto& s) { s.ofl_circf(80, 60, 50, 4); }, "color 4; pie 80 60 50 50 0 360; "},
      {[](auto& s) { s.ofl_circbound(80, 60, 50, 4); },
       "color 4; pie 80 60 50 50 0 360; color 56; arc 80 60 50 50 0 360; "},
      {[](auto& s) { s.ofl_arrowbound(50, 70, 80, 110, 4); },
       "color 4; pie 80 110 100 100 106.87 146.87; color 56; "},
      {[](auto& s) { s.ofl_arrowbound(50, 70, 50, 60, 4); }, "color 4; pie 50 60 20 20 250 290; color 56; "},
      // 40 long and 29 wide at its base, where the shaft ends.
      {[](auto& s) { s.ofl_drw_arrow_line(180, 100, 80, 100, 4, 40, 3); },
       "color 4; style 256 3; line 180 100 120 100; style 0 0; "
       "polygon; vertex 80 100; vertex 120 114.559; vertex 120 85.4412; end; "},
      {[](auto& s) { s.ofl_drw_arrow_line(100, 70, 100, 100, 4, 40, 3); },
       "color 4; polygon; vertex 100 100; vertex 114.559 60; vertex 85.4412 60; end; "},  // no room for a
                                                                                          // shaft
      {[](auto& s) { s.ofl_drw_arrow_line(100, 100, 100, 100, 4, 40, 3); },
       "color 4; polygon; vertex 100 100; vertex 60 85.4412; vertex 60 114.559; end; "},
      {[](auto& s) { s.ofl_drw_text(FL_ALIGN_LEFT, 50, 60, 90, 60, 4, 40, FL_TIMES, "@@M"); },
       "color 4; font 8 40; text @M 50 110; "},
      {[](auto& s) { s.ofl_drw_String(FL_ALIGN_LEFT, 50, 60, 90, 60, 4, FL_TIMES, 40, "@@M"); },
       "color 4; font 8 40; text @M 50 110; "}};
  std::array<OFL_vision_sheet, 4> sheets;  // the last three have no area
  sheets[0].define(10, 10, 1, 1, FL_RED);
  sheets[0].resize(100, 2, 200, 300);
  sheets[1].resize(100, 50, 50, 0);
  sheets[2].resize(100, 50, -50, 50);
  drawing_calls noted;
  for (const auto& [draw, calls] : rows)
    for (auto& sheet : sheets) {
      const bool clips = &sheet == sheets.data();
      draw(sheet);
      EXPECT_EQ(noted.taken(), clips ? "clip 100 2 200 300; " + std::string(calls) + "unclip; " : calls);
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
