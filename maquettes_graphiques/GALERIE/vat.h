#pragma once
// The vat: a tank filled and emptied through valves, stirred and heated.

#include <FL/forms.H>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/mock_up/sensors.h"
#include "maquettes_graphiques/objgraphiques.h"

class vat {
 public:
  // Places everything in the window's upper middle.
  explicit vat(FL_FORM* a_window);

  // Flow through an open valve in pixels of level a cycle; the mixer's speed in radians a cycle.
  void change_speeds(double a_flow, double a_mixing);
  // One cycle: obeys, moves and draws in the shown window.
  void advance(const commands& wanted);
  void report(sensors& seen) const;
  // Paints everything as it stands into whatever is current and moves nothing.
  void paint() const;

 private:
  void heat_liquid();

  FL_FORM* window;
  cuve tank;
  vanne inlet, outlet;
  melangeur mixer;
  resistor heater;
  double flow = 0.5;
  double mixing = 0.05;
  double celsius = 15.0;
  threshold is_hot{60.0, 50.0};
  bool hot = false;
};
