#include "outils/grafcet/plant_names.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>

#include "bibliocpp/language.h"
#include "outils/banc_essai/signal_file.h"

namespace {

namespace files = std::filesystem;

// Where the program is installed, else where it was built from.
files::path folder() {
  std::error_code none;
  const files::path installed =
      files::read_symlink("/proc/self/exe", none).parent_path().parent_path() / "share/wagons/signaux";
  return files::exists(installed, none) ? installed : files::path(SHARE "/signaux");
}

[[noreturn]] void refuse(const std::string& plant) {
  std::set<std::string> names;
  std::error_code none;
  for (const auto& entry : files::directory_iterator(folder(), none)) names.insert(entry.path().stem());
  std::string all;
  for (const std::string& name : names) all += ' ' + name;
  std::cerr << tr("grafcet: maquette inconnue : {} ; il y a :{}\n", {plant, all});
  std::exit(2);
}

}  // namespace

grafcet_file::plant_signals signals_of(const std::string& plant) {
  const bool is_path = plant.find('/') != std::string::npos;
  const files::path path = is_path ? files::path(plant) : folder() / (plant + ".txt");
  std::error_code none;
  if (!is_path && !files::exists(path, none)) refuse(plant);
  const signal_names names = read_signals(path.string());
  return {{names.inputs.begin(), names.inputs.end()}, {names.outputs.begin(), names.outputs.end()}};
}
