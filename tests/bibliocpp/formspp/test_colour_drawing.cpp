#include <gtest/gtest.h>

#include "bibliocpp/formspp.h"
#include "tests/support/drawing_calls.h"

TEST(colour_drawing, draws_in_the_colour_given_and_leaves_it_current) {
  drawing_calls noted;
  Fl_Color colour = FL_RED;
  fl_ovalf(100, 20, 60, 30, colour);
  fl_ovalf(100, 20, 60, 30, 216);
  fl_circf(10, 20, 30, colour);
  fl_circf(10, 20, 30, 216);
  fl_line(10, 100, 30, 90, colour);
  fl_rectbound(1, 2, 30, 40, colour);
  fl_rectbound(1, 2, 30, 40, 216);
  EXPECT_EQ(noted.taken(),
            "color 88; pie 100 20 60 30 0 360; color 216; pie 100 20 60 30 0 360; "
            "color 88; pie 10 20 30 30 0 360; color 216; pie 10 20 30 30 0 360; color 88; line 10 100 30 90; "
            "color 88; rectf 1 2 30 40; color 56; rect 1 2 30 40; "
            "color 216; rectf 1 2 30 40; color 56; rect 1 2 30 40; ");
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
