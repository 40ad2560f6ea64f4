#include "maquettes_graphiques/GALERIE/gallery_panel.h"

#include <FL/Fl_Box.H>

#include <cstddef>

namespace {

constexpr int column_width = 178;

struct position {
  int x, y;
};

// The n-th of `count` signals in two columns.
position in_columns(int n, int count, int top, int row_height) {
  const int rows = (count + 1) / 2;
  return {825 + n / rows * column_width, top + n % rows * row_height};
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

}  // namespace

gallery_panel::gallery_panel(gallery_plant& signals, const std::function<void()>& new_piece) {
  const bool by_hand = !signals.has_controller();
  auto* const scene = new Fl_Box(10, 10, 800, 610);
  scene->box(FL_ENGRAVED_BOX);
  heading(12, by_hand ? "Commandes de l'operateur" : "Commandes du controleur");
  operators.size(column_width - 4, 20);
  for_each_signal<sortie::index>([&](sortie::index k) {
    const auto [x, y] = in_columns(k, sortie::count, 34, 22);
    operators.at(x, y).toggle(signal_name(k), signals.values.wanted[k], by_hand);
  });
  heading(344, "Capteurs");
  for_each_signal<entree::index>([&](entree::index i) {
    const auto [x, y] = in_columns(i, entree::count, 366, 13);
    operators.at(x, y).lamp(signal_name(i), signals.values.seen[i]);
  });
  operators.size(80, 20);
  for (std::size_t n = 0; n < speeds.size(); ++n) {
    const speed_range& r = speed_ranges[n];
    speeds[n] = r.value;
    operators.at(25 + static_cast<int>(n) * 97, 565).roller(r.label, speeds[n], r.low, r.high, r.step);
  }
  operators.at(825, 588).size(120, 30).button("Nouvelle piece", new_piece);
  operators.at(950, 588).size(225, 30).quit_and_about();
  window.end();
}
