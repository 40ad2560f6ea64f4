#include "maquettes_graphiques/GALERIE/vat.h"

#include <FL/fl_draw.H>

#include <algorithm>

namespace {

constexpr int left = 610, bottom = 350, width = 110, height = 190;
constexpr int lower_mark = 15, upper_mark = 150;
constexpr int centre = left + width / 2;
constexpr double cold_celsius = 15.0;
constexpr Fl_Color cold_liquid = FL_CYAN, hot_liquid = FL_MAGENTA;

template <typename... Fixture>
void colour(Fl_Color foreground, Fixture&... fixtures) {
  (fixtures.change_background(FL_BACKGROUND_COLOR), ...);
  (fixtures.change_foreground(foreground), ...);
}

}  // namespace

vat::vat(FL_FORM* a_window)
    : window(a_window),
      tank(window, left, bottom, width, height, lower_mark, upper_mark, 5, 1.0, 0),
      inlet(window, centre, bottom - height - 45, 70, 10, 28, 0, 0),
      outlet(window, left + width + 38, bottom - 15, 70, 10, 28, 0, 1),
      mixer(window, centre, bottom - 100, 60),
      heater(window, centre, bottom - 30, 80, 40) {
  colour(cold_liquid, tank);
  colour(FL_BLACK, inlet, outlet, mixer, heater);
}

void vat::change_speeds(double a_flow, double a_mixing) {
  flow = a_flow;
  mixing = a_mixing;
}

// New liquid comes in cold; an empty tank forgets.
void vat::heat_liquid() {
  constexpr double heating = 0.15, cooling = 0.01;
  if (heater.is_heating()) celsius += heating;
  celsius -= cooling;
  if (inlet.is_open()) celsius += (cold_celsius - celsius) * flow / std::max(tank.my_hpos(), 10.0);
  if (tank.empty()) celsius = cold_celsius;
  celsius = std::clamp(celsius, cold_celsius, 95.0);
  hot = is_hot(celsius);
}

void vat::advance(const commands& wanted) {
  wanted[sortie::REMPLIR] ? inlet.open() : inlet.close();
  wanted[sortie::VIDER] ? outlet.open() : outlet.close();
  wanted[sortie::CHAUFFER] ? heater.heat() : heater.unheat();
  mixer.change_speed(wanted[sortie::MELANGER] ? mixing : 0.0);
  tank.change_in(inlet.is_open() ? flow : 0.0);
  tank.change_out(outlet.is_open() ? flow : 0.0);

  const bool was_hot = hot;
  heat_liquid();
  tank.change_foreground(hot ? hot_liquid : cold_liquid);
  mixer.react();
  window->make_current();
  if (tank.react() || hot != was_hot || wanted[sortie::MELANGER]) tank.draw();
  inlet.draw();
  outlet.draw();
  mixer.draw();
  heater.draw();
}

void vat::report(sensors& seen) const {
  seen[entree::cuve_vide] = tank.empty();
  seen[entree::cuve_pleine] = tank.full();
  seen[entree::cuve_deborde] = tank.overfull();
  seen[entree::cuve_chaude] = hot;
}

void vat::paint() const {
  fl_font(FL_TIMES, 14);
  fl_color(FL_BLACK);
  fl_draw("vanne", centre + 20, bottom - height - 55);
  fl_draw("cuve, melangeur, resistor", left - 18, bottom + 20);
  tank.paint();
  inlet.paint();
  outlet.paint();
  mixer.paint();
  heater.paint();
}
