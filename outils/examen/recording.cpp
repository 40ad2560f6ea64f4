#include "outils/examen/recording.h"

#include "outils/examen/scenario.h"

namespace {

std::vector<recorded_signal> all_of(const std::vector<std::string>& inputs,
                                    const std::vector<std::string>& outputs) {
  std::vector<recorded_signal> all;
  for (const std::string& name : inputs) all.push_back({name, false});
  for (const std::string& name : outputs) all.push_back({name, true});
  return all;
}

}  // namespace

recording::recording(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs)
    : its(all_of(inputs, outputs)) {}

void recording::add(std::int64_t cycle, std::span<const std::int32_t> inputs,
                    std::span<const std::int32_t> outputs) {
  add_changes(cycle, inputs, 0);
  add_changes(cycle, outputs, inputs.size());
  its.extend(cycle * cycle_us);
}

void recording::add_changes(std::int64_t cycle, std::span<const std::int32_t> values, std::size_t first) {
  for (std::size_t n = 0; n < values.size(); ++n) {
    const std::size_t signal = first + n;
    if (signal < last.size() && last[signal] == values[n]) continue;
    signal < last.size() ? static_cast<void>(last[signal] = values[n]) : last.push_back(values[n]);
    its.add(signal, {cycle * cycle_us, cycle, values[n]});
  }
}
