#pragma once
// A vehicle on a horizontal track, with a moving part on it that gives it a body in the collision
// test, and its drawn form, the coal wagon.
//
// Calling order in each cycle: right(), left() or stop(); react(); draw(). Positions are pixels of
// the window, speeds pixels per react(), positive to the right. Halves and quarters of the length
// and height are integer divisions.

#include <FL/forms.H>

#include "maquettes_graphiques/objgraphiques/movepart.h"

class wagon {
 public:
  // At rest and empty, its centre at my_xpos; the body's top is 15 pixels above my_ypos. Its ends
  // (centre +- my_l / 2) stay between my_xpos_min and my_xpos_max. my_h sizes wheels and erased
  // band. The carried part is not owned and must outlive the wagon.
  wagon(FL_FORM* my_assoc_forms, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_l, FL_Coord my_h,
        double my_speed_ref, FL_Coord my_xpos_min, FL_Coord my_xpos_max, movepart* my_plinked_part,
        Fl_Color my_background_color);

  // Commands: take effect on the speed at once, on the position at the next react().
  void right() { speed = speed_ref; }
  void left() { speed = -speed_ref; }
  void stop() { speed = 0.0; }

  // Advances by the speed, clamped to the track; 1 when the position changed, else 0. The carried
  // part follows in draw().
  int react();
  // Takes the last react() back.
  void unreact() { xpos = oldxpos; }

  void load() { loaded = 1; }
  void unload() { loaded = 0; }
  int is_loaded() const { return loaded; }

  // The speed that right() and left() will give. A moving wagon keeps its speed until then; a wagon
  // at rest (below 0.001) is deliberately set off at once, to the left when its speed is exactly 0.
  void change_speed_ref(double new_speed_ref);

  // 1 when an end stands exactly at its limit, which a clamped step guarantees.
  int left_stop() const { return xpos - half_length() == xpos_min; }
  int right_stop() const { return xpos + half_length() == xpos_max; }
  // The centre, rounded half away from zero.
  int my_xpos() const;
  void change_background(Fl_Color colour) { background_color = colour; }

 protected:
  FL_Coord half_length() const { return l / 2; }

  FL_FORM* associate_forms;
  Fl_Color background_color;
  double xpos;
  double ypos;
  double oldxpos;
  double xpos_min;
  double xpos_max;
  FL_Coord l;
  FL_Coord h;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  double speed = 0.0;
  double speed_ref;
  movepart* plinked_part;
  int loaded = 0;
};

class cookwagon : public wagon {
 public:
  using wagon::wagon;

  // Moves the carried part by half of the last displacement, takes the last react() back when that
  // move is refused, and paints the wagon and the part. Called twice a cycle it makes the part keep
  // up; called more or less often, the part runs ahead or lags.
  void draw();
  // Paints the wagon as it stands into whatever is current and moves nothing, for a repaint from
  // inside a widget's draw(). The carried part paints itself.
  void paint() const;

 private:
  void erase_band_left_behind() const;
  void paint_wheels(double centre, Fl_Color colour) const;
};
