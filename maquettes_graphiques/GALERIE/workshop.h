#pragma once
// The workshop: a piece falls from the hopper through a trapdoor onto a belt, is pushed onto a
// turntable, carried by a rotary arm to a wagon, and by the wagon back below the hopper, where a lift
// that is not shown takes it up.

#include <FL/forms.H>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/objgraphiques.h"

struct workshop_speeds {
  double belt;  // pixels a cycle, as are the pusher's and the wagon's
  double pusher;
  double table;  // degrees a cycle, as is the arm's
  double arm;
  double wagon;
};

class workshop {
 public:
  // Places everything in the window's upper left; it is to be built before the window is shown.
  explicit workshop(FL_FORM* a_window);
  workshop(const workshop&) = delete;
  workshop& operator=(const workshop&) = delete;

  void change_speeds(const workshop_speeds& speeds);
  // One cycle: obeys, moves and draws in the shown window.
  void advance(const commands& wanted);
  void report(sensors& seen) const;
  // By hand: whatever became of the piece, there is one in the hopper.
  void new_piece();
  // Paints everything as it stands into whatever is current and moves nothing.
  void paint() const;

 private:
  enum class places { hopper, falling_to_belt, belt, pusher, table, arm, falling_to_wagon, wagon, floor };

  void drop_piece(const commands& wanted);
  void run_belt(const commands& wanted);
  void push(const commands& wanted);
  void turn_table(const commands& wanted);
  void swing_arm(const commands& wanted);
  void drive_wagon(const commands& wanted);
  void put_piece(places to, int x, int y);
  bool fallen();  // lets the piece fall by a pixel; true when it lies on something
  bool arm_at_start() const;
  bool piece_to_be_taken() const;
  void paint_lines() const;

  FL_FORM* window;
  movepart_manager man;
  movepart_manager above;  // what passes over the pieces: pusher's plate and arm's magnet
  movepart piece, sill, end_stop, ground, tray, plate, magnet;
  trappe trapdoor;
  hbelt belt;
  bdjack pusher;
  rbelt table;
  hrdjack arm;
  cookwagon wagon;
  places where = places::hopper;
};
