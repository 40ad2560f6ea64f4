#include "maquettes_graphiques/GALERIE/workshop.h"

#include <cstdlib>

#include "bibliocpp/formspp.h"

namespace {

constexpr Fl_Color background = FL_BACKGROUND_COLOR;
constexpr int piece_size = 20;
constexpr int half_piece = piece_size / 2;

// The lane of the piece: under the hopper, along the belt, down to the turntable.
constexpr int hopper_x = 80, hopper_y = 60;
constexpr int belt_left = 50, belt_top = 150, belt_length = 286, belt_width = 30;
constexpr int lane_top = belt_top + (belt_width - piece_size) / 2;
constexpr int pusher_x = 320, pusher_top = 50, pusher_travel = 62, pusher_width = 24;
constexpr int pusher_left = pusher_x - pusher_width / 2;
constexpr int plate_top = lane_top - 12, plate_height = 5;

constexpr int axle_x = pusher_x, axle_y = 275, ring = 55, disc = 40;
constexpr int arm_length = 75, arm_x = axle_x + ring + arm_length, arm_y = axle_y;
constexpr int magnet_size = 8;
constexpr int reach = 10;  // how near to its place a piece is seen and held

constexpr int track_y = 370, wagon_length = 40, wagon_height = 20;
constexpr int dock_x = arm_x + arm_length;

cookwagon make_wagon(FL_FORM* window, movepart* tray) {
  return {window,
          dock_x,
          track_y,
          wagon_length,
          wagon_height,
          1.5,
          hopper_x - wagon_length / 2,
          dock_x + wagon_length / 2,
          tray,
          background};
}

void paint_captions() {
  struct caption {
    const char* text;
    int x, y;
  };
  constexpr caption captions[] = {
      {"trappe", hopper_x + 26, hopper_y + 18},   {"hbelt", belt_left + 100, belt_top - 6},
      {"bdjack", pusher_x + 18, pusher_top + 40}, {"rbelt", axle_x - ring - 55, axle_y},
      {"hrdjack", arm_x - 10, arm_y + 34},        {"cookwagon", belt_left, track_y + 38}};
  fl_font(FL_TIMES, 14);
  fl_color(FL_BLACK);
  for (const caption& c : captions) fl_draw(c.text, c.x, c.y);
}

}  // namespace

workshop::workshop(FL_FORM* a_window)
    : window(a_window),
      piece(man, window, background),
      sill(man, window, background),
      end_stop(man, window, background),
      ground(man, window, background),
      tray(man, window, background),
      plate(above, window, background),
      magnet(above, window, background),
      trapdoor(window, hopper_x - 20, hopper_y + half_piece + 4, 40, -1.4, 0, 1),
      belt(window, belt_left, belt_top, belt_length, belt_width, 1.5),
      pusher(window, pusher_left, pusher_top, pusher_travel, pusher_width, plate_top - pusher_top, 6, 1.5,
             1.5, &plate, 0.0),
      table(window, axle_x, axle_y, disc, disc / 4, 1.0),
      arm(window, arm_x, arm_y, 16, 0, arm_length, 1.0, 1.0, &magnet, 180.0),
      wagon(make_wagon(window, &tray)) {
  piece.add(hopper_x - half_piece, hopper_y - half_piece, piece_size, piece_size, FL_DARK_YELLOW);
  piece.add(hopper_x - 4, hopper_y - 4, 8, 8, FL_BLACK);
  // Obstacles that are not painted: what the piece lands on and runs into.
  sill.add(belt_left, lane_top + piece_size, 60, 4, background);
  end_stop.add(pusher_x + half_piece, belt_top, 6, belt_width, background);
  ground.add(belt_left, track_y + 30, 560, 5, background);
  tray.add(dock_x - 20, track_y + 5, 40, 5, FL_BLUE);
  tray.add(dock_x + 20, track_y - 10, 5, 20, FL_BLUE);
  tray.add(dock_x - 25, track_y - 10, 5, 20, FL_BLUE);
  plate.add(pusher_left, plate_top, pusher_width, plate_height, FL_DARK_GREEN);
  magnet.add(arm_x - arm_length, arm_y, magnet_size, magnet_size, FL_DARK_GREEN);
  trapdoor.change_background(background);
  trapdoor.change_foreground(FL_BLACK);
  pusher.change_background(background);
}

