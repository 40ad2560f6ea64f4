#include "maquettes_graphiques/objgraphiques/wagon.h"

#include <cmath>

#include "bibliocpp/formspp/colour_drawing.h"

wagon::wagon(FL_FORM* my_assoc_forms, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_l, FL_Coord my_h,
             double my_speed_ref, FL_Coord my_xpos_min, FL_Coord my_xpos_max, movepart* my_plinked_part,
             Fl_Color my_background_color)
    : associate_forms(my_assoc_forms),
      background_color(my_background_color),
      xpos(my_xpos),
      ypos(my_ypos),
      oldxpos(my_xpos),
      xpos_min(my_xpos_min),
      xpos_max(my_xpos_max),
      l(my_l),
      h(my_h),
      speed_ref(my_speed_ref),
      plinked_part(my_plinked_part) {}

int wagon::react() {
  oldxpos = xpos;
  xpos += speed;
  if (xpos + half_length() > xpos_max)
    xpos = xpos_max - half_length();
  else if (xpos_min > xpos - half_length())
    xpos = xpos_min + half_length();
  return xpos != oldxpos;
}

void wagon::change_speed_ref(double new_speed_ref) {
  constexpr double at_rest = 0.001;
  speed_ref = new_speed_ref;
  if (std::abs(speed) < at_rest) speed = speed > 0 ? new_speed_ref : -new_speed_ref;
}

int wagon::my_xpos() const { return static_cast<int>(std::round(xpos)); }

namespace {

// The body's top lies this far above the wagon's reference line.
constexpr double body_rise = 15.0;
constexpr int body_height = 20;
constexpr int corner = 5;

}  // namespace

void cookwagon::draw() {
  associate_forms->make_current();
  // One half at a time, because a cycle draws twice; deliberate, and an extra draw moves the part on.
  if (plinked_part->moveredraw((xpos - oldxpos) / 2.0, 0.0) == 1) unreact();
  erase_band_left_behind();
  paint_wheels(oldxpos, background_color);
  paint();
  plinked_part->draw();
}

void cookwagon::erase_band_left_behind() const {
  const int top = static_cast<int>(ypos - h);
  if (xpos > oldxpos)
    fl_rectf(static_cast<int>(oldxpos - half_length()), top, static_cast<int>(xpos - oldxpos), 2 * h,
             background_color);
  else if (oldxpos > xpos)
    fl_rectf(static_cast<int>(half_length() + xpos), top, static_cast<int>(oldxpos - xpos), 2 * h,
             background_color);
}

void cookwagon::paint_wheels(double centre, Fl_Color colour) const {
  const int quarter = l / 4;
  const int diameter = h / 2;
  const int top = static_cast<int>(diameter + ypos);
  fl_circf(static_cast<int>(centre - quarter + diameter), top, diameter, colour);
  fl_circf(static_cast<int>(quarter + centre - h), top, diameter, colour);
}

void cookwagon::paint() const {
  paint_wheels(xpos, FL_BLACK);
  const int top = static_cast<int>(ypos - body_rise);
  if (loaded) {
    fl_rectf(static_cast<int>(xpos - half_length() - corner), top, corner, corner, background_color);
    fl_rectf(static_cast<int>(half_length() + xpos), top, corner, corner, background_color);
  }
  fl_rectf(static_cast<int>(xpos - half_length()), top, l, body_height, loaded ? FL_BLACK : background_color);
}
