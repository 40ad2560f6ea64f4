#pragma once
// One pass of the gallery: from the sensors to the objects' next positions.

#include "maquettes_graphiques/GALERIE/gallery_panel.h"
#include "maquettes_graphiques/GALERIE/jack_stand.h"
#include "maquettes_graphiques/GALERIE/vat.h"
#include "maquettes_graphiques/GALERIE/workshop.h"

// A run of the gallery: the window with its objects, around its signals.
struct gallery {
  explicit gallery(gallery_plant& its_signals) : signals(its_signals) {}

  gallery_plant& signals;
  gallery_panel panel{signals, [this] { pieces.new_piece(); }};
  workshop pieces{&panel.window};
  vat liquid{&panel.window};
  jack_stand jacks{&panel.window};
};

void show_gallery(gallery& g);
// What follows the look at the operator's desk, but for the pause.
void gallery_cycle(gallery& g);
