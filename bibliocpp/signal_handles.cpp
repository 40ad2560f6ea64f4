#include "bibliocpp/signal_handles.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>
#include <vector>

#include "bibliocpp/language.h"

namespace {

using names = std::list<std::string>;

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

// "entrée" and "sortie" are of one gender, "input" and "output" take one article.
[[noreturn]] void end_for_unknown(const std::string& name, const names& own, const names& others,
                                  const std::string& kind, const std::string& other_kind) {
  std::vector<std::string> all(own.begin(), own.end());
  all.insert(all.end(), others.begin(), others.end());
  const auto nearest = std::min_element(all.begin(), all.end(), [&](const auto& a, const auto& b) {
    return distance(name, a) < distance(name, b);
  });
  std::string text =
      in_language("aucune ", "no ") + kind + in_language(" ne s'appelle \"", " is named \"") + name + '"';
  if (nearest != all.end()) {
    const bool other_way = nearest - all.begin() >= std::ssize(own);
    if (*nearest == name)
      text += in_language(" : c'est une ", ": that is an ") + other_kind;
    else
      text += in_language(" ; le nom le plus proche est \"", "; the nearest name is \"") + *nearest + '"' +
              (other_way ? in_language(", une ", ", an ") + other_kind : "");
  }
  text += in_language(". Les ", ". The ") + kind + in_language("s sont :", "s are:");
  for (const std::string& one : own) text += ' ' + one;
  if (own.empty()) text += in_language(" (aucune)", " (none)");
  std::cerr << text + '\n' << std::flush;
  std::exit(1);
}

std::ptrdiff_t last_of(const names& all, const std::string& name) {
  return std::distance(all.begin(), std::find(all.rbegin(), all.rend(), name).base()) - 1;
}

}  // namespace

input_signal::input_signal(IOsharemem_client& area, const std::string& name) {
  const names all = area.input_names();
  const std::ptrdiff_t i = last_of(all, name);
  if (i < 0)
    end_for_unknown(name, all, area.output_names(), in_language("entrée", "input"),
                    in_language("sortie", "output"));
  value = area.inputs_copy + i;
}

output_signal::output_signal(IOsharemem_client& area, const std::string& name) {
  const names all = area.output_names();
  const std::ptrdiff_t k = last_of(all, name);
  if (k < 0)
    end_for_unknown(name, all, area.input_names(), in_language("sortie", "output"),
                    in_language("entrée", "input"));
  value = area.adresse_mem->output + k;
}
