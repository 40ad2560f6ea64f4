#pragma once
// The gallery's window: the scene on the left, the signals on the right, speeds below the scene.

#include <array>
#include <functional>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/mock_up/desk.h"
#include "maquettes_graphiques/mock_up/scene_window.h"

namespace reglage {
enum : int { tapis, poussoir, table, bras, chariot, verins, debit, melangeur, count };
}

// Builds and lays out the widgets, and nothing else. Every signal is there under its name: an output as a
// switch, an input as a lamp. Without a controller the switches are the operator's; otherwise they only show
// its outputs. The window owns the widgets, and goes with the panel.
class gallery_panel {
 public:
  gallery_panel(gallery_plant& signals, const std::function<void()>& new_piece);

  double speed(int which) const { return speeds[static_cast<std::size_t>(which)]; }

  scene_window window{1190, 630, "galerie"};
  desk operators{825, 588};

 private:
  std::array<double, reglage::count> speeds;
};
