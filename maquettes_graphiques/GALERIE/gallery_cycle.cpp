#include "maquettes_graphiques/GALERIE/gallery_cycle.h"

#include <FL/Fl.H>
#include <FL/forms.H>

#include <list>
#include <string>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/start_up.h"

namespace {

void heed_operator(gallery& g) {
  Fl::check();
  const FL_OBJECT* const pressed = Fl::readqueue();
  if (pressed == nullptr || !g.panel.window.shown()) return;
  if (pressed == g.panel.new_piece) g.pieces.new_piece();
  if (pressed == g.panel.about) fl_show_ms();
  if (pressed == g.panel.quit) g.finished = true;
}

void set_speeds(gallery& g) {
  const auto speed = [&g](int which) { return g.panel.speed(which); };
  g.pieces.change_speeds({.belt = speed(reglage::tapis),
                          .pusher = speed(reglage::poussoir),
                          .table = speed(reglage::table),
                          .arm = speed(reglage::bras),
                          .wagon = speed(reglage::chariot)});
  g.liquid.change_speeds(speed(reglage::debit), speed(reglage::melangeur));
  g.jacks.change_speed(speed(reglage::verins));
}

void publish_sensors(gallery& g) {
  sensors seen{};
  g.pieces.report(seen);
  g.liquid.report(seen);
  g.jacks.report(seen);
  g.panel.show(seen);
  if (g.mem == nullptr) return;
  for (int i = 0; i < entree::count; ++i) g.mem->setreset_input(i, seen[static_cast<std::size_t>(i)]);
  g.mem->inputs_go();
}

commands read_commands(gallery& g) {
  if (g.mem == nullptr) return g.panel.switched_on();
  commands wanted{};
  for (int k = 0; k < sortie::count; ++k) wanted[static_cast<std::size_t>(k)] = g.mem->output_value(k) == 1;
  g.panel.show(wanted);
  return wanted;
}

}  // namespace

IOsharemem_server* share_gallery(const std::string& command) {
  if (command.empty()) return nullptr;
  std::list<std::string> inputs(input_names.begin(), input_names.end());
  std::list<std::string> outputs(output_names.begin(), output_names.end());
  return share_with_controller(inputs, outputs, command);
}

void show_gallery(gallery& g) {
  g.panel.window.scene([&g] {
    g.pieces.paint();
    g.liquid.paint();
    g.jacks.paint();
  });
  fl_show_form(&g.panel.window, FL_PLACE_CENTER | FL_FREE_SIZE, FL_FULLBORDER, "galerie");
}

bool goes_on(gallery& g) { return !g.finished && !run_end_requested() && g.panel.window.shown(); }

void gallery_cycle(gallery& g) {
  heed_operator(g);
  if (!g.panel.window.shown()) return;
  set_speeds(g);
  publish_sensors(g);
  const commands wanted = read_commands(g);
  g.pieces.advance(wanted);
  g.liquid.advance(wanted);
  g.jacks.advance(wanted);
}