void workshop::change_speeds(const workshop_speeds& speeds) {
  belt.change_speed(speeds.belt);
  pusher.change_speeds(speeds.pusher, speeds.pusher);
  table.change_speed(speeds.table);
  arm.change_speeds(speeds.arm, speeds.arm);
  wagon.change_speed_ref(speeds.wagon);
}

void workshop::advance(const commands& wanted) {
  window->make_current();
  paint_lines();
  drop_piece(wanted);
  run_belt(wanted);
  push(wanted);
  turn_table(wanted);
  swing_arm(wanted);
  drive_wagon(wanted);
  if (where != places::wagon) piece.draw();
  magnet.draw();
}

void workshop::drop_piece(const commands& wanted) {
  wanted[sortie::OUVRIR_TRAPPE] ? trapdoor.open() : trapdoor.close();
  trapdoor.draw();
  if (where == places::hopper && trapdoor.is_open()) where = places::falling_to_belt;
  if (where != places::falling_to_belt) return;
  belt.paint();
  if (!fallen()) return;
  where = places::belt;
  belt.add_ppart(&piece);
}

void workshop::run_belt(const commands& wanted) {
  if (wanted[sortie::TAPIS]) belt.activate();
  if (!belt.react()) return;
  belt.redraw();
  belt.paint();  // over what the piece has erased in the colour of the ground
}

// The plate takes the piece along as soon as it touches it, and leaves it when it draws back.
void workshop::push(const commands& wanted) {
  if (wanted[sortie::POUSSER]) pusher.activate_out();
  if (wanted[sortie::RECULER]) pusher.activate_in();
  const bool touches = std::abs(piece.actual_first_xpos() - (pusher_x - half_piece)) < reach &&
                       plate.actual_last_ypos() >= lane_top - 1;
  if (where == places::belt && touches && pusher.is_out_activing() && !pusher.is_in_activing()) {
    hand_over(piece, belt, plate);
    where = places::pusher;
  }
  if (where == places::pusher && (pusher.out_stop() || pusher.is_in_activing())) {
    plate.unlink();
    where = pusher.out_stop() ? places::table : places::belt;
    where == places::table ? table.add_ppart(&piece) : belt.add_ppart(&piece);
  }
  const bool moved = pusher.react();
  pusher.draw();
  if (!moved) return;
  // A finger that draws back leaves itself behind.
  fl_rectf(pusher_left, plate.actual_last_ypos(), pusher_width, 2 * plate_height, background);
  belt.paint();
  pusher.paint();
  plate.draw();
}

void workshop::turn_table(const commands& wanted) {
  if (wanted[sortie::TABLE]) table.activate();
  if (!table.react()) return;
  fl_circf(axle_x - disc - 1, axle_y - disc - 1, 2 * disc + 2, background);  // the old radius
  table.redraw();
}

bool workshop::arm_at_start() const {
  return magnet.actual_first_xpos() < arm_x && magnet.actual_first_ypos() >= arm_y - 4;
}

bool workshop::piece_to_be_taken() const {
  return where == places::table &&
         std::abs(piece.actual_first_xpos() + half_piece - (axle_x + ring)) < reach &&
         std::abs(piece.actual_first_ypos() + half_piece - axle_y) < reach;
}

