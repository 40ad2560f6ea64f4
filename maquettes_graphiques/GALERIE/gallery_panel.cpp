#include "maquettes_graphiques/GALERIE/gallery_panel.h"

#include <cstddef>

namespace {

constexpr int column_width = 178;

struct position {
  int x, y;
};

// The n-th of `count` signals in two columns.
position in_columns(std::size_t n, std::size_t count, int top, int row_height) {
  const std::size_t rows = (count + 1) / 2;
  return {825 + static_cast<int>(n / rows) * column_width, top + static_cast<int>(n % rows) * row_height};
}

void heading(int y, const char* text) {
  auto* const box = new Fl_Box(825, y, 2 * column_width, 20, text);
  box->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
  box->labelfont(FL_HELVETICA_BOLD);
}

struct speed_range {
  const char* label;
  double low, high, step, value;
};
constexpr std::array<speed_range, reglage::count> speed_ranges{{
    {"Tapis", 0.1, 3.0, 0.1, 1.5},
    {"Poussoir", 0.1, 3.0, 0.1, 1.5},
    {"Table", 0.1, 3.0, 0.1, 1.0},
    {"Bras", 0.1, 3.0, 0.1, 1.0},
    {"Chariot", 0.1, 3.0, 0.1, 1.5},
    {"Verins", 0.1, 3.0, 0.1, 0.5},
    {"Debit", 0.1, 2.0, 0.1, 0.5},
    {"Melangeur", 0.01, 0.3, 0.01, 0.05},
}};

Fl_Roller* add_roller(std::size_t n) {
  const speed_range& r = speed_ranges[n];
  auto* const roller = new Fl_Roller(25 + static_cast<int>(n) * 97, 565, 80, 20, r.label);
  roller->type(FL_HORIZONTAL);
  roller->range(r.low, r.high);
  roller->step(r.step);
  roller->value(r.value);
  return roller;
}

}  // namespace

gallery_panel::gallery_panel(bool by_hand) {
  auto* const scene = new Fl_Box(10, 10, 800, 610);
  scene->box(FL_ENGRAVED_BOX);
  heading(12, by_hand ? "Commandes de l'operateur" : "Commandes du controleur");
  for (std::size_t n = 0; n < switches.size(); ++n) {
    const auto [x, y] = in_columns(n, switches.size(), 34, 22);
    switches[n] = new Fl_Light_Button(x, y, column_width - 4, 20, output_names[n]);
    switches[n]->labelsize(12);
    if (!by_hand) switches[n]->set_output();
  }
  heading(344, "Capteurs");
  for (std::size_t n = 0; n < lamps.size(); ++n) {
    const auto [x, y] = in_columns(n, lamps.size(), 366, 13);
    lamps[n] = new Fl_Box(FL_BORDER_BOX, x, y, 10, 10, input_names[n]);
    lamps[n]->align(FL_ALIGN_RIGHT);
    lamps[n]->labelsize(12);
  }
  for (std::size_t n = 0; n < speeds.size(); ++n) speeds[n] = add_roller(n);
  new_piece = new Fl_Button(825, 588, 120, 30, "Nouvelle piece");
  about = new Fl_Button(950, 588, 110, 30, "A propos");
  quit = new Fl_Button(1065, 588, 110, 30, "Quit");
  window.end();
}

commands gallery_panel::switched_on() const {
  commands wanted{};
  for (std::size_t n = 0; n < switches.size(); ++n) wanted[n] = switches[n]->value() != 0;
  return wanted;
}

void gallery_panel::show(const commands& wanted) {
  for (std::size_t n = 0; n < switches.size(); ++n) switches[n]->value(wanted[n]);
}

void gallery_panel::show(const sensors& seen) {
  for (std::size_t n = 0; n < lamps.size(); ++n) {
    const Fl_Color colour = seen[n] ? FL_YELLOW : FL_BACKGROUND_COLOR;
    if (lamps[n]->color() == colour) continue;
    lamps[n]->color(colour);
    lamps[n]->redraw();
  }
}
