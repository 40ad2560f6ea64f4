// grafcet [--periode DURATION] FILE -automemlink N: runs the GRAFCETs of a file as the controller of a plant.
// grafcet --verifier [--maquette NAME] FILE: only tells what is wrong with it.

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>

#include "bibliocpp/area_view.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "bibliocpp/language.h"
#include "outils/grafcet/command_line.h"
#include "outils/grafcet/control.h"
#include "outils/grafcet/plant_names.h"

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
              << (remark.warning ? in_language("avertissement : ", "warning: ")
                                 : in_language("erreur : ", "error: "))
              << remark.sentence << '\n';
}

int verify(const command_line& asked, const std::string& text) {
  std::optional<grafcet_file::plant_signals> signals;
  if (!asked.plant.empty()) signals = signals_of(asked.plant);
  const auto read = grafcet_file::read_charts(text, signals ? &*signals : nullptr);
  tell(asked.file, read);
  return read.ok() ? 0 : 1;
}

int run(const command_line& asked, const std::string& text) {
  IOsharemem_client area(asked.ident);
  const auto inputs = area.input_names(), outputs = area.output_names();
  const grafcet_file::plant_signals signals{{inputs.begin(), inputs.end()}, {outputs.begin(), outputs.end()}};
  const auto read = grafcet_file::read_charts(text, &signals);
  tell(asked.file, read);
  if (!read.ok()) return 1;
  control(area, asked.ident, read.charts, asked.period_us);
  return 0;
}

}  // namespace

int main(int argc, char** argv) try {
  const command_line asked = read_command_line(argc, argv);
  const auto text = contents(asked.file);
  if (!text) return 1;
  return asked.wanted == task::verify ? verify(asked, *text) : run(asked, *text);
} catch (const area_error& error) {
  std::cerr << "grafcet: " << error.what() << '\n';
  return 1;
}