void workshop::swing_arm(const commands& wanted) {
  if (wanted[sortie::AIMANT] && arm_at_start() && piece_to_be_taken()) {
    table.supp_ppart(&piece);
    where = places::arm;
  }
  if (where == places::arm && !wanted[sortie::AIMANT]) {
    where = arm_at_start() ? places::table : places::falling_to_wagon;
    if (where == places::table) table.add_ppart(&piece);
  }
  if (wanted[sortie::BRAS_ALLER]) arm.activate_out();
  if (wanted[sortie::BRAS_RETOUR] && !arm_at_start()) arm.activate_in();
  if (!arm.react()) return;
  arm.draw();
  if (where == places::arm)
    piece.absmoveredraw(magnet.actual_first_xpos() - half_piece, magnet.actual_first_ypos() - half_piece);
}

void workshop::drive_wagon(const commands& wanted) {
  if (where == places::falling_to_wagon && fallen()) {
    const bool in_tray = std::abs(piece.actual_first_xpos() + half_piece - wagon.my_xpos()) < half_piece &&
                         piece.actual_first_ypos() < track_y;
    where = in_tray ? places::wagon : places::floor;
    if (in_tray) {
      put_piece(places::wagon, -100, -100);
      wagon.load();
    }
  }
  if (where == places::wagon && wanted[sortie::VIDER_CHARIOT] && wagon.left_stop()) new_piece();
  const bool to_the_right = wanted[sortie::CHARIOT_DROITE];
  const bool to_the_left = wanted[sortie::CHARIOT_GAUCHE];
  if (to_the_right == to_the_left)
    wagon.stop();
  else
    to_the_right ? wagon.right() : wagon.left();
  wagon.react();
  wagon.draw();
  wagon.draw();
}

bool workshop::fallen() {
  const double before = piece.actual_precision_first_ypos();
  piece.fall();
  return piece.actual_precision_first_ypos() == before;
}

void workshop::put_piece(places to, int x, int y) {
  belt.supp_all_ppart();
  table.supp_all_ppart();
  plate.unlink();
  piece.absmoveredraw(x, y);
  where = to;
}

void workshop::new_piece() {
  wagon.unload();
  put_piece(places::hopper, hopper_x - half_piece, hopper_y - half_piece);
}

void workshop::report(sensors& seen) const {
  seen[entree::piece_tremie] = where == places::hopper;
  seen[entree::piece_tapis] = where == places::belt;
  seen[entree::piece_poste] =
      where == places::belt && piece.actual_last_xpos() >= pusher_x + half_piece - reach / 2;
  seen[entree::poussoir_rentre] = pusher.in_stop();
  seen[entree::poussoir_sorti] = pusher.out_stop();
  seen[entree::piece_table] = where == places::table;
  seen[entree::piece_prise] = piece_to_be_taken();
  seen[entree::bras_depart] = arm_at_start();
  seen[entree::bras_arrivee] = arm.out_stop();
  seen[entree::piece_chariot] = wagon.is_loaded();
  seen[entree::chariot_quai] = wagon.right_stop();
  seen[entree::chariot_tremie] = wagon.left_stop();
}

// What moving objects may rub out.
void workshop::paint_lines() const {
  for (const int side : {-22, 22})
    fl_line(hopper_x + side, hopper_y - 30, hopper_x + side, hopper_y + half_piece, FL_BLACK);
  fl_line(belt_left, belt_top + belt_width, belt_left + belt_length, belt_top + belt_width, FL_BLACK);
  fl_color(FL_BLACK);
  constexpr int rim = ring + half_piece + 5;
  fl_arc(axle_x - rim, axle_y - rim, 2 * rim, 2 * rim, 0, 360);
  fl_line(belt_left, track_y + 20, belt_left + 530, track_y + 20, FL_BLACK);
}

void workshop::paint() const {
  paint_lines();
  paint_captions();
  trapdoor.paint();
  belt.paint();
  pusher.paint();
  plate.paint();
  table.paint();
  arm.paint();
  wagon.paint();
  tray.paint();
  if (where != places::wagon) piece.paint();
  magnet.paint();
}
