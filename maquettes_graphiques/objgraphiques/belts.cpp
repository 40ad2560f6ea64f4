#include "maquettes_graphiques/objgraphiques/belts.h"

#include <cmath>

#include "bibliocpp/formspp/colour_drawing.h"
#include "bibliocpp/list.h"

namespace {

constexpr double visible_step = 0.001;

// Not quite pi: pixels of existing scenes depend on it.
double radians(double degrees) { return 3.1415 * degrees / 180.0; }

}  // namespace

belt::belt(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_length, FL_Coord my_width,
           double my_speed)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      length(my_length),
      width(my_width),
      speed(my_speed) {}

void belt::supp_ppart(movepart* part) { sup_number(lppart, item_where(lppart, part)); }

int belt::react() {
  const int ran = active;
  olddelta_mvt = delta_mvt;
  if (active) {
    delta_mvt += speed;
    if (delta_mvt > length)
      delta_mvt -= length;
    else if (delta_mvt < 0)
      delta_mvt += length;
    olddelta_mvt = delta_mvt - speed;  // the drawing sees a step of `speed` across the wrap as well
  }
  active = 0;
  return ran;
}

void hbelt::paint_with_mark(FL_Coord mark_bottom) const {
  fl_rectbound(xpos, ypos, length, width, FL_RED);
  const FL_Coord mark = xpos + static_cast<int>(delta_mvt);
  fl_line(mark, ypos, mark, mark_bottom, FL_BLACK);
}

void hbelt::paint() const { paint_with_mark(ypos + width - 1); }

void hbelt::carry_parts() {
  const double step = last_step();
  for (movepart* const part : lppart) {
    const FL_Coord left = part->actual_first_xpos();
    if (left < xpos || left > xpos + length) continue;
    part->moveredraw(step, 0.0);
    part->draw();
  }
}

void hbelt::draw() {
  associate_forms->make_current();
  paint();
  carry_parts();
}

void hbelt::redraw() {
  const double step = std::abs(last_step());
  if (step <= visible_step || step > speed + visible_step) return;
  associate_forms->make_current();
  paint_with_mark(ypos + width);
  carry_parts();
}

rbelt::rbelt(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_width, FL_Coord my_int_radius,
             double my_speed)
    : belt(form, my_xpos, my_ypos, 360, my_width, my_speed), int_radius(my_int_radius) {}

void rbelt::paint_disc() const {
  if (on_axle)
    fl_circf(xpos - width, ypos - width, 2 * width, FL_WHITE);
  else
    fl_circf(xpos, ypos, width, FL_WHITE);
}

void rbelt::paint_radius() const {
  const double b = radians(delta_mvt);
  fl_line(xpos, ypos, xpos + static_cast<int>(std::cos(b) * width),
          ypos + static_cast<int>(std::sin(b) * width), FL_BLACK);
}

void rbelt::paint() const {
  paint_disc();
  paint_radius();
}

void rbelt::draw() {
  associate_forms->make_current();
  paint_disc();
}

void rbelt::redraw() {
  associate_forms->make_current();
  paint_disc();
  for (movepart* const part : lppart) turn(*part);
  paint_radius();
}

void rbelt::turn(movepart& part) const {
  double x = part.actual_precision_first_xpos();
  double y = part.actual_precision_first_ypos();
  if (std::abs(last_step()) > visible_step) {
    const double half_w = (part.actual_precision_last_xpos() - x) / 2;
    const double half_h = (part.actual_precision_last_ypos() - y) / 2;
    const double cx = x + half_w - xpos;
    const double cy = y + half_h - ypos;
    const double a = radians(speed);
    x = xpos + std::cos(a) * cx - std::sin(a) * cy - half_w;
    y = ypos + std::cos(a) * cy + std::sin(a) * cx - half_h;
  }
  part.absmoveredraw(x, y);
}
