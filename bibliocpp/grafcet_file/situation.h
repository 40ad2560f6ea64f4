#pragma once
// What charts are doing at a moment: made by the evolution after every evolution, and all that a live view
// needs.

#include <cstdint>
#include <vector>

namespace grafcet_file {

// Indexes are those of the program's lists. The sizes never change, so that copying one into another of the
// same program allocates nothing.
struct situation {
  std::vector<std::uint8_t> active;  // steps; a macro-step while a step of its expansion is
  std::vector<std::uint8_t>
      enabled;  // transitions: all steps before are active, and no forcing order holds it
  std::vector<std::uint8_t> receptive;  // transitions: the receptivity is true
  std::vector<std::uint8_t> forced;     // charts: held by a forcing order
  std::vector<std::int64_t> since_us;   // steps: when the step was activated or deactivated last
  std::vector<std::int64_t> variables;
  std::vector<std::int64_t> values;   // nodes of expressions, also those that are not asked for at the moment
  std::vector<std::int32_t> inputs;   // as given with the batch
  std::vector<std::int32_t> outputs;  // as of the last stable situation
  std::int64_t time_us = 0;           // as given with the batch
  std::int64_t batches = 0;
  std::int64_t evolutions = 0;  // of this batch, in which something changed
  bool stable = true;
};

}  // namespace grafcet_file
