#pragma once
// Drawing calls that take their colour as last argument.
//
// Each sets the current colour, draws, and leaves that colour current; line style, font and
// clipping stay as they were. Coordinates are pixels of the current window, y growing downwards.
// Colours are FLTK indices; int and unsigned behave alike. As with every FLTK drawing call, a
// window must be current: inside draw(), or after make_current().

#include <FL/fl_draw.H>

// Filled ellipse inscribed in the box x, y, w * h.
void fl_ovalf(int x, int y, int w, int h, unsigned colour);
void fl_ovalf(int x, int y, int w, int h, int colour);

// Filled disc of diameter d whose bounding square has its top-left corner at (x, y).
void fl_circf(int x, int y, int d, unsigned colour);
void fl_circf(int x, int y, int d, int colour);

// Filled rectangle with a black border one pixel wide inside it. Leaves black as current colour.
void fl_rectbound(int x, int y, int w, int h, unsigned colour);
void fl_rectbound(int x, int y, int w, int h, int colour);

// Line from (x1, y1) to (x2, y2), both ends drawn.
void fl_line(int x1, int y1, int x2, int y2, unsigned colour);

// 1 when (px, py) lies on the segment from (x1, y1) to (x2, y2), nearer to it than `tolerance`
// pixels (strictly), else 0. Nothing beyond the ends counts: the point must lie in the box that the
// ends span, except across a segment less than 1e-10 wide or high, where only the tolerance decides.
int point_dans_segment(double px, double py, double x1, double y1, double x2, double y2, double tolerance);
