#pragma once
// Charts at work: the five rules of evolution, from one batch of inputs to the next.
//
//   grafcet_file::evolution charts(parsed.charts);
//   charts.batch(inputs, now_us);       // until the situation is stable
//   charts.now().outputs ...
//
// Once made, nothing here allocates.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/situation.h"

namespace grafcet_file {

class evolution {
 public:
  // The program must be ok(), is not copied, and outlives this object. The initial situation holds before
  // the first batch; stored actions on activation of its steps are done then.
  explicit evolution(const program& charts);

  // A batch of inputs, in the order of program::inputs, at a time in microseconds that never falls. The first
  // evolution sees the changes of the inputs (edges); others follow until nothing changes any more, and only
  // then are the outputs of continuous actions set anew. After most_evolutions the batch is given up: then
  // the situation is not stable, and circle() tells the steps that go on changing.
  void batch(std::span<const std::int32_t> inputs, std::int64_t time_us);
  static constexpr int most_evolutions = 1000;

  // The same in single evolutions, for a view that goes step by step: begin(), then evolve() until it gives
  // false, which also sets the outputs.
  void begin(std::span<const std::int32_t> inputs, std::int64_t time_us);
  bool evolve();

  const situation& now() const { return present; }
  // Steps that were still changing when the last batch was given up; empty after a stable one.
  std::span<const int> circle() const;
};

}  // namespace grafcet_file
