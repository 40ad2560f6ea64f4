#include "outils/grafcet/area_signals.h"

#include <cstddef>

grafcet_file::plant_signals signals_of(IOsharemem_client& area) {
  const auto inputs = area.input_names(), outputs = area.output_names();
  return {{inputs.begin(), inputs.end()}, {outputs.begin(), outputs.end()}};
}

area_signals::area_signals(IOsharemem_client& an_area, const grafcet_file::program& charts) : area(an_area) {
  for (const auto& s : charts.inputs) from.emplace_back(area, s.name);
  for (const auto& s : charts.outputs) to.emplace_back(area, s.name);
  values.resize(from.size());
}

std::span<const std::int32_t> area_signals::inputs() {
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = from[i];
  return values;
}

void area_signals::answer(std::span<const std::int32_t> wanted) {
  for (const bool rises : {false, true})
    for (std::size_t k = 0; k < to.size(); ++k)
      if ((wanted[k] != 0) == rises) to[k] = wanted[k];
  area.outputs_refresh();
}
