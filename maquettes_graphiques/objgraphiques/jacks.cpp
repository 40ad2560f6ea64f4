#include "maquettes_graphiques/objgraphiques/jacks.h"

#include <algorithm>
#include <cmath>

#include "bibliocpp/formspp/colour_drawing.h"

namespace {

struct rectangle {
  int x, y, w, h;
};

struct segment {
  int x1, y1, x2, y2;
};

// What is fixed about a straight jack. `inset` centres the finger on the body.
struct build {
  int x, y, lbox, hbox, lfinger, hfinger;
  int inset() const { return hbox / 2 - hfinger / 2; }
};

struct outline {
  rectangle body, finger;
  segment piston;
};

// How far a pixel of travel pushes the part, and where everything stands at travel d.
struct variant {
  int push_x, push_y;
  outline (*at)(const build& j, int d);
};

constexpr variant rightwards{+1, 0, [](const build& j, int d) -> outline {
                               return {{j.x, j.y, j.lbox, j.hbox},
                                       {j.x + d, j.y + j.inset(), j.lfinger, j.hfinger},
                                       {j.x + d, j.y, j.x + d, j.y + j.hbox - 1}};
                             }};

constexpr variant leftwards_double{-1, 0, [](const build& j, int d) -> outline {
                                     return {{j.x, j.y, -j.lbox, j.hbox},
                                             {j.x - d, j.y + j.inset(), -j.lfinger, j.hfinger},
                                             {j.x - d, j.y, j.x - d, j.y + j.hbox - 1}};
                                   }};

// Pushes against its finger's way and shows its piston slanted: deliberate.
constexpr variant leftwards_single{+1, 0, [](const build& j, int d) -> outline {
                                     return {{j.x - j.lbox, j.y, j.lbox, j.hbox},
                                             {j.x - d, j.y + j.inset(), j.lfinger, j.hfinger},
                                             {j.x - d, j.y, j.x + d, j.y + j.hbox - 1}};
                                   }};

constexpr variant downwards{0, +1, [](const build& j, int d) -> outline {
                              return {{j.x, j.y, j.hbox, j.lbox},
                                      {j.x + j.inset(), j.y + d, j.hfinger, j.lfinger},
                                      {j.x, j.y + d, j.x + j.hbox - 1, j.y + d}};
                            }};

// Pushes sideways: deliberate.
constexpr variant upwards_double{+1, 0, [](const build& j, int d) -> outline {
                                   return {{j.x, j.y, j.hbox, -j.lbox},
                                           {j.x + j.inset(), j.y - d, j.hfinger, -j.lfinger},
                                           {j.x, j.y - d, j.x + j.hbox - 1, j.y - d}};
                                 }};

constexpr variant upwards_single{0, -1, [](const build& j, int d) -> outline {
                                   return {{j.x, j.y - j.lbox, j.hbox, j.lbox},
                                           {j.x + j.inset(), j.y - d - j.lfinger, j.hfinger, j.lfinger},
                                           {j.x, j.y - d, j.x + j.hbox - 1, j.y - d}};
                                 }};

constexpr double visible_step = 0.001;

}  // namespace

// Everything the straight jacks draw, single- and double-acting alike.
struct straight_jack {
  template <typename Jack>
  static outline outline_of(const Jack& jack, const variant& v) {
    return v.at({jack.xpos, jack.ypos, jack.lbox, jack.hbox, jack.lfinger, jack.hfinger},
                static_cast<int>(jack.delta_finger));
  }

  template <typename Jack>
  static void draw(Jack& jack, const variant& v) {
    jack.associate_forms->make_current();
    const double step = jack.delta_finger - jack.olddelta_finger;
    movepart* const pushed = jack.plinked_part;
    if (pushed != nullptr && pushed->moveredraw(v.push_x * step, v.push_y * step) == 1) jack.unreact();
    paint<Jack>(jack, v);
    jack.partdraw();
  }

  template <typename Jack>
  static void paint(const Jack& jack, const variant& v) {
    const auto& [body, finger, piston] = outline_of(jack, v);
    fl_rectbound(body.x, body.y, body.w, body.h, FL_BLUE);
    fl_rectbound(finger.x, finger.y, finger.w, finger.h, FL_BLACK);
    fl_line(piston.x1, piston.y1, piston.x2, piston.y2, FL_BLACK);
  }

  template <typename Jack>
  static void undraw(Jack& jack, const variant& v) {
    const auto& [body, finger, piston] = outline_of(jack, v);
    jack.associate_forms->make_current();
    fl_rectf(body.x, body.y, body.w + 1, body.h + 1, jack.background_color);
    fl_rectf(finger.x, finger.y, finger.w, finger.h, jack.background_color);
  }

  template <typename Jack>
  static void move_and_draw(Jack& jack, const variant& v, FL_Coord x, FL_Coord y) {
    if (x != jack.xpos || y != jack.ypos) {
      undraw<Jack>(jack, v);
      jack.xpos = x;
      jack.ypos = y;
    }
    draw<Jack>(jack, v);
  }
};

djack::djack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
             FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part,
             double initial_delta)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      lbox(my_lbox),
      hbox(my_hbox),
      lfinger(my_lfinger),
      hfinger(my_hfinger),
      outspeed(my_outspeed),
      inspeed(my_inspeed),
      delta_finger(initial_delta),
      olddelta_finger(initial_delta),
      plinked_part(part) {}

