#include "maquettes_graphiques/objgraphiques/movepart.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>

#include "bibliocpp/formspp/colour_drawing.h"
#include "bibliocpp/list.h"
#include "maquettes_graphiques/objgraphiques/movepart_manager.h"

namespace {

// Where the scans for smallest and largest positions start.
constexpr double scan_from_right = 2000.0;
constexpr double scan_from_left = -2000.0;

int rounded(double v) { return static_cast<int>(std::round(v)); }
int truncated(double v) { return static_cast<int>(v); }

double smallest(const std::list<double>& offsets) {
  double result = scan_from_right;
  for (const double offset : offsets) result = std::min(result, offset);
  return result;
}

double largest_end(const std::list<double>& offsets, const std::list<int>& sizes, double start) {
  double result = start;
  auto size = sizes.begin();
  for (const double offset : offsets) result = std::max(result, offset + *size++);
  return result;
}

}  // namespace

movepart::movepart(movepart_manager& man, FL_FORM* form, Fl_Color background) {
  define(man, form, background);
}

movepart::movepart() = default;

void movepart::define(movepart_manager& man, FL_FORM* form, Fl_Color background) {
  associate_forms = form;
  background_color = background;
  xpos_base = 0.0;
  ypos_base = 0.0;
  pman = &man;
  man.addpart(this);
}

movepart::~movepart() {
  if (movepart* const by = carrier.to; by != nullptr && by->nextpart == this) by->unlink();
  if (!owns_next) unlink();
  if (pman != nullptr) pman->suppart(this);
  if (associate_forms != nullptr && associate_forms->shown()) undraw();
  delete nextpart;
}

void movepart::add(double x, double y, FL_Coord l, FL_Coord h, Fl_Color c) {
  if (lcolor.empty()) around = {x, y, x + l, y + h};
  around = {std::min(around.left, x), std::min(around.top, y), std::max(around.right, x + l),
            std::max(around.bottom, y + h)};
  lxpos.push_back(x);
  lypos.push_back(y);
  llbox.push_back(l);
  lhbox.push_back(h);
  lcolor.push_back(static_cast<int>(c));
}

void movepart::link(movepart* p) { become_carrier_of(p, true); }

void movepart::carry(movepart* p) {
  if (p->carrier.to != nullptr) p->carrier.to->unlink();
  unlink();
  become_carrier_of(p, false);
}

void movepart::become_carrier_of(movepart* p, bool its_owner) {
  if (nextpart != nullptr) nextpart->carrier.to = nullptr;
  nextpart = p;
  owns_next = its_owner;
  p->linked = 1;
  p->carrier.to = this;
}

bool movepart::has_aboard(const movepart& other) const {
  for (const movepart* on = this; on->nextpart != nullptr && !on->owns_next; on = on->nextpart)
    if (on->nextpart == &other) return true;
  return false;
}

void movepart::unlink() {
  if (nextpart != nullptr) nextpart->linked = 0;
  if (nextpart != nullptr) nextpart->carrier.to = nullptr;
  nextpart = nullptr;
}

void movepart::draw() {
  associate_forms->make_current();
  paint_boxes();
  if (nextpart != nullptr) nextpart->draw();
}

void movepart::paint() const {
  paint_boxes();
  if (nextpart != nullptr) nextpart->paint();
}

void movepart::paint_boxes() const {
  for_each_box([this](double x, double y, int l, int h, Fl_Color colour) {
    fl_rectf(rounded(x + xpos_base), rounded(y + ypos_base), l, h, colour);
  });
}

void movepart::undraw() {
  associate_forms->make_current();
  for_each_box([this](double x, double y, int l, int h, Fl_Color) {
    fl_rectf(rounded(x + xpos_base), rounded(y + ypos_base), l, h, background_color);
  });
  if (nextpart != nullptr) nextpart->undraw();
}

int movepart::moveredraw(double dx, double dy) {
  associate_forms->make_current();
  if (nextpart != nullptr && nextpart->moveredraw(dx, dy) == 1) return 1;
  const double oldx = xpos_base;
  const double oldy = ypos_base;
  xpos_base += dx;
  ypos_base += dy;
  if (pman->collision(this) == 1) {
    xpos_base = oldx;
    ypos_base = oldy;
    if (nextpart != nullptr) nextpart->moveredraw(-dx, -dy);
    return 1;
  }
  redraw_moved(oldx, oldy, dx, dy);
  return 0;
}

