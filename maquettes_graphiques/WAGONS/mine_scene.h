#pragma once
// The scene of the mine: three wagons with their trays on two tracks, between hoppers.

#include <FL/forms.H>

#include "maquettes_graphiques/WAGONS/mine.h"
#include "maquettes_graphiques/objgraphiques.h"

// The moving objects of one run, placed in the panel's window in the colour of its scene. Wagons A
// and B stand on the upper track at x = 200 and 500, C on the lower one at 400; C starts twice as
// fast. Built before the window is shown, destroyed after it is hidden or gone.
struct mine_scene {
  explicit mine_scene(mine_class* p_mine);

  movepart_manager man;
  movepart plateau_wA;  // tray: the wagon's body in the collision test
  cookwagon wA;
  movepart plateau_wB;
  cookwagon wB;
  movepart plateau_wC;
  cookwagon wC;
  movepart floor;  // registered, without boxes
};

// Draws a hopper: centre line xpos, top ypos, width l, total height h (pixels); full of coal when
// plein is not 0. Needs a current window.
void dessine_entonnoir(FL_Coord xpos, FL_Coord ypos, FL_Coord l, FL_Coord h, int plein);

// Draws the whole scene into the panel's shown window, over what is there. Drawing a wagon moves its
// tray, see cookwagon::draw().
void dessiner(mine_class* p_mine, movepart_manager& man, cookwagon& wA, cookwagon& wB, cookwagon& wC);

// Paints the scene as it stands into whatever is current and moves nothing, for a repaint from
// inside a widget's draw().
void paint(const mine_scene& scene);
