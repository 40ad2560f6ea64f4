#include <gtest/gtest.h>

#include "bibliocpp/formspp.h"
#include "tests/support/a_window.h"

TEST(colour_drawing, fills_discs_inside_their_boxes_and_lines_to_both_ends) {
  a_window window;
  fl_circf(10, 20, 30, FL_RED);
  fl_line(10, 100, 30, 100, 216U);
  fl_ovalf(100, 20, 60, 30, FL_BLUE);
  EXPECT_EQ(static_cast<int>(fl_color()), static_cast<int>(FL_BLUE)) << "the colour given stays current";
  const picture seen = window.look();
  EXPECT_EQ(seen.count(blue, 0, 90, 300, 20), 21);
  for (const auto& [x, y] : {std::pair{25, 21}, {25, 48}, {11, 35}, {38, 35}}) EXPECT_EQ(seen.at(x, y), red);
  for (const auto& [x, y] : {std::pair{11, 21}, {38, 21}, {11, 48}, {38, 48}, {25, 19}, {41, 35}, {103, 22}})
    EXPECT_EQ(seen.at(x, y), grey) << x << ", " << y;
  EXPECT_EQ(seen.at(102, 35), blue);
}

TEST(colour_drawing, borders_a_rectangle_inside_and_leaves_black) {
  a_window window;
  unsigned colour = 88;
  fl_rectbound(10, 10, 10, 8, colour);
  const picture seen = window.look();
  EXPECT_EQ(seen.count(red), 8 * 6);
  EXPECT_EQ(seen.count(black), 10 * 8 - 8 * 6);
  EXPECT_EQ(seen.at(19, 17), black);
  EXPECT_EQ(fl_color(), static_cast<Fl_Color>(FL_BLACK));
}

TEST(point_dans_segment, accepts_what_is_nearer_than_the_tolerance_between_the_ends) {
  struct {
    double px, py, x1, y1, x2, y2, tolerance;
    int on;
  } const rows[] = {
      {5, 0.5, 0, 0, 10, 0, 1, 1},     {5, 0.5, 10, 0, 0, 0, 0.5, 0},  {11, 0, 0, 0, 10, 0, 1, 0},
      {10, 0, 0, 0, 10, 0, 1, 1},      {5, 5.5, 0, 0, 10, 10, 1, 1},   {-1, -1, 0, 0, 10, 10, 1, 0},
      {5, 7, 10, 10, 0, 0, 1.4142, 0}, {5, 7, 10, 10, 0, 0, 1.415, 1}, {3.4, 5, 3, 0, 3, 10, 0.5, 1},
      {3, 11, 3, 0, 3, 10, 5, 0},      {3, 4, 3, 4, 3, 4, 0.1, 1},     {3, 4.5, 3, 4, 3, 4, 0.1, 0},
      {5, 5, 0, 0, 10, 10, 0, 0},
  };
  for (const auto& r : rows)
    EXPECT_EQ(point_dans_segment(r.px, r.py, r.x1, r.y1, r.x2, r.y2, r.tolerance), r.on)
        << "row " << &r - rows;
}
