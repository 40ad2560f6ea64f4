// grafcet [--periode DURATION] FILE -automemlink N: runs the GRAFCETs of a file as the controller of a plant.
// grafcet --verifier [--maquette NAME] FILE: only tells what is wrong with it.
// grafcet --vue --pas-a-pas --maquette NAME FILE: leads the plant, an evolution at a press of a button.
// grafcet --svg|--pdf PICTURE FILE: draws them.

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>

#include "bibliocpp/area_view.h"
#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "bibliocpp/language.h"
#include "outils/child_processes/programs.h"
#include "outils/grafcet/area_signals.h"
#include "outils/grafcet/command_line.h"
#include "outils/grafcet/control.h"
#include "outils/grafcet/pictures.h"
#include "outils/grafcet/plant_names.h"
#include "outils/grafcet/stepping.h"
#include "outils/grafcet/view.h"

namespace {

std::optional<std::string> contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  try {
    if (file) return std::string(std::istreambuf_iterator<char>(file), {});
  } catch (const std::ios_base::failure&) {  // a directory, or a fault of the disk
  }
  std::cerr << "grafcet: " << path << ": " << std::strerror(errno) << '\n';
  return std::nullopt;
}

// A line each: "mine.grafcet:12:5: erreur : ...".
void tell(const std::string& path, const grafcet_file::parsed& read) {
  for (const auto& remark : read.remarks)
    std::cerr << path << ':' << remark.where.line << ':' << remark.where.column << ": "
              << (remark.warning ? tr("avertissement : {}", {remark.sentence})
                                 : tr("erreur : {}", {remark.sentence}))
              << '\n';
}

int verify(const command_line& asked, const std::string& text) {
  std::optional<grafcet_file::plant_signals> signals;
  if (!asked.plant.empty()) signals = signals_of(asked.plant);
  const auto read = grafcet_file::read_charts(text, signals ? &*signals : nullptr);
  tell(asked.file, read);
  return read.ok() ? 0 : 1;
}

int draw(const command_line& asked, const std::string& text) {
  const auto read = grafcet_file::read_charts(text);
  tell(asked.file, read);
  if (!read.ok()) return 1;
  if (asked.wanted == task::svg)
    write_svg(asked.picture, read.charts);
  else
    write_pdf(asked.picture, read.charts, asked.file);
  return 0;
}

int run(const command_line& asked, const std::string& text) {
  IOsharemem_client area(asked.ident);
  const grafcet_file::plant_signals signals = signals_of(area);
  const auto read = grafcet_file::read_charts(text, &signals);
  tell(asked.file, read);
  if (!read.ok()) return 1;
  if (!asked.view) return control(area, asked.ident, read.charts, asked.period_us), 0;
  const std::string title = std::filesystem::path(asked.file).filename();
  const grafcet_file::situation first = grafcet_file::evolution(read.charts).now();
  shared_situation shown(first);
  const view_process view(read.charts, first, shown, title, false);
  control(area, asked.ident, read.charts, asked.period_us, &shown);
  return 0;
}

int step(const command_line& asked, const std::string& text) {
  std::signal(SIGPIPE, SIG_IGN);
  const auto plant = find_program(asked.plant);
  if (!plant) throw std::runtime_error(tr("aucune maquette {}", {asked.plant}));
  led_plant led({*plant, ":"});
  IOsharemem_client area(area_of(led));
  const grafcet_file::plant_signals signals = signals_of(area);
  const auto read = grafcet_file::read_charts(text, &signals);
  tell(asked.file, read);
  if (!read.ok()) return 1;
  const std::string title = std::filesystem::path(asked.file).filename();
  const grafcet_file::situation first = grafcet_file::evolution(read.charts).now();
  shared_situation shown(first);
  const view_process view(read.charts, first, shown, title, true);
  lead(led, area, read.charts, shown, view.wishes());
  return 0;
}

}  // namespace

int main(int argc, char** argv) try {
  const command_line asked = read_command_line(argc, argv);
  const auto text = contents(asked.file);
  if (!text) return 1;
  switch (asked.wanted) {
    case task::verify:
      return verify(asked, *text);
    case task::svg:
    case task::pdf:
      return draw(asked, *text);
    case task::step:
      return step(asked, *text);
    default:
      return run(asked, *text);
  }
} catch (const std::exception& error) {
  std::cerr << "grafcet: " << error.what() << '\n';
  return 1;
}
