#pragma once
// The gallery's window: the scene on the left, the signals on the right, speeds below the scene.

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Light_Button.H>
#include <FL/Fl_Roller.H>

#include <array>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/mock_up/scene_window.h"

namespace reglage {
enum : int { tapis, poussoir, table, bras, chariot, verins, debit, melangeur, count };
}

// Builds and lays out the widgets, and nothing else. Every signal is there under its name: an output as a
// switch, an input as a lamp. The window owns the widgets, and goes with the panel.
class gallery_panel {
 public:
  // `by_hand`: the switches are the operator's; otherwise they only show the controller's outputs.
  explicit gallery_panel(bool by_hand);

  // The positions of the switches.
  commands switched_on() const;
  void show(const commands& wanted);
  void show(const sensors& seen);
  double speed(int which) const { return speeds[static_cast<std::size_t>(which)]->value(); }

  scene_window window{1190, 630, "galerie"};
  Fl_Button* new_piece;
  Fl_Button* about;
  Fl_Button* quit;

 private:
  std::array<Fl_Light_Button*, sortie::count> switches;
  std::array<Fl_Box*, entree::count> lamps;
  std::array<Fl_Roller*, reglage::count> speeds;
};
