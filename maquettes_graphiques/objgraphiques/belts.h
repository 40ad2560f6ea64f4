#pragma once
// Belts that carry moving parts: hbelt, a straight horizontal conveyor, and rbelt, a turntable.
//
// Calling order in each cycle: activate() if the belt is to run; react(); redraw(). A command lasts
// one react(). draw() is for the first picture and for repainting; an hbelt's moves its parts by the
// last step once more. Positions are pixels of the window; travels and speeds are pixels (hbelt) or
// degrees (rbelt, clockwise on screen) per react(). Carried parts are not owned; each must leave with
// supp_ppart() before it is destroyed. A part whose way is blocked stays where it is.

#include <FL/forms.H>

#include <list>

#include "maquettes_graphiques/objgraphiques/movepart.h"

class belt {
 public:
  // At rest, carrying nothing. See the variants for the geometry.
  belt(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_length, FL_Coord my_width,
       double my_speed);

  // Carries the part from now on, wherever it stands. A part added twice moves twice.
  void add_ppart(movepart* part) { lppart.push_back(part); }
  // Takes the part off, the first if it was added more than once; ignores an unknown one.
  void supp_ppart(movepart* part);
  void supp_all_ppart() { lppart.clear(); }
  // The carried parts themselves, in order of adding.
  std::list<movepart*>& part_list() { return lppart; }

  // Runs at the coming react().
  void activate() { active = 1; }
  int is_activing() const { return active; }

  // The travel per react() from the next one on.
  void change_speed(double new_speed) { speed = new_speed; }

  // One step of the travel counter if activated, wrapping round at 0 and length. 1 when it was
  // activated, else 0. Parts follow in the drawing.
  int react();
  // Takes the counter back by the last step.
  void unreact() { delta_mvt = olddelta_mvt; }

 protected:
  double last_step() const { return delta_mvt - olddelta_mvt; }

  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;  // reserved: belts erase nothing
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord length;
  FL_Coord width;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  double speed;
  double delta_mvt = 0.0;
  double olddelta_mvt = 0.0;
  int active = 0;
  std::list<movepart*> lppart;
};

// Left end and top at (xpos, ypos), `length` long and `width` thick, in red with a black mark that
// travels with the belt. It carries every part of its list whose left edge lies from xpos to xpos +
// length, bounds included, at whatever height.
class hbelt : public belt {
 public:
  using belt::belt;
  // Paints the belt, moves the parts by the last step and paints them.
  void draw();
  // The same, but only when the belt has moved by a step of at most `speed`: after a react() that did
  // not run it nothing is drawn, and a belt of negative speed is deliberately never redrawn nor are
  // its parts moved. The mark reaches one pixel below the belt, which nothing erases.
  void redraw();
  // Paints the belt as it stands into whatever is current and moves nothing.
  void paint() const;
  // The travel counter, 0 to length.
  double traveling() const { return delta_mvt; }

 private:
  void paint_with_mark(FL_Coord mark_bottom) const;
  void carry_parts();
};

// Turns its parts about (xpos, ypos). They keep their orientation: each part's centre goes round, by
// `speed` degrees a step. The white disc has `width`, the outer radius by name, as its diameter and
// (xpos, ypos) as the corner of its bounding square, unless disc_on_axle() is asked for; int_radius is
// stored and has no effect.
class rbelt : public belt {
 public:
  rbelt(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_width, FL_Coord my_int_radius,
        double my_speed);
  // From now on the disc is drawn about the axle, with `width` as its radius: then the radius mark ends on
  // its rim, and parts stand on it.
  void disc_on_axle() { on_axle = true; }
  // Paints the disc alone.
  void draw();
  // Paints the disc, turns the parts if the table has moved, paints them and a black radius of `width`
  // pixels at the present angle; where it leaves the disc, its old positions stay.
  void redraw();
  // Paints disc and radius as they stand into whatever is current and moves nothing.
  void paint() const;
  // The present angle in degrees, 0 to 360, despite the name.
  double radius() const { return delta_mvt; }

 protected:
  FL_Coord int_radius;

 private:
  bool on_axle = false;
  void paint_disc() const;
  void paint_radius() const;
  void turn(movepart& part) const;
};
