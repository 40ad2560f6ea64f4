#pragma once
// One pass of the gallery: from the operator's last action to the objects' next positions.

#include "bibliocpp/IOshare.h"
#include "maquettes_graphiques/GALERIE/gallery_panel.h"
#include "maquettes_graphiques/GALERIE/jack_stand.h"
#include "maquettes_graphiques/GALERIE/vat.h"
#include "maquettes_graphiques/GALERIE/workshop.h"

// A run of the gallery: the window with its objects, and the area shared with the controller.
struct gallery {
  explicit gallery(IOsharemem_server* a_mem) : mem(a_mem) {}

  IOsharemem_server* mem;  // not owned; null when there is no controller: then the operator commands
  gallery_panel panel{mem == nullptr};
  workshop pieces{&panel.window};
  vat liquid{&panel.window};
  jack_stand jacks{&panel.window};
  bool finished = false;  // "Quit" was pressed
};

// Creates the area of the gallery and starts the controller; null for an empty command.
IOsharemem_server* share_gallery(const std::string& command);

void show_gallery(gallery& g);
bool goes_on(gallery& g);
// The whole cycle but for the pause that follows it.
void gallery_cycle(gallery& g);
