#pragma once
// Pneumatic cylinders: a fixed body (the box) and a rod (the finger) that slides out of it and pushes
// a moving part. Double-acting: djack and its variants rdjack, ldjack, bdjack, tdjack; single-acting
// with a return spring: sjack and rsjack, lsjack, bsjack, tsjack; rotary: hrdjack, whose travel is an
// angle. The letters r, l, b, t tell where the finger goes: right, left, bottom, top.
//
// Calling order in each cycle: activate_out() or activate_in(); react(); draw(), once each: a command
// lasts one react(), and every draw() pushes the part by the last step. Positions and travels are
// pixels of the window, speeds pixels per react() and not negative. The part is not owned and must live as
// long as it is the jack's, see change_part(); where another part is in its way the finger stays where it
// was.
//
// A jack repaints its body and finger whole and erases nothing: what a receding finger leaves outside
// the body is the scene's to clear. The variants are deliberately not alike, and scenes rely on it:
//
//   variant         pushes its part          paints
//   rdjack, rsjack  to the right             body from the anchor to the right
//   bdjack, bsjack  downwards                body from the anchor downwards
//   tsjack          upwards                  body from the anchor upwards
//   ldjack          to the left              body and finger with negative widths
//   tdjack          to the right, sideways   body and finger with negative heights
//   lsjack          to the right             body left of the anchor, the piston's face as a diagonal
//
// The toolkit paints nothing for a negative width or height: of an ldjack and a tdjack only the
// piston's face and the part are seen, and the faces of earlier travels stay until the scene clears
// them.

#include <FL/forms.H>

#include "maquettes_graphiques/objgraphiques/movepart.h"

class djack {
 public:
  // Body lbox long (the full travel as well) and hbox high, finger lfinger * hfinger; the anchor
  // (xpos, ypos) is the corner of the body from which the finger's travel counts. initial_delta is
  // the travel to start with, 0 (in) to lbox (out).
  djack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
        FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part,
        double initial_delta);

  // Commands for the coming react(). Both at once hold the finger, as does none.
  void activate_out() { outactive = 1; }
  void activate_in() { inactive = 1; }
  int is_out_activing() const { return outactive; }
  int is_in_activing() const { return inactive; }

  // Travels per react() from the next one on.
  void change_speeds(double new_outspeed, double new_inspeed) {
    outspeed = new_outspeed;
    inspeed = new_inspeed;
  }

  // One step of travel, within 0 and lbox; takes the commands. 1 when the travel changed (by more
  // than 0.001), else 0. The part follows in draw().
  int react();
  // Takes the last react() back.
  void unreact() { delta_finger = olddelta_finger; }

  // 1 when the finger is fully in (out), within 0.001.
  int in_stop() const { return delta_finger < 0.001; }
  int out_stop() const { return delta_finger > lbox - 0.001; }

  void partdraw() {
    if (plinked_part != nullptr) plinked_part->draw();
  }
  // Pushes this part from now on, or nothing when it is null. What was pushed stays where it is.
  void change_part(movepart* part) { plinked_part = part; }
  movepart* my_part() const { return plinked_part; }
  // The present travel, 0 to lbox.
  double my_travel() const { return delta_finger; }
  // The colour with which undraw() erases; FL_BACKGROUND_COLOR until then.
  void change_background(Fl_Color colour) { background_color = colour; }

  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lbox() const { return lbox; }
  FL_Coord my_hbox() const { return hbox; }
  FL_Coord my_lfinger() const { return lfinger; }
  FL_Coord my_hfinger() const { return hfinger; }

 protected:
  friend struct straight_jack;

  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lbox;
  FL_Coord hbox;
  FL_Coord lfinger;
  FL_Coord hfinger;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  double outspeed;
  double inspeed;
  double delta_finger;
  double olddelta_finger;
  int outactive = 0;
  int inactive = 0;
  movepart* plinked_part;
};

