// chronogramme [PID | -automemlink N | FILE.vcd]: the signals of a running plant, or of a file, as a timing
// chart. It only reads.

#include <FL/Fl.H>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "outils/chronogramme/chart_window.h"
#include "outils/chronogramme/command_line.h"
#include "outils/chronogramme/recording.h"
#include "outils/chronogramme/state_line.h"

namespace {

std::string name_of(pid_t pid) {
  std::string name = "?";
  std::getline(std::ifstream("/proc/" + std::to_string(pid) + "/comm"), name);
  return name;
}

area_view newest_of_running() {
  for (const area_entry& area : areas())
    if (creator_runs(area)) return area_view(area.ident);
  throw area_error(tr("aucune maquette n'est en marche"));
}

area_view area_asked_for(const command_line& wanted) {
  if (wanted.area) return area_view(*wanted.area);
  if (!wanted.plant) return newest_of_running();
  const int ident = area_of(*wanted.plant);
  if (ident < 0)
    throw area_error(tr("aucune zone n'a été créée par le processus {}", {std::to_string(*wanted.plant)}));
  return area_view(ident);
}

int show(chart_window& window) {
  window.show();
  return Fl::run();
}

int show_plant(area_view area, const window_place& place) {
  const std::string name = name_of(area.plant()), number = std::to_string(area.plant());
  const std::string plant = name + " (" + number + ")";
  recording recorded(std::move(area));
  const auto refresh = [&]() -> chart_window::news {
    const bool changed = recorded.collect();
    return {changed, title_of(plant, recorded.figures().state),
            plant_line(plant, recorded.figures(), recorded.record().missed_in_all())};
  };
  chart_window window(place, recorded.record(), name + "-" + number, refresh);
  return show(window);
}

int show_file(const std::string& file, const window_place& place) {
  const signal_record record = read_vcd(file);
  const std::filesystem::path path(file);
  const auto refresh = [&]() -> chart_window::news {
    return {false, title_of(path.filename()), file_line(path.filename(), record)};
  };
  chart_window window(place, record, path.stem(), refresh);
  return show(window);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const command_line wanted = read_command_line(argc, argv);
    watch_for_run_end();
    return wanted.file.empty() ? show_plant(area_asked_for(wanted), wanted.place)
                               : show_file(wanted.file, wanted.place);
  } catch (const std::exception& why) {
    std::cerr << "chronogramme: " << why.what() << std::endl;
    return 2;
  }
}
