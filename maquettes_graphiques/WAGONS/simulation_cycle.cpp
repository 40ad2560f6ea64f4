#include "maquettes_graphiques/WAGONS/simulation_cycle.h"

#include <FL/Fl.H>
#include <FL/forms.H>

#include <cstdlib>
#include <iostream>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/mock_up/run_end.h"

namespace {

// Stations: positions of a wagon's centre, in pixels.
constexpr int loading_A = 100;
constexpr int loading_B = 600;
constexpr int unloading_AB = 300;
constexpr int waiting_A = 230;
constexpr int waiting_B = 370;
constexpr int loading_C = 300;
constexpr int unloading_C = 650;

int is_at(const wagon& w, int station) {
  constexpr int reach = 10;
  return std::abs(w.my_xpos() - station) < reach;
}

constexpr const char* A_not_at_loading =
    "ERREUR:\n Le wagon A n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* B_not_at_loading =
    "ERREUR:\n Le wagon B n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* C_not_at_loading =
    "ERREUR:\n Le wagon C n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
constexpr const char* A_not_at_unloading =
    "ERREUR:\n Le wagon A n'etait pas à son poste de dechargement: aucun remplissage possible du wagon C !!!";
constexpr const char* B_not_at_unloading =
    "ERREUR:\n Le wagon B n'etait pas à son poste de dechargement: aucun remplissage possible du wagon C !!!";
constexpr const char* C_not_at_unloading =
    "ERREUR:\n Le wagon C a ete vide hors de son poste de dechargement!!!";

void fault(simulation& run, const char* text) {
  run.termine = 1;
  if (!run_end_requested()) fl_show_Smessages(text);
}

void empty_all_by_hand(mine_scene& scene) {
  scene.wA.unload();
  scene.wB.unload();
  scene.wC.unload();
}

void change_speed(wagon& w, const Fl_Roller* reference, const char* trace, const Fl_Roller* shown) {
  w.change_speed_ref(reference->value());
  std::cerr << trace << shown->value() << std::endl;
}

// One widget a cycle; the others wait in FLTK's queue. The desk buttons come through it too and are
// dropped: they count only as inputs, while they are held down.
void heed_operator(simulation& run) {
  mine_class& panel = *run.p_mine;
  mine_scene& scene = run.scene;
  Fl::check();
  if (!panel.mine->shown()) return;
  const FL_OBJECT* const obj = Fl::readqueue();
  if (obj == panel.reglage_vitesse_A)
    change_speed(scene.wA, panel.reglage_vitesse_A, "vitesse A: ", panel.reglage_vitesse_A);
  else if (obj == panel.reglage_vitesse_B)
    // Deliberate: B takes the value of roller A, while the trace tells that of roller B.
    change_speed(scene.wB, panel.reglage_vitesse_A, "vitesse B: ", panel.reglage_vitesse_B);
  else if (obj == panel.reglage_vitesse_C)
    change_speed(scene.wC, panel.reglage_vitesse_C, "vitesse C: ", panel.reglage_vitesse_C);
  else if (obj == panel.bouton_about)
    fl_show_ms();
  else if (obj == panel.bouton_quit)
    run.termine = 1;
  else if (obj == panel.bouton_redraw)
    dessiner(&panel, scene.man, scene.wA, scene.wB, scene.wC);
  else if (obj == panel.bouton_intervention)
    empty_all_by_hand(scene);
}

// Controllers may read while a batch is being written: the order is part of the contract.
void publish_sensors(simulation& run) {
  const mine_class& panel = *run.p_mine;
  const mine_scene& scene = run.scene;
  const auto write = [&run](int input, int value) { run.mem->setreset_input(input, value != 0); };
  write(entree::wAplein, scene.wA.is_loaded());
  write(entree::wAvide, !scene.wA.is_loaded());
  write(entree::wBplein, scene.wB.is_loaded());
  write(entree::wBvide, !scene.wB.is_loaded());
  write(entree::wCvide, !scene.wC.is_loaded());
  write(entree::pcA, is_at(scene.wA, loading_A));
  write(entree::pedA, is_at(scene.wA, waiting_A));
  write(entree::pcB, is_at(scene.wB, loading_B));
  write(entree::pedB, is_at(scene.wB, waiting_B));
  write(entree::pcC, is_at(scene.wC, loading_C));
  write(entree::pdC, is_at(scene.wC, unloading_C));
  write(entree::pdAB, is_at(scene.wA, unloading_AB) || is_at(scene.wB, unloading_AB));
  write(entree::init, fl_get_button(panel.bouton_init));
  write(entree::ac, fl_get_button(panel.bouton_ac));
  write(entree::dc, fl_get_button(panel.bouton_dc));
  write(entree::atu, fl_get_button(panel.bouton_atu));
  run.mem->inputs_go();
}

bool active(int output) { return actionneur[output] == 1; }

// Both directions at once deliberately leave the wagon as it was.
void command(wagon& w, bool to_the_right, bool to_the_left) {
  if (to_the_right && to_the_left) return;
  if (to_the_right)
    w.right();
  else if (to_the_left)
    w.left();
  else
    w.stop();
}

void command_motion(mine_scene& scene) {
  command(scene.wA, active(sortie::A_DROITE), active(sortie::A_GAUCHE));
  command(scene.wB, active(sortie::B_DROITE), active(sortie::B_GAUCHE));
  command(scene.wC, active(sortie::C_DROITE), active(sortie::C_GAUCHE));
}

void fill(simulation& run, wagon& w, int station, const char* not_there) {
  if (is_at(w, station))
    w.load();
  else
    fault(run, not_there);
}

// Whatever is wrong, the wagon has lost its load by then. C is looked at first.
void empty_into_C(simulation& run, wagon& w, const char* not_there) {
  if (!w.is_loaded()) return;
  w.unload();
  if (!is_at(run.scene.wC, loading_C))
    fault(run, C_not_at_loading);
  else if (!is_at(w, unloading_AB))
    fault(run, not_there);
  else
    run.scene.wC.load();
}

void empty_C(simulation& run) {
  wagon& wC = run.scene.wC;
  if (!wC.is_loaded()) return;
  wC.unload();
  if (!is_at(wC, unloading_C)) fault(run, C_not_at_unloading);
}

// A fault does not keep the others of the same cycle from being seen.
void transfer_coal(simulation& run) {
  mine_scene& scene = run.scene;
  if (active(sortie::REMPLIR_A)) fill(run, scene.wA, loading_A, A_not_at_loading);
  if (active(sortie::VIDER_A)) empty_into_C(run, scene.wA, A_not_at_unloading);
  if (active(sortie::REMPLIR_B)) fill(run, scene.wB, loading_B, B_not_at_loading);
  if (active(sortie::VIDER_B)) empty_into_C(run, scene.wB, B_not_at_unloading);
  if (active(sortie::VIDER_C)) empty_C(run);
}

void advance_and_draw(simulation& run) {
  mine_scene& scene = run.scene;
  dessiner(run.p_mine, scene.man, scene.wA, scene.wB, scene.wC);
  for (cookwagon* const w : {&scene.wA, &scene.wB, &scene.wC}) {
    w->react();
    w->draw();
  }
}

void set_roller(Fl_Roller* roller, double value) {
  roller->range(0.1, 3.0);
  roller->value(value);
  roller->step(0.1);
}

}  // namespace

void show_mine(simulation& run) {
  mine_class& panel = *run.p_mine;
  mine_scene& scene = run.scene;
  panel.paint_with_window([&scene] { paint(scene); });
  fl_show_form(panel.mine, FL_PLACE_CENTER | FL_FREE_SIZE, FL_FULLBORDER, "mine de charbon");
  dessiner(&panel, scene.man, scene.wA, scene.wB, scene.wC);
  set_roller(panel.reglage_vitesse_A, 1.5);
  set_roller(panel.reglage_vitesse_B, 1.5);
  set_roller(panel.reglage_vitesse_C, 3.0);
}

int goes_on(const simulation& run) {
  return !run.termine && !run_end_requested() && run.p_mine->mine->shown();
}

void simulation_cycle(simulation& run) {
  heed_operator(run);
  publish_sensors(run);
  actuator_set(run.mem);
  command_motion(run.scene);
  transfer_coal(run);
  // The operator may have closed it meanwhile, and there is no drawing in a window that is gone.
  if (run.p_mine->mine->shown()) advance_and_draw(run);
}
