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

// What is told of a name that is no input's, or no output's.
struct wordings {
  std::string unknown;
  const char *is_other, *nearest_is_other, *all;
};

[[noreturn]] void end_for_unknown(const std::string& name, const names& own, const names& others,
                                  const wordings& say) {
  std::vector<std::string> all(own.begin(), own.end());
  all.insert(all.end(), others.begin(), others.end());
  const int nearest = nearest_name(name, all);
  std::string text = say.unknown;
  if (nearest >= 0) {
    const std::string& meant = all[static_cast<std::size_t>(nearest)];
    if (meant == name)
      text += say.is_other;
    else
      text += tr(" ; le nom le plus proche est \"{}\"", {meant}) +
              (nearest >= std::ssize(own) ? say.nearest_is_other : "");
  }
  text += say.all;
  for (const std::string& one : own) text += ' ' + one;
  if (own.empty()) text += tr(" (aucune)");
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
    end_for_unknown(name, all, area.output_names(),
                    {tr("aucune entrée ne s'appelle \"{}\"", {name}), tr(" : c'est une sortie"),
                     tr(", une sortie"), tr(". Les entrées sont :")});
  value = area.inputs_copy + i;
}

output_signal::output_signal(IOsharemem_client& area, const std::string& name) {
  const names all = area.output_names();
  const std::ptrdiff_t k = last_of(all, name);
  if (k < 0)
    end_for_unknown(name, all, area.input_names(),
                    {tr("aucune sortie ne s'appelle \"{}\"", {name}), tr(" : c'est une entrée"),
                     tr(", une entrée"), tr(". Les sorties sont :")});
  value = area.adresse_mem->output + k;
}
