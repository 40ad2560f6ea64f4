#include "maquettes_graphiques/WAGONS/mine_scene.h"

#include "bibliocpp/formspp.h"

namespace {

constexpr FL_Coord track_left = 30;
constexpr FL_Coord track_right = 700;
constexpr FL_Coord wagon_length = 40;
constexpr FL_Coord wagon_height = 20;
constexpr FL_Coord upper_track = 150;
constexpr FL_Coord lower_track = 300;

cookwagon make_wagon(mine_class* p_mine, FL_Coord x, FL_Coord y, double speed, movepart* tray) {
  return {p_mine->mine, x,          y,           wagon_length, wagon_height,
          speed,        track_left, track_right, tray,         p_mine->simul->color()};
}

// A U open at the top around the wagon that stands at (x, y).
void build_tray(movepart& tray, FL_Coord x, FL_Coord y) {
  constexpr FL_Coord half = wagon_length / 2;
  constexpr FL_Coord thickness = 5;
  constexpr FL_Coord wall_height = 20;
  tray.add(x - half, y + thickness, wagon_length, thickness, FL_BLUE);
  tray.add(x + half, y - 10, thickness, wall_height, FL_BLUE);
  tray.add(x - half - thickness, y - 10, thickness, wall_height, FL_BLUE);
}

void draw_fixed_part() {
  dessine_entonnoir(100, 45, 40, 85, 1);
  dessine_entonnoir(600, 45, 40, 85, 1);
  dessine_entonnoir(300, 180, 40, 100, 0);
  fl_line(20, 170, 700, 170, FL_BLACK);
  fl_line(20, 320, 700, 320, FL_BLACK);
  fl_line(600, 340, 700, 380, FL_BLACK);
}

}  // namespace

mine_scene::mine_scene(mine_class* p_mine)
    : plateau_wA(man, p_mine->mine, p_mine->simul->color()),
      wA(make_wagon(p_mine, 200, upper_track, 1.5, &plateau_wA)),
      plateau_wB(man, p_mine->mine, p_mine->simul->color()),
      wB(make_wagon(p_mine, 500, upper_track, 1.5, &plateau_wB)),
      plateau_wC(man, p_mine->mine, p_mine->simul->color()),
      wC(make_wagon(p_mine, 400, lower_track, 3.0, &plateau_wC)),
      floor(man, p_mine->mine, p_mine->simul->color()) {
  build_tray(plateau_wA, 200, upper_track);
  build_tray(plateau_wB, 500, upper_track);
  build_tray(plateau_wC, 400, lower_track);
}

void dessine_entonnoir(FL_Coord xpos, FL_Coord ypos, FL_Coord l, FL_Coord h, int plein) {
  constexpr FL_Coord rim = 10;    // height of the upright walls, width of the slopes
  constexpr FL_Coord spout = 15;  // where the spout begins, below the top
  const FL_Coord half = l / 2;
  for (const int inwards : {1, -1}) {
    const FL_Coord wall = xpos - inwards * half;
    const FL_Coord spout_wall = wall + inwards * rim;
    fl_line(wall, ypos, wall, ypos + rim, FL_BLACK);
    fl_line(wall, ypos + rim, spout_wall, ypos + spout, FL_BLACK);
    fl_line(spout_wall, ypos + spout, spout_wall, ypos + h, FL_BLACK);
  }
  if (plein != 0) fl_rectf(xpos - half, ypos - rim, l + 1, 2 * rim, FL_BLACK);
}

void dessiner(mine_class* p_mine, movepart_manager& man, cookwagon& wA, cookwagon& wB, cookwagon& wC) {
  p_mine->mine->make_current();
  draw_fixed_part();
  wA.draw();
  wB.draw();
  wC.draw();
  man.draw();
}

void paint(const mine_scene& scene) {
  draw_fixed_part();
  scene.wA.paint();
  scene.wB.paint();
  scene.wC.paint();
  scene.man.paint();
}