// The same but for the spring: without the out command the finger comes in by itself.
class sjack {
 public:
  sjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
        FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part,
        double initial_delta);

  void activate_out() { outactive = 1; }
  // Does nothing: the spring returns the finger.
  void activate_in() {}
  int is_out_activing() const { return outactive; }

  void change_speeds(double new_outspeed, double new_inspeed) {
    outspeed = new_outspeed;
    inspeed = new_inspeed;
  }

  int react();
  void unreact() { delta_finger = olddelta_finger; }

  int in_stop() const { return delta_finger < 0.001; }
  int out_stop() const { return delta_finger > lbox - 0.001; }

  void partdraw() {
    if (plinked_part != nullptr) plinked_part->draw();
  }
  void change_part(movepart* part) { plinked_part = part; }
  movepart* my_part() const { return plinked_part; }
  double my_travel() const { return delta_finger; }
  void change_background(Fl_Color colour) { background_color = colour; }

  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lbox() const { return lbox; }
  FL_Coord my_hbox() const { return hbox; }
  FL_Coord my_lfinger() const { return lfinger; }
  FL_Coord my_hfinger() const { return hfinger; }

 protected:
  friend struct straight_jack;

  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lbox;
  FL_Coord hbox;
  FL_Coord lfinger;
  FL_Coord hfinger;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  double outspeed;
  double inspeed;
  double delta_finger;
  double olddelta_finger;
  int outactive = 0;
  movepart* plinked_part;
};

// The variants. draw() pushes the part by the last step, takes that back with unreact() when the push
// is refused, and paints body, finger, piston's face and part; it needs a shown window. paint() paints
// the jack, without its part, as it stands into whatever is current and moves nothing, for a repaint
// from inside a widget's draw().

class rdjack : public djack {
 public:
  using djack::djack;
  void draw();
  void paint() const;
};

class ldjack : public djack {
 public:
  using djack::djack;
  void draw();
  void paint() const;
};

class bdjack : public djack {
 public:
  using djack::djack;
  void draw();
  // Moves the jack itself, not its travel, to anchor (x, y), then draws it.
  void draw(FL_Coord x, FL_Coord y);
  // Erases body and finger, and one pixel more to the right of and below the body.
  void undraw();
  void paint() const;
};

class tdjack : public djack {
 public:
  using djack::djack;
  void draw();
  void paint() const;
};

// Three of the single-acting ones always start fully in.

class rsjack : public sjack {
 public:
  rsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
         FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part);
  void draw();
  void paint() const;
};

class lsjack : public sjack {
 public:
  lsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
         FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part);
  void draw();
  void paint() const;
};

class bsjack : public sjack {
 public:
  using sjack::sjack;
  void draw();
  void draw(FL_Coord x, FL_Coord y);
  void undraw();
  void paint() const;
};

class tsjack : public sjack {
 public:
  tsjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
         FL_Coord my_lfinger, FL_Coord my_hfinger, double my_outspeed, double my_inspeed, movepart* part);
  void draw();
  void paint() const;
};

// Rotary: carries its part on the end of an arm of radius_finger pixels that turns about (xpos, ypos)
// between 0 and 360 degrees. Angles count from the right, growing clockwise on screen; speeds are
// degrees per react(). base_angle is stored and has no effect. The hub's disc has `radius` as its
// diameter and (xpos, ypos) as the corner of its bounding square; both are kept as scenes know them.
class hrdjack : public djack {
 public:
  hrdjack(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_radius, int my_base_angle,
          FL_Coord my_radius_finger, double my_outspeed, double my_inspeed, movepart* part,
          double initial_angle);
  // Moves the part's top-left corner to the arm's end (unreact() when that is refused), erases the
  // arm's old position in the part's background colour, paints hub, arm and part.
  void draw();
  // Paints hub and arm as they stand, moving nothing.
  void paint() const;

 protected:
  struct point {
    int x, y;
  };
  point arm_end(double degrees) const;

  FL_Coord radius;
  int base_angle;
  FL_Coord radius_finger;
};
