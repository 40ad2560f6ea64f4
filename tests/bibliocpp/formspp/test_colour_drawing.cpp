#include <gtest/gtest.h>

#include "bibliocpp/formspp.h"
#include "tests/support/a_window.h"

TEST(colour_drawing, fills_the_disc_inscribed_in_its_square) {
  a_window window;
  fl_circf(10, 20, 30, FL_RED);
  const picture seen = window.look();
  EXPECT_EQ(seen.at(25, 35), red);
  for (const auto& [x, y] : {std::pair{25, 21}, {25, 48}, {11, 35}, {38, 35}}) EXPECT_EQ(seen.at(x, y), red);
  for (const auto& [x, y] : {std::pair{11, 21}, {38, 21}, {11, 48}, {38, 48}, {25, 19}, {41, 35}})
    EXPECT_EQ(seen.at(x, y), grey) << x << ", " << y;
  fl_ovalf(100, 20, 60, 30, FL_BLUE);
  EXPECT_EQ(window.pixel_at(102, 35), blue);
  EXPECT_EQ(window.pixel_at(103, 22), grey);
  EXPECT_EQ(static_cast<int>(fl_color()), static_cast<int>(FL_BLUE)) << "the colour given stays current";
}

TEST(colour_drawing, borders_a_rectangle_inside_and_leaves_black) {
  a_window window;
  fl_rectbound(10, 10, 10, 8, FL_RED);
  const picture seen = window.look();
  EXPECT_EQ(seen.count(red), 8 * 6);
  EXPECT_EQ(seen.count(black), 10 * 8 - 8 * 6);
  EXPECT_EQ(seen.at(19, 17), black);
  EXPECT_EQ(fl_color(), static_cast<Fl_Color>(FL_BLACK));
}

TEST(colour_drawing, takes_its_colour_as_int_unsigned_or_variable) {
  a_window window;
  Fl_Color variable = FL_BLUE;
  int x = 10, y = 50, w = 5, h = 5;
  unsigned colour = 88;
  fl_line(10, 10, 30, 10, 216U);
  fl_line(10, 12, 30, 12, variable);
  fl_rectbound(x, y, w, h, colour);
  fl_circf(50, 50, 5, 88);
  fl_ovalf(70, 50, 5, 5, colour);
  const picture seen = window.look();
  EXPECT_EQ(seen.count(blue), 2 * 21) << "both ends are drawn";
  for (const int column : {12, 52, 72}) EXPECT_EQ(seen.at(column, 52), red);
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
        << "(" << r.px << ", " << r.py << ") on (" << r.x1 << ", " << r.y1 << ")-(" << r.x2 << ", " << r.y2
        << ")";
}
