#pragma once
// A plant being recorded while something else is done: a thread of its own looks every millisecond, so that
// neither drawing nor an open dialog loses a batch.

#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

#include "bibliocpp/area_recorder.h"

struct plant_figures {
  plant_state state = plant_state::running;
  double cycles_a_second = 0;
  std::int64_t batches = 0, answers = 0;
  std::int64_t median_us = -1, longest_us = -1;  // -1 when there was no answer
};

class recording {
 public:
  // Begins to look; ends with the run, or with this object.
  explicit recording(area_view area);

  // Brings the record up to date; whether there were changes. It and what it reaches belong to the caller.
  bool collect();
  const signal_record& record() const { return kept; }
  // Four times a second, and at once at the end.
  const plant_figures& figures() const { return shown; }

 private:
  void keep_looking(const std::stop_token& stop);

  area_recorder recorder;  // the thread's
  signal_record kept;
  plant_figures shown;

  std::mutex handing_over;  // what follows; never held for long
  std::vector<look_news::change> changes;
  std::vector<missed_batches> missed;
  std::int64_t looked_until_us = 0;
  plant_figures newest;

  std::jthread looking;  // the last member, so that it ends first
};