int djack::react() {
  olddelta_finger = delta_finger;
  // Both chambers fed hold the finger.
  if (outactive && !inactive) delta_finger = std::min<double>(delta_finger + outspeed, lbox);
  if (inactive && !outactive) delta_finger = std::max(delta_finger - inspeed, 0.0);
  outactive = 0;
  inactive = 0;
  return std::abs(olddelta_finger - delta_finger) > visible_step;
}

sjack::sjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
             FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part,
             double initial_delta)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      lbox(my_lbox),
      hbox(my_hbox),
      lfinger(my_lfinger),
      hfinger(my_hfinger),
      outspeed(my_outspeed),
      inspeed(my_inspeed),
      delta_finger(initial_delta),
      olddelta_finger(initial_delta),
      plinked_part(part) {}

int sjack::react() {
  olddelta_finger = delta_finger;
  if (outactive)
    delta_finger = std::min<double>(delta_finger + outspeed, lbox);
  else
    delta_finger = std::max(delta_finger - inspeed, 0.0);
  outactive = 0;
  return std::abs(olddelta_finger - delta_finger) > visible_step;
}

rsjack::rsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
               FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed,
               movepart* part)
    : sjack(form, my_xpos, my_ypos, my_lbox, my_hbox, my_lfinger, my_hfinger, my_outspeed, my_inspeed, part,
            0.0) {}

lsjack::lsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
               FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed,
               movepart* part)
    : sjack(form, my_xpos, my_ypos, my_lbox, my_hbox, my_lfinger, my_hfinger, my_outspeed, my_inspeed, part,
            0.0) {}

tsjack::tsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
               FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed,
               movepart* part)
    : sjack(form, my_xpos, my_ypos, my_lbox, my_hbox, my_lfinger, my_hfinger, my_outspeed, my_inspeed, part,
            0.0) {}

void rdjack::draw() { straight_jack::draw<djack>(*this, rightwards); }
void ldjack::draw() { straight_jack::draw<djack>(*this, leftwards_double); }
void bdjack::draw() { straight_jack::draw<djack>(*this, downwards); }
void tdjack::draw() { straight_jack::draw<djack>(*this, upwards_double); }
void rsjack::draw() { straight_jack::draw<sjack>(*this, rightwards); }
void lsjack::draw() { straight_jack::draw<sjack>(*this, leftwards_single); }
void bsjack::draw() { straight_jack::draw<sjack>(*this, downwards); }
void tsjack::draw() { straight_jack::draw<sjack>(*this, upwards_single); }

void rdjack::paint() const { straight_jack::paint<djack>(*this, rightwards); }
void ldjack::paint() const { straight_jack::paint<djack>(*this, leftwards_double); }
void bdjack::paint() const { straight_jack::paint<djack>(*this, downwards); }
void tdjack::paint() const { straight_jack::paint<djack>(*this, upwards_double); }
void rsjack::paint() const { straight_jack::paint<sjack>(*this, rightwards); }
void lsjack::paint() const { straight_jack::paint<sjack>(*this, leftwards_single); }
void bsjack::paint() const { straight_jack::paint<sjack>(*this, downwards); }
void tsjack::paint() const { straight_jack::paint<sjack>(*this, upwards_single); }

void bdjack::undraw() { straight_jack::undraw<djack>(*this, downwards); }
void bsjack::undraw() { straight_jack::undraw<sjack>(*this, downwards); }
void bdjack::draw(FL_Coord x, FL_Coord y) { straight_jack::move_and_draw<djack>(*this, downwards, x, y); }
void bsjack::draw(FL_Coord x, FL_Coord y) { straight_jack::move_and_draw<sjack>(*this, downwards, x, y); }

hrdjack::hrdjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_radius, int my_base_angle,
                 FL_Coord my_radius_finger, double my_outspeed, double my_inspeed, movepart* part,
                 double initial_angle)
    : djack(form, my_xpos, my_ypos, 360, 1, 360, 1, my_outspeed, my_inspeed, part, initial_angle),
      radius(my_radius),
      base_angle(my_base_angle),
      radius_finger(my_radius_finger) {}

hrdjack::point hrdjack::arm_end(double degrees) const {
  const double a = 3.1415 * degrees / 180.0;  // not quite pi: pixels of existing scenes depend on it
  return {xpos + static_cast<int>(std::cos(a) * radius_finger),
          ypos + static_cast<int>(std::sin(a) * radius_finger)};
}

void hrdjack::draw() {
  associate_forms->make_current();
  const point end = arm_end(delta_finger);
  if (plinked_part != nullptr && plinked_part->absmoveredraw(end.x, end.y) == 1) unreact();
  const point old_end = arm_end(olddelta_finger);
  fl_line(xpos, ypos, old_end.x, old_end.y,
          plinked_part != nullptr ? plinked_part->my_background_color() : background_color);
  paint();
  partdraw();
}

void hrdjack::paint() const {
  fl_circf(xpos, ypos, radius, FL_BLUE);
  const point end = arm_end(delta_finger);
  fl_line(xpos, ypos, end.x, end.y, FL_BLACK);
}
