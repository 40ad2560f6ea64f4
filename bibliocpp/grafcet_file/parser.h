#pragma once
// A text of charts, read.

#include <string>
#include <string_view>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/remarks.h"

namespace grafcet_file {

struct parsed {
  program charts;
  std::vector<remark> remarks;  // in the order of the text

  bool ok() const;  // there are warnings at most
};

// The names that a plant has. With none given every name is taken for a signal of the plant.
struct plant_signals {
  std::vector<std::string> inputs, outputs;
};

// Reads a text, UTF-8, and checks all that can be known without running it. Never throws on a bad text; one
// that is not ok() must not be run, and its program may lack what could not be read.
parsed read_charts(std::string_view text, const plant_signals* plant = nullptr);

}  // namespace grafcet_file
