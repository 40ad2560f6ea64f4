// galerie [controleur]: every animated object at work, moved by the operator or by the given controller
// command.

#include "maquettes_graphiques/GALERIE/gallery_cycle.h"

int main(int argc, char** argv) {
  gallery_plant signals(argc, argv);
  gallery run(signals);
  show_gallery(run);
  signals.run(run.panel.window, run.panel.operators, [&run] { gallery_cycle(run); });
}
