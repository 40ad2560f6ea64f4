#pragma once
// Where a Modbus client finds the signals of an area. Addresses count from 0, as on the wire.
//
//   discrete inputs, input registers     0 ...     the inputs, in the area's order
//   coils, holding registers             0 ...     the outputs, in the area's order
//   input registers                      1000 ...  the batch counters, and the inputs once more, so that one
//                                                  request gives both of one batch

#include <iosfwd>

#include "bibliocpp/area_view.h"

constexpr int counters_at = 1000;
enum counter {
  input_clock_high,  // batches of inputs, bits 16 to 31
  input_clock_low,   // bits 0 to 15
  output_clock_high,
  output_clock_low,
  plant_announces,  // 1; 0 when no batch has come for half a second
  counters
};
constexpr int inputs_again_at = counters_at + counters;

// With the area's names, in the language of the locale.
void print_address_table(std::ostream& out, const area_view& area);
