#include "outils/examen/page_text.h"

#include "bibliocpp/formspp/viewer_markup.h"

std::string in_page(const std::string& text) {
  std::string fit = text;
  for (char& c : fit) {
    constexpr std::string_view special = "#()\\", instead = "*[]/";
    if (const std::size_t at = special.find(c); at != std::string_view::npos) c = instead[at];
  }
  return fit;
}

void add_wrapped(std::vector<std::string>& page, const std::string& text) {
  const std::string fit = in_page(text);
  for (std::string_view rest = fit; !rest.empty();) {
    std::string_view line = viewer_markup::first_characters(rest, page_width);
    const std::size_t blank = line.rfind(' ');
    if (line.size() < rest.size() && blank != std::string_view::npos && blank > 0)
      line = line.substr(0, blank + 1);
    page.emplace_back(line);
    rest.remove_prefix(line.size());
  }
}
