#include "outils/passerelle_modbus/process_image.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>

#include "outils/passerelle_modbus/address_table.h"

namespace {

using namespace std::chrono_literals;

std::uint16_t as_register(std::int32_t value) {
  constexpr std::int32_t least = std::numeric_limits<std::int16_t>::min(),
                         most = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::uint16_t>(std::clamp(value, least, most));
}

bool within(int first, int count, int begin, int size) {
  return first >= begin && first + count <= begin + size;
}

}  // namespace

process_image::process_image(const area_view& an_area) : area(an_area), plant(area.ident()) {
  for (const std::string& name : area.output_names()) outputs.emplace_back(plant, name);
  const int ins = static_cast<int>(area.input_names().size()), outs = static_cast<int>(outputs.size());
  mapping.reset(modbus_mapping_new(outs, ins, outs, inputs_again_at + ins));
  if (!mapping) throw std::bad_alloc();
}

plant_state process_image::look(time now) {
  constexpr auto suspended_after = 500ms, check_every = 10ms;
  const std::int64_t clock = area.clock();
  if (clock < 0) return plant_state::over;
  if (clock != batch) {
    copy_inputs();
    last_batch = now;
  }
  if (now - last_batch < suspended_after) {
    mapping->tab_input_registers[counters_at + plant_announces] = 1;
    return plant_state::running;
  }
  mapping->tab_input_registers[counters_at + plant_announces] = 0;
  if (now - last_check < check_every) return plant_state::suspended;
  last_check = now;
  return area.plant_runs() ? plant_state::suspended : plant_state::killed;
}

// Once more when the next batch is announced meanwhile. A counter that never stands still is nobody's clock.
void process_image::copy_inputs() {
  for (int tries = 100; tries > 0 && batch != area.clock(); --tries) {
    batch = area.clock();
    for (std::size_t i = 0; i < area.input_names().size(); ++i) {
      const std::int32_t value = area.input(i);
      mapping->tab_input_bits[i] = value != 0;
      mapping->tab_input_registers[i] = as_register(value);
      mapping->tab_input_registers[inputs_again_at + i] = as_register(value);
    }
  }
  set_counter(input_clock_high, batch);
}

void process_image::set_counter(int first, std::int64_t value) {
  std::uint16_t* const words = mapping->tab_input_registers + counters_at + first;
  words[0] = static_cast<std::uint16_t>(value >> 16);
  words[1] = static_cast<std::uint16_t>(value);
}

bool process_image::has(modbus_table table, int first, int count) const {
  const int ins = static_cast<int>(area.input_names().size()), outs = static_cast<int>(outputs.size());
  switch (table) {
    case modbus_table::coils:
    case modbus_table::holding_registers:
      return within(first, count, 0, outs);
    case modbus_table::discrete_inputs:
      return within(first, count, 0, ins);
    case modbus_table::input_registers:
      return within(first, count, 0, ins) || within(first, count, counters_at, counters + ins);
  }
  return false;
}

modbus_mapping_t* process_image::tables() {
  for (std::size_t k = 0; k < outputs.size(); ++k) {
    const std::int32_t value = area.output(k);
    mapping->tab_bits[k] = value == 1;
    mapping->tab_registers[k] = as_register(value);
  }
  set_counter(output_clock_high, area.output_clock());
  return mapping.get();
}

void process_image::write(modbus_table table, int first, int count) {
  const auto begin = static_cast<std::size_t>(first), end = begin + static_cast<std::size_t>(count);
  for (std::size_t k = begin; k < end; ++k)
    outputs[k] = table == modbus_table::coils ? mapping->tab_bits[k]
                                              : static_cast<std::int16_t>(mapping->tab_registers[k]);
  plant.outputs_refresh();
}

bool process_image::drop_outputs() {
  bool dropped = false;
  for (std::size_t k = 0; k < outputs.size(); ++k) {
    dropped = dropped || area.output(k) != 0;
    outputs[k] = 0;
  }
  if (dropped) plant.outputs_refresh();
  return dropped;
}
