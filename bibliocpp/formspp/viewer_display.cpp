#include "bibliocpp/formspp/viewer_display.h"

using namespace viewer_markup;

OFD_afficheur_filtre_affichage::OFD_afficheur_filtre_affichage(const std::string* first, int count)
    : lines(line_span(first, count)), starts(page_starts(lines)) {}

std::string OFD_afficheur_filtre_affichage::visu_ligne(const std::string& line) {
  constexpr std::size_t rule_length = 122;
  switch (typeligne(line)) {
    case new_block:
    case new_layout:
      columns.define(line);
      return {};
    case horizontal_rule:
      return std::string(rule_length, '-');
    default:
      break;
  }
  std::string shown = "@f@S12 ";
  int c = 0;
  for (const std::string_view cell : cells(line, columns)) {
    shown.append(cell);
    shown.append(static_cast<std::size_t>(columns.width(c++) - count_characters(cell)), ' ');
  }
  return shown;
}

std::string OFD_afficheur_filtre_affichage::visu_page(int page) {
  if (page < 0 || page > nb_pages()) return {};
  const auto n = static_cast<std::size_t>(page);
  const auto begin = static_cast<std::size_t>(starts[n]);
  const std::size_t end = page < nb_pages() ? static_cast<std::size_t>(starts[n + 1]) : lines.size();
  std::string shown;
  for (const std::string& line : lines.subspan(begin, end - begin))
    shown.append(visu_ligne(line)).append("\n");
  return shown;
}
