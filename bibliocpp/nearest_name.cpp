#include "bibliocpp/nearest_name.h"

#include <algorithm>
#include <cctype>

namespace {

bool same_letter(char one, char other) {
  return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
}

}  // namespace

// Levenshtein's.
int name_distance(std::string_view from, std::string_view to) {
  constexpr int edit = 4, other_case = 1;
  std::vector<int> row(to.size() + 1);
  for (std::size_t k = 1; k < row.size(); ++k) row[k] = row[k - 1] + edit;
  for (const char letter : from) {
    int diagonal = row[0];
    row[0] += edit;
    for (std::size_t k = 1; k < row.size(); ++k) {
      const char wanted = to[k - 1];
      const int change = letter == wanted ? 0 : same_letter(letter, wanted) ? other_case : edit;
      const int shortest = std::min({diagonal + change, row[k] + edit, row[k - 1] + edit});
      diagonal = row[k];
      row[k] = shortest;
    }
  }
  return row.back();
}

int nearest_name(std::string_view name, const std::vector<std::string>& names) {
  const auto nearest = std::min_element(names.begin(), names.end(), [&](const auto& a, const auto& b) {
    return name_distance(name, a) < name_distance(name, b);
  });
  return nearest == names.end() ? -1 : static_cast<int>(nearest - names.begin());
}
