#include "bibliocpp/signal_handles.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <vector>

#include "bibliocpp/language.h"
#include "bibliocpp/nearest_name.h"

namespace {

using names = std::list<std::string>;

// "entrée" and "sortie" are of one gender, "input" and "output" take one article.
[[noreturn]] void end_for_unknown(const std::string& name, const names& own, const names& others,
                                  const std::string& kind, const std::string& other_kind) {
  std::vector<std::string> all(own.begin(), own.end());
  all.insert(all.end(), others.begin(), others.end());
  const int nearest = nearest_name(name, all);
  std::string text =
      in_language("aucune ", "no ") + kind + in_language(" ne s'appelle \"", " is named \"") + name + '"';
  if (nearest >= 0) {
    const bool other_way = nearest >= std::ssize(own);
    const std::string& meant = all[static_cast<std::size_t>(nearest)];
    if (meant == name)
      text += in_language(" : c'est une ", ": that is an ") + other_kind;
    else
      text += in_language(" ; le nom le plus proche est \"", "; the nearest name is \"") + meant + '"' +
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
