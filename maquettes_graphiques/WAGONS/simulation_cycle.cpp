#include "maquettes_graphiques/WAGONS/simulation_cycle.h"

#include <FL/Fl.H>
#include <FL/forms.H>

#include <cstdlib>
#include <iostream>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/WAGONS/plant_signals.h"
#include "maquettes_graphiques/mock_up/fault.h"
#include "maquettes_graphiques/mock_up/run_end.h"

namespace {

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

constexpr int none = -1;  // no such signal

// A place on a wagon's track.
struct station {
  int position = 0;                 // of the wagon's centre, in pixels
  int sensor = none;                // the input that sees the wagon there
  int transfer = none;              // the output that fills or empties the wagon there
  const char* not_there = nullptr;  // the fault of a transfer while the wagon is elsewhere
};

struct wagon_row {
  cookwagon mine_scene::*wagon;
  struct {
    int right, left;  // outputs
  } go;
  struct {
    int full, empty;  // inputs
  } load;
  station loading, waiting, unloading;
  const wagon_row* receiver;  // takes the load at its own loading station; null: nobody does
};

constexpr wagon_row C{&mine_scene::wC,
                      {sortie::C_DROITE, sortie::C_GAUCHE},
                      {none, entree::wCvide},
                      {300, entree::pcC, none, C_not_at_loading},
                      {},
                      {650, entree::pdC, sortie::VIDER_C, C_not_at_unloading},
                      nullptr};

// All that is done wagon by wagon is done in this order.
constexpr wagon_row wagons[] = {
    {&mine_scene::wA,
     {sortie::A_DROITE, sortie::A_GAUCHE},
     {entree::wAplein, entree::wAvide},
     {100, entree::pcA, sortie::REMPLIR_A, A_not_at_loading},
     {230, entree::pedA},
     {300, none, sortie::VIDER_A, A_not_at_unloading},
     &C},
    {&mine_scene::wB,
     {sortie::B_DROITE, sortie::B_GAUCHE},
     {entree::wBplein, entree::wBvide},
     {600, entree::pcB, sortie::REMPLIR_B, B_not_at_loading},
     {370, entree::pedB},
     {300, none, sortie::VIDER_B, B_not_at_unloading},
     &C},
    C,
};

using roller = Fl_Roller* mine_class::*;

// Deliberate: B takes the value of roller A, while the trace tells that of roller B.
constexpr struct {
  roller turned, taken;
  cookwagon mine_scene::*wagon;
  const char* trace;
  double at_first;
} speeds[] = {
    {&mine_class::reglage_vitesse_A, &mine_class::reglage_vitesse_A, &mine_scene::wA, "vitesse A: ", 1.5},
    {&mine_class::reglage_vitesse_B, &mine_class::reglage_vitesse_A, &mine_scene::wB, "vitesse B: ", 1.5},
    {&mine_class::reglage_vitesse_C, &mine_class::reglage_vitesse_C, &mine_scene::wC, "vitesse C: ", 3.0},
};

bool is_at(const mine_scene& scene, const wagon_row& row, const station& place) {
  constexpr int reach = 10;
  return std::abs((scene.*row.wagon).my_xpos() - place.position) < reach;
}

void fault(simulation& run, const char* text) {
  run.termine = 1;
  ::fault(text);
}

void redraw(simulation& run) {
  mine_scene& scene = run.scene;
  dessiner(run.p_mine, scene.man, scene.wA, scene.wB, scene.wC);
}

// One widget a cycle; the others wait in FLTK's queue. The desk buttons come through it too and are
// dropped: they count only as inputs, while they are held down.
void heed_operator(simulation& run) {
  mine_class& panel = *run.p_mine;
  Fl::check();
  if (!panel.mine->shown()) return;
  const FL_OBJECT* const obj = Fl::readqueue();
  for (const auto& row : speeds) {
    if (obj != panel.*row.turned) continue;
    (run.scene.*row.wagon).change_speed_ref((panel.*row.taken)->value());
    std::cerr << row.trace << (panel.*row.turned)->value() << std::endl;
  }
  if (obj == panel.bouton_about) fl_show_ms();
  if (obj == panel.bouton_quit) run.termine = 1;
  if (obj == panel.bouton_redraw) redraw(run);
  if (obj == panel.bouton_intervention)
    for (const wagon_row& row : wagons) (run.scene.*row.wagon).unload();
}

// Controllers may read while a batch is being written: the order is part of the contract.
void publish_sensors(simulation& run) {
  const mine_class& panel = *run.p_mine;
  const mine_scene& scene = run.scene;
  const auto write = [&run](int input, bool value) {
    if (input != none) run.mem->setreset_input(input, value);
  };
  for (const wagon_row& row : wagons) {
    const bool loaded = (scene.*row.wagon).is_loaded() != 0;
    write(row.load.full, loaded);
    write(row.load.empty, !loaded);
  }
  bool over_a_receiver = false;  // one sensor for all
  for (const wagon_row& row : wagons) {
    for (const station& place : {row.loading, row.waiting, row.unloading})
      write(place.sensor, is_at(scene, row, place));
    over_a_receiver = over_a_receiver || (row.receiver != nullptr && is_at(scene, row, row.unloading));
  }
  write(entree::pdAB, over_a_receiver);
  write(entree::init, fl_get_button(panel.bouton_init) != 0);
  write(entree::ac, fl_get_button(panel.bouton_ac) != 0);
  write(entree::dc, fl_get_button(panel.bouton_dc) != 0);
  write(entree::atu, fl_get_button(panel.bouton_atu) != 0);
  run.mem->inputs_go();
}

bool active(int output) { return output != none && actionneur[output] == 1; }

// Both directions at once deliberately leave the wagon as it was.
void command_motion(mine_scene& scene) {
  for (const wagon_row& row : wagons) {
    wagon& w = scene.*row.wagon;
    const bool right = active(row.go.right), left = active(row.go.left);
    if (right && left) continue;
    if (right)
      w.right();
    else if (left)
      w.left();
    else
      w.stop();
  }
}

void fill(simulation& run, const wagon_row& row) {
  if (is_at(run.scene, row, row.loading))
    (run.scene.*row.wagon).load();
  else
    fault(run, row.loading.not_there);
}

// Whatever is wrong, the wagon has lost its load by then. The receiver is looked at first.
void empty(simulation& run, const wagon_row& row) {
  mine_scene& scene = run.scene;
  if (!(scene.*row.wagon).is_loaded()) return;
  (scene.*row.wagon).unload();
  const wagon_row* const receiver = row.receiver;
  if (receiver != nullptr && !is_at(scene, *receiver, receiver->loading))
    fault(run, receiver->loading.not_there);
  else if (!is_at(scene, row, row.unloading))
    fault(run, row.unloading.not_there);
  else if (receiver != nullptr)
    (scene.*receiver->wagon).load();
}

// A fault does not keep the others of the same cycle from being seen.
void transfer_coal(simulation& run) {
  for (const wagon_row& row : wagons) {
    if (active(row.loading.transfer)) fill(run, row);
    if (active(row.unloading.transfer)) empty(run, row);
  }
}

void advance_and_draw(simulation& run) {
  redraw(run);
  for (const wagon_row& row : wagons) {
    (run.scene.*row.wagon).react();
    (run.scene.*row.wagon).draw();
  }
}

}  // namespace

void show_mine(simulation& run) {
  mine_class& panel = *run.p_mine;
  panel.paint_with_window([&scene = run.scene] { paint(scene); });
  fl_show_form(panel.mine, FL_PLACE_CENTER | FL_FREE_SIZE, FL_FULLBORDER, "mine de charbon");
  redraw(run);
  for (const auto& row : speeds) {
    Fl_Roller& its = *(panel.*row.turned);
    its.range(0.1, 3.0);
    its.value(row.at_first);
    its.step(0.1);
  }
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
