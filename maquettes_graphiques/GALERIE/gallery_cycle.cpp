#include "maquettes_graphiques/GALERIE/gallery_cycle.h"

#include <FL/forms.H>

namespace {

void set_speeds(gallery& g) {
  const gallery_panel& panel = g.panel;
  g.pieces.change_speeds({.belt = panel.speed(reglage::tapis),
                          .pusher = panel.speed(reglage::poussoir),
                          .table = panel.speed(reglage::table),
                          .arm = panel.speed(reglage::bras),
                          .wagon = panel.speed(reglage::chariot)});
  g.liquid.change_speeds(panel.speed(reglage::debit), panel.speed(reglage::melangeur));
  g.jacks.change_speed(panel.speed(reglage::verins));
}

}  // namespace

void show_gallery(gallery& g) {
  g.panel.window.scene([&g] {
    g.pieces.paint();
    g.liquid.paint();
    g.jacks.paint();
  });
  fl_show_form(&g.panel.window, FL_PLACE_CENTER | FL_FREE_SIZE, FL_FULLBORDER, "galerie");
}

void gallery_cycle(gallery& g) {
  set_speeds(g);
  g.pieces.report(g.signals.values.seen);
  g.liquid.report(g.signals.values.seen);
  g.jacks.report(g.signals.values.seen);
  g.signals.exchange();
  const commands& wanted = g.signals.values.wanted;
  g.pieces.advance(wanted);
  g.liquid.advance(wanted);
  g.jacks.advance(wanted);
}
