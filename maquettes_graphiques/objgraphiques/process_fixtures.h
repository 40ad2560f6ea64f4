#pragma once
// Small fixtures of process mock-ups: a tank (cuve), a valve (vanne), a mixer (melangeur), a heating
// element (resistor) and a trapdoor (trappe).
//
// Calling order in each cycle: the commands; react() where there is one; draw(). Positions and sizes
// are pixels of the window, angles radians. Both colours are FL_BACKGROUND_COLOR until the scene sets
// them, so before the first drawing: change_background() takes the colour of what lies behind the
// fixture, change_foreground() that of the fixture (of a tank: of the liquid). Only a tank's draw()
// makes its window current; for the others the caller does. paint() paints a fixture as it stands,
// whole, into whatever is current, and changes nothing, for a repaint from inside a widget's draw().

#include <FL/forms.H>

class cuve {
 public:
  // The tank's bottom left corner is (xpos, ypos), it is lbox wide and hbox high. Levels count in
  // pixels from the bottom: the marks min_hpos and max_hpos, of which the tests below tell, and the
  // level to start with. convspeed is the flow that makes the level rise by one pixel a react(), not
  // 0. opencuve deliberately paints a closed outline when it is not 0, and an open top when it is.
  cuve(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
       FL_Coord my_min_hpos, FL_Coord my_max_hpos, FL_Coord initial_hpos, double my_convspeed,
       int my_opencuve);

  // Flows per react(), in the unit of convspeed, until changed; both 0 at first.
  void change_in(double flow) { inspeed = flow; }
  void change_out(double flow) { outspeed = flow; }

  // One step of the level, which stays within 0 and hbox - 1: liquid beyond that is lost. 1 while
  // the two flows differ (by more than 0.001), also when the level can go no further; else 0.
  int react();

  // 1 while the level is at the lower mark or below; so also in a dry tank whose mark is 0.
  int empty() const { return hpos <= min_hpos; }
  // 1 while the level is at the upper mark or above. A mark at hbox or beyond is never reached.
  int full() const { return hpos >= max_hpos; }
  // 1 while the level is the highest there is, hbox - 1: more would run over.
  int overfull() const { return hpos >= hbox - 1; }

  void draw();
  void paint() const;

  void change_background(Fl_Color colour) { background_color = colour; }
  void change_foreground(Fl_Color colour) { foreground_color = colour; }
  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lbox() const { return lbox; }
  FL_Coord my_hbox() const { return hbox; }
  FL_Coord my_min_hpos() const { return min_hpos; }
  FL_Coord my_max_hpos() const { return max_hpos; }
  double my_hpos() const { return hpos; }

 protected:
  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  Fl_Color foreground_color = FL_BACKGROUND_COLOR;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lbox;
  FL_Coord hbox;
  FL_Coord min_hpos;
  FL_Coord max_hpos;
  double hpos;
  double convspeed;
  double outspeed = 0.0;
  double inspeed = 0.0;
  int opencuve;
};

class vanne {
 public:
  // Centre (xpos, ypos), pipe lg long and pdiam wide, gate gdiam across. `horizontale`: the pipe lies.
  vanne(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, FL_Coord my_pdiam,
        FL_Coord my_gdiam, int open, int my_horizontale);

  void open() { openvanne = 1; }
  void close() { openvanne = 0; }
  int is_open() const { return openvanne; }
  int is_close() const { return !openvanne; }

  // Clears the gate's square when the state has changed since the last draw(), then paints pipe and
  // gate: a bar along the pipe when open, across it when closed.
  void draw();
  void paint() const;

  void change_background(Fl_Color colour) { background_color = colour; }
  void change_foreground(Fl_Color colour) { foreground_color = colour; }
  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lg() const { return lg; }
  FL_Coord my_pdiam() const { return pdiam; }
  FL_Coord my_gdiam() const { return gdiam; }

 protected:
  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  Fl_Color foreground_color = FL_BACKGROUND_COLOR;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lg;
  FL_Coord pdiam;
  FL_Coord gdiam;
  int openvanne;
  int last_draw_openvanne;
  int horizontale;
};

class melangeur {
 public:
  // Centre (xpos, ypos), blades diam long; at rest, the blades at 40 radians.
  melangeur(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_diam);

  // Radians per react(), clockwise on screen when positive; below 0.001 the mixer stands still.
  void change_speed(double radians) { speed = radians; }
  double my_speed() const { return speed; }

  void react();

  // Erases the blades of before the last react() while the speed is not 0 (a mixer at rest erases
  // nothing), then paints blades and rim.
  void draw();
  void paint() const;
  // Draws the two blades at angle a, in the current colour.
  void cr_draw(double a) const;

  void change_background(Fl_Color colour) { background_color = colour; }
  void change_foreground(Fl_Color colour) { foreground_color = colour; }
  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_diam() const { return diam; }
  double my_angle() const { return angle; }

 protected:
  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  Fl_Color foreground_color = FL_BACKGROUND_COLOR;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord diam;
  double angle = 40.0;
  double angle_anc = 0.0;
  double speed = 0.0;
};

class resistor {
 public:
  // A hairpin coil around the centre (xpos, ypos), lg long and h high; cold.
  resistor(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, FL_Coord my_h);

  void heat() { heating = 1; }
  void unheat() { heating = 0; }
  int is_heating() const { return heating; }

  // Paints the coil 5 pixels wide, red while it heats, and leaves the line style solid and thin.
  void draw();
  void paint() const;

  void change_background(Fl_Color colour) { background_color = colour; }
  void change_foreground(Fl_Color colour) { foreground_color = colour; }
  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lg() const { return lg; }
  FL_Coord my_h() const { return h; }

 protected:
  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  Fl_Color foreground_color = FL_BACKGROUND_COLOR;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lg;
  FL_Coord h;
  int heating = 0;
  int last_draw_heating = 0;  // reserved: the coil is always painted whole
};

class trappe {
 public:
  // A flap lg long on a hinge at (xpos, ypos). Closed it lies to the right of the hinge (horizontale)
  // or hangs below it; `angle` is its opening in radians, from the closed position anticlockwise for
  // a horizontal one, and from the upright for a vertical one, clockwise.
  trappe(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, double my_angle, int open,
         int my_horizontale);

  void open() { opentrappe = 1; }
  void close() { opentrappe = 0; }
  int is_open() const { return opentrappe; }
  int is_close() const { return !opentrappe; }
  double my_angle() const { return angle; }

  // When the state has changed since the last draw(), a horizontal flap is first erased in its former
  // position; a vertical one deliberately in its new one, so that its former picture stays.
  void draw();
  void paint() const;

  void change_background(Fl_Color colour) { background_color = colour; }
  void change_foreground(Fl_Color colour) { foreground_color = colour; }
  FL_Coord my_xpos() const { return xpos; }
  FL_Coord my_ypos() const { return ypos; }
  FL_Coord my_lg() const { return lg; }

 protected:
  void flap(int as_open, Fl_Color colour) const;

  FL_FORM* associate_forms;
  Fl_Color background_color = FL_BACKGROUND_COLOR;
  Fl_Color foreground_color = FL_BACKGROUND_COLOR;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  FL_Coord xpos;
  FL_Coord ypos;
  FL_Coord lg;
  double angle;
  int opentrappe;
  int last_draw_opentrappe;
  int horizontale;
};
