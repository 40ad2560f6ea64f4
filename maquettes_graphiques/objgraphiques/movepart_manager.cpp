#include "maquettes_graphiques/objgraphiques/movepart_manager.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iostream>

#include "bibliocpp/formspp/colour_drawing.h"
#include "maquettes_graphiques/objgraphiques/movepart.h"

namespace {

struct pixel_box {
  int left, top, right, bottom;
};

bool overlap(const pixel_box& a, const pixel_box& b) {
  return b.bottom > a.top && a.bottom > b.top && b.right > a.left && a.right > b.left;
}

bool covers_with_bounds(const pixel_box& box, int x, int y) {
  return box.top <= y && y <= box.bottom && box.left <= x && x <= box.right;
}

}  // namespace

movepart_manager::movepart_manager() = default;

void movepart_manager::addpart(movepart* ppart) {
  if (number >= capacity) {
    std::cerr << "too many part !" << std::endl;
    std::exit(1);
  }
  tab[static_cast<std::size_t>(number++)] = ppart;
}

void movepart_manager::suppart(movepart* ppart) {
  for (int n = 0; n < number; ++n) {
    const auto entry = tab.begin() + n;
    if (*entry != ppart) continue;
    std::copy(entry + 1, tab.begin() + number, entry);
    --number;  // what came down into this place is deliberately not examined
  }
}

// False only where no box of one part can overlap one of the other: a glance that spares most pairs
// the look at each box. Truncation moves either edge by less than a pixel.
bool movepart_manager::may_overlap(const movepart& a, const movepart& b) {
  constexpr double slack = 3.0;
  const double dx = std::trunc(b.xpos_base) - std::trunc(a.xpos_base);
  const double dy = std::trunc(b.ypos_base) - std::trunc(a.ypos_base);
  return dx + b.around.right + slack > a.around.left && a.around.right + slack > dx + b.around.left &&
         dy + b.around.bottom + slack > a.around.top && a.around.bottom + slack > dy + b.around.top;
}

// Calls found(box) for each box of the part as collisions see it, until it returns true.
template <typename Found>
bool movepart_manager::any_box_of(const movepart& part, Found found) {
  const int base_x = static_cast<int>(part.xpos_base);
  const int base_y = static_cast<int>(part.ypos_base);
  return part.any_box([&](double x, double y, int l, int h, Fl_Color) {
    const int left = static_cast<int>(base_x + x);
    const int top = static_cast<int>(base_y + y);
    return found(pixel_box{left, top, left + l, top + h});
  });
}

int movepart_manager::collision(movepart* p) {
  const auto end = tab.begin() + number;
  const auto self = std::find(tab.begin(), end, p);
  if (self == end) {
    std::cerr << "collision: erreur interne !" << std::endl << p << std::endl;
    std::exit(1);
  }
  return std::any_of(tab.begin(), end, [&](movepart* const& other) {
    if (&other == self || other == nullptr || !may_overlap(*p, *other)) return false;
    if (p->has_aboard(*other) || other->has_aboard(*p)) return false;
    return any_box_of(*other, [&](const pixel_box& box) {
      return any_box_of(*p, [&](const pixel_box& own) { return overlap(box, own); });
    });
  });
}

movepart* movepart_manager::part_in(FL_Coord x, FL_Coord y, FL_Coord w, FL_Coord h) const {
  const auto end = tab.begin() + number;
  const auto found = std::find_if(tab.begin(), end, [&](const movepart* part) {
    return part != nullptr && any_box_of(*part, [&](const pixel_box& box) {
             return overlap(box, {x, y, x + w, y + h});
           });
  });
  return found == end ? nullptr : *found;
}

int movepart_manager::busy_position(FL_Coord xtest, FL_Coord ytest) {
  return std::any_of(tab.begin(), tab.begin() + number, [&](const movepart* part) {
    if (part == nullptr) return false;
    const int base_x = static_cast<int>(part->xpos_base);
    const int base_y = static_cast<int>(part->ypos_base);
    return part->any_box([&](double x, double y, int l, int h, Fl_Color) {
      const int left = base_x + static_cast<int>(x);
      const int top = base_y + static_cast<int>(y);
      return covers_with_bounds({left, top, left + l, top + h}, xtest, ytest);
    });
  });
}

int movepart_manager::busy_position_debug(FL_Coord xtest, FL_Coord ytest) {
  constexpr int arm = 50;
  fl_line(xtest - arm, ytest, xtest + arm, ytest, FL_BLACK);
  fl_line(xtest, ytest - arm, xtest, ytest + arm, FL_BLACK);
  return busy_position(xtest, ytest);
}

void movepart_manager::draw() {
  for (int n = 0; n < number; ++n)
    if (movepart* const part = tab[static_cast<std::size_t>(n)]) part->draw();
}

void movepart_manager::paint() const {
  for (int n = 0; n < number; ++n)
    if (const movepart* const part = tab[static_cast<std::size_t>(n)]) part->paint();
}

void movepart_manager::parts_fall() {
  for (int n = 0; n < number; ++n)
    if (movepart* const part = tab[static_cast<std::size_t>(n)]) part->fall();
}
