#pragma once
// The signals of charts in a plant's area.

#include <cstdint>
#include <span>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "bibliocpp/signal_handles.h"

grafcet_file::plant_signals signals_of(IOsharemem_client& area);

class area_signals {
 public:
  area_signals(IOsharemem_client& an_area, const grafcet_file::program& charts);

  // As they were when the area last received.
  std::span<const std::int32_t> inputs();
  // Those that fall are written before those that rise: the plant may look in between.
  void answer(std::span<const std::int32_t> wanted);

 private:
  IOsharemem_client& area;
  std::vector<input_signal> from;
  std::vector<output_signal> to;
  std::vector<std::int32_t> values;
};