// The four strips are deliberately not alike (an extra pixel or none, old or new position, dy
// rounded or truncated): scenes rely on exactly what they erase.
void movepart::redraw_moved(double oldx, double oldy, double dx, double dy) const {
  for_each_box([&](double x, double y, int l, int h, Fl_Color colour) {
    const auto paint_at_new_place = [&] {
      fl_rectf(rounded(x + xpos_base), rounded(y + ypos_base), l, h, colour);
    };
    if (xpos_base > oldx) {
      fl_rectf(rounded(x + oldx) - 1, rounded(y + oldy), truncated(std::round(dx) + 1), h, background_color);
      paint_at_new_place();
    }
    if (oldx > xpos_base) {
      fl_rectf(rounded(l + x + xpos_base), rounded(y + ypos_base), truncated(1 - std::round(dx)), h,
               background_color);
      paint_at_new_place();
    }
    if (ypos_base > oldy) {
      fl_rectf(rounded(x + oldx), rounded(y + oldy), l, truncated(std::round(dy) + 1), background_color);
      paint_at_new_place();
    }
    if (oldy > ypos_base) {
      fl_rectf(rounded(x + xpos_base), rounded(h + y + ypos_base), l, -truncated(dy), background_color);
      paint_at_new_place();
    }
  });
}

int movepart::absmoveredraw(double x, double y) {
  associate_forms->make_current();
  const double oldx = xpos_base;
  const double oldy = ypos_base;
  fill_boxes_truncated(true);
  xpos_base = x - smallest(lxpos);
  ypos_base = y - smallest(lypos);
  const int refused = pman->collision(this);
  if (refused == 1) {
    xpos_base = oldx;
    ypos_base = oldy;
  }
  fill_boxes_truncated(false);
  return refused;
}

// Absolute moves truncate where relative ones round.
void movepart::fill_boxes_truncated(bool erase) const {
  for_each_box([&](double x, double y, int l, int h, Fl_Color colour) {
    fl_rectf(truncated(x + xpos_base), truncated(y + ypos_base), l, h, erase ? background_color : colour);
  });
}

void movepart::fall() {
  if (linked == 0) moveredraw(0.0, 1.0);
}

double movepart::actual_precision_first_xpos() const {
  if (lxpos.empty()) {
    std::cerr << "ERREUR dans movepart::actual_precision_first_xpos()" << std::endl
              << "LISTE DE " << this << " ANORMALEMENT VIDE !!!" << std::endl
              << std::endl;
    std::exit(1);
  }
  return xpos_base + smallest(lxpos);
}

double movepart::actual_precision_first_ypos() const { return ypos_base + smallest(lypos); }

double movepart::actual_precision_last_xpos() const {
  return xpos_base + largest_end(lxpos, llbox, scan_from_left);
}

double movepart::actual_precision_last_ypos() const {
  return ypos_base + largest_end(lypos, lhbox, scan_from_left);
}

FL_Coord movepart::actual_first_xpos() const { return truncated(actual_precision_first_xpos()); }
FL_Coord movepart::actual_first_ypos() const { return truncated(actual_precision_first_ypos()); }
FL_Coord movepart::actual_last_xpos() const { return truncated(actual_precision_last_xpos()); }
FL_Coord movepart::actual_last_ypos() const { return truncated(actual_precision_last_ypos()); }

std::ostream& operator<<(std::ostream& out, movepart& part) {
  out << "coords " << part.xpos_base << " " << part.ypos_base << std::endl;
  out << part.lxpos << std::endl << part.lypos << std::endl;
  return out << part.llbox << std::endl << part.lhbox << std::endl << part.lcolor << std::endl;
}

int vertical_part_dist(movepart& p1, movepart& p2) {
  // Bottoms are scanned from 0, so boxes wholly above the base point count as reaching down to it.
  const double top1 = p1.ypos_base + smallest(p1.lypos);
  const double bottom1 = p1.ypos_base + largest_end(p1.lypos, p1.lhbox, 0.0);
  const double top2 = p2.ypos_base + smallest(p2.lypos);
  const double bottom2 = p2.ypos_base + largest_end(p2.lypos, p2.lhbox, 0.0);
  if (top2 > bottom1) return truncated(top2 - bottom1);
  if (top1 > bottom2) return truncated(top1 - bottom2);
  return 0;
}
