#include "maquettes_graphiques/WAGONS/mine.h"

#include <utility>

#include "maquettes_graphiques/mock_up/scene_window.h"

namespace {

template <typename Widget>
Widget* add(int x, int y, int w, int h, const char* label) {
  auto* const widget = new Widget(x, y, w, h, label);
  widget->labelfont(FL_TIMES);
  return widget;
}

void add_caption(int x, int y, int w, int h, const char* label) {
  auto* const caption = add<Fl_Box>(x, y, w, h, label);
  caption->box(FL_FLAT_BOX);
  caption->selection_color(FL_LIGHT1);
  caption->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
}

Fl_Roller* add_roller(int x, int y, int w, int h, const char* label) {
  auto* const roller = add<Fl_Roller>(x, y, w, h, label);
  roller->type(FL_HORIZONTAL);
  return roller;
}

}  // namespace

// The order of creation is the order of drawing.
mine_class::mine_class() {
  mine = new scene_window(925, 400, "olmera");
  mine->box(FL_NO_BOX);
  mine->user_data(this);
  // Higher than the window, so that its lower edge does not show.
  auto* const panel = new Fl_Box(0, 0, 925, 560);
  panel->box(FL_UP_BOX);
  simul = add<Fl_Box>(10, 10, 705, 380, nullptr);
  simul->box(FL_ENGRAVED_BOX);
  bouton_about = add<Fl_Button>(365, 345, 70, 35, "A propos");
  bouton_quit = add<Fl_Button>(760, 345, 80, 35, "Quit");
  bouton_intervention = add<Fl_Button>(760, 235, 80, 35, "Interv.");
  bouton_ac = add<Fl_Button>(725, 129, 70, 20, "ac");
  add_caption(800, 129, 80, 20, "stop cycle");
  bouton_dc = add<Fl_Button>(725, 89, 70, 20, "dc");
  add_caption(800, 89, 80, 20, "start cycle");
  bouton_atu = add<Fl_Button>(725, 169, 70, 20, "ATU");
  add_caption(800, 169, 95, 20, "arret d'urgence");
  bouton_init = add<Fl_Button>(725, 49, 70, 20, "init");
  add_caption(800, 49, 80, 20, "initialisation");
  bouton_redraw = add<Fl_Button>(760, 295, 80, 35, "Redessiner");
  reglage_vitesse_A = add_roller(45, 350, 70, 20, "Vitesse A");
  reglage_vitesse_B = add_roller(125, 350, 70, 20, "Vitesse B");
  reglage_vitesse_C = add_roller(205, 350, 70, 20, "Vitesse C");
  mine->end();
}

void mine_class::paint_with_window(std::function<void()> paint) {
  static_cast<scene_window*>(mine)->scene(std::move(paint));
}
