#include "bibliocpp/formspp/colour_drawing.h"

#include <FL/Enumerations.H>

#include <algorithm>
#include <cmath>

void fl_ovalf(int x, int y, int w, int h, unsigned colour) {
  fl_color(colour);
  fl_pie(x, y, w, h, 0.0, 360.0);
}

void fl_ovalf(int x, int y, int w, int h, int colour) { fl_ovalf(x, y, w, h, static_cast<unsigned>(colour)); }

void fl_circf(int x, int y, int d, unsigned colour) { fl_ovalf(x, y, d, d, colour); }

void fl_circf(int x, int y, int d, int colour) { fl_ovalf(x, y, d, d, colour); }

void fl_rectbound(int x, int y, int w, int h, unsigned colour) {
  fl_color(colour);
  fl_rectf(x, y, w, h);
  fl_color(FL_BLACK);
  fl_rect(x, y, w, h);
}

void fl_rectbound(int x, int y, int w, int h, int colour) {
  fl_rectbound(x, y, w, h, static_cast<unsigned>(colour));
}

void fl_line(int x1, int y1, int x2, int y2, unsigned colour) {
  fl_color(colour);
  fl_line(x1, y1, x2, y2);
}

namespace {

bool between(double p, double end1, double end2) {
  return std::min(end1, end2) <= p && p <= std::max(end1, end2);
}

}  // namespace

int point_dans_segment(double px, double py, double x1, double y1, double x2, double y2, double tolerance) {
  constexpr double epsilon = 1e-10;
  const double dx = x1 - x2;
  const double dy = y1 - y2;
  if (std::abs(dx) <= epsilon) return between(py, y1, y2) && std::abs(px - x1) < tolerance;
  if (std::abs(dy) <= epsilon) return between(px, x1, x2) && std::abs(py - y1) < tolerance;
  if (!between(px, x1, x2) || !between(py, y1, y2)) return 0;
  const double length = std::sqrt(dx * dx + dy * dy);
  return std::abs((px - x1) * dy - (py - y1) * dx) / length < tolerance;
}
