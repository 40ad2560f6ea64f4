#pragma once
// An exam's signals as they were, on the plant's own time.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "bibliocpp/signal_record.h"

class recording {
 public:
  recording(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);
  // Once a cycle: inputs as the controller got them, outputs as it wrote them.
  void add(std::int64_t cycle, std::span<const std::int32_t> inputs, std::span<const std::int32_t> outputs);
  const signal_record& record() const { return its; }

 private:
  void add_changes(std::int64_t cycle, std::span<const std::int32_t> values, std::size_t first);

  signal_record its;
  std::vector<std::int32_t> last;  // empty before the first cycle
};
