#include "bibliocpp/nearest_name.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace {

bool same_letter(char one, char other) {
  return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
}

// Levenshtein's: letters to put in, take out or change. Upper and lower case are hardly different.
int distance(std::string_view from, std::string_view to) {
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

}  // namespace

std::ptrdiff_t nearest_name(std::string_view wanted, std::span<const std::string> names) {
  const auto nearer = [&](const auto& a, const auto& b) { return distance(wanted, a) < distance(wanted, b); };
  return std::min_element(names.begin(), names.end(), nearer) - names.begin();
}
