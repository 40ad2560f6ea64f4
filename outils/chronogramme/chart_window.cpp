#include "outils/chronogramme/chart_window.h"

#include <FL/Fl.H>
#include <FL/Fl_File_Chooser.H>
#include <FL/fl_ask.H>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <utility>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "outils/pictures/png_file.h"

namespace {

constexpr double refresh_s = 0.05;
constexpr int bar_height = 34, gap = 4, button_height = 26, least_width = 680, least_height = 160;

// The toolkit's own words, in the boxes that open here.
void speak_the_language() {
  using chooser = Fl_File_Chooser;
  chooser::add_favorites_label = tr("Ajouter aux favoris");
  chooser::all_files_label = tr("Tous les fichiers (*)");
  chooser::custom_filter_label = tr("Autre filtre");
  chooser::favorites_label = tr("Favoris");
  chooser::filename_label = tr("Fichier :");
  chooser::filesystems_label = tr("Systèmes de fichiers");
  chooser::hidden_label = tr("Fichiers cachés");
  chooser::manage_favorites_label = tr("Gérer les favoris");
  chooser::new_directory_label = tr("Nouveau dossier ?");
  chooser::new_directory_tooltip = tr("Créer un dossier.");
  chooser::preview_label = tr("Aperçu");
  chooser::show_label = tr("Voir :");
  fl_cancel = tr("Annuler");
  fl_close = tr("Fermer");
}

// The name that the operator gives; empty when he gives up.
std::string ask_for_file(const std::string& proposed) {
  const std::string ending = std::string("*").append(std::filesystem::path(proposed).extension());
  const char* const name = fl_file_chooser(tr("Exporter sous"), ending.c_str(), proposed.c_str());
  if (name == nullptr) return "";
  if (std::filesystem::exists(name) &&
      fl_choice(tr("%s existe. Le remplacer ?"), tr("Annuler"), tr("Remplacer"), nullptr, name) != 1)
    return "";
  return name;
}

template <typename Write>
void write_where_asked(const std::string& proposed, Write write) {
  const std::string name = ask_for_file(proposed);
  if (name.empty()) return;
  try {
    write(name);
  } catch (const std::exception& why) {
    fl_alert("%s", why.what());
  }
}

}  // namespace

chart_window::chart_window(const window_place& place, const signal_record& a_record,
                           std::string files_are_called, std::function<news()> a_refresh)
    : Fl_Double_Window(std::max(place.w, least_width), std::max(place.h, least_height)),
      record(a_record),
      files(std::move(files_are_called)),
      refresh(std::move(a_refresh)),
      bar(0, 0, w(), bar_height),
      follow(gap, gap, 80, button_height, tr("Suivre")),
      filter(150, gap, 130, button_height, tr("Filtre")),
      only_changing(290, gap, 180, button_height, tr("Ce qui change")),
      exports(480, gap, 100, button_height, tr("Exporter")),
      space(580, gap, 10, button_height),
      quit(w() - 80 - gap, gap, 80, button_height, tr("Quitter")),
      canvas(0, bar_height, w(), h() - bar_height, a_record) {
  bar.add(follow);
  bar.add(filter);
  bar.add(only_changing);
  bar.add(exports);
  bar.add(space);
  bar.add(quit);
  bar.resizable(space);
  add(bar);
  add(canvas);
  resizable(canvas);
  size_range(least_width, least_height);
  if (place.has_position) position(place.x, place.y);

  follow.value(1);
  follow.when(FL_WHEN_CHANGED);  // so that the light and the chart change together
  follow.callback(call<&chart_window::choose_follow>, this);
  filter.when(FL_WHEN_CHANGED);
  filter.callback(call<&chart_window::choose_signals>, this);
  only_changing.callback(call<&chart_window::choose_signals>, this);
  exports.add("PNG...", FL_COMMAND + 'p', call<&chart_window::export_png>, this);
  exports.add("VCD...", FL_COMMAND + 's', call<&chart_window::export_vcd>, this);
  exports.add("CSV...", FL_COMMAND + 'e', call<&chart_window::export_csv>, this);
  quit.callback(call<&chart_window::close>, this);
  callback(call<&chart_window::close>, this);
  canvas.when_operated = [this] { show_operation(); };
  speak_the_language();
  look_again();
  Fl::add_timeout(refresh_s, tick, this);
}

chart_window::~chart_window() { Fl::remove_timeout(tick, this); }

void chart_window::tick(void* window) {
  auto& self = *static_cast<chart_window*>(window);
  Fl::repeat_timeout(refresh_s, tick, window);
  if (run_end_requested() != 0) return self.close();
  self.look_again();
}

void chart_window::look_again() {
  const news now = refresh();
  const bool changed = now.changed || now.state != canvas.state;
  canvas.state = now.state;
  if (label() == nullptr || label() != now.title) copy_label(now.title.c_str());
  if (visible_r() != 0) canvas.record_grew(changed);
}

void chart_window::choose_follow() {
  canvas.view.right_us = right_edge_us(canvas.view, record);
  canvas.view.follow = follow.value() != 0;
  canvas.redraw();
}

void chart_window::choose_signals() {
  canvas.view.filter = filter.value();
  canvas.view.only_changing = only_changing.value() != 0;
  canvas.redraw();
}

// A drag or the wheel may have left the newest.
void chart_window::show_operation() { follow.value(canvas.view.follow ? 1 : 0); }

// The picture of this moment: while a name is chosen, time goes on.
void chart_window::export_png() {
  const chart_canvas::pixels now = canvas.picture();
  write_where_asked(files + ".png", [&](const std::string& name) { write_png(name, now.rgb, now.w, now.h); });
}

void chart_window::export_vcd() {
  write_where_asked(files + ".vcd", [this](const std::string& name) { write_vcd(name, record); });
}

void chart_window::export_csv() {
  write_where_asked(files + ".csv", [this](const std::string& name) { write_csv(name, record); });
}

void chart_window::close() { hide(); }

// Escape, which would close the window, takes the cursors away.
int chart_window::handle(int event) {
  if (event != FL_SHORTCUT || Fl::event_key() != FL_Escape) return Fl_Double_Window::handle(event);
  canvas.view.cursors = {};
  canvas.redraw();
  return 1;
}
