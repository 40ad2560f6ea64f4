#pragma once
// Records a running plant from outside: looks at its area now and then, and keeps what has changed.

#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include "bibliocpp/area_view.h"
#include "bibliocpp/signal_record.h"

// suspended: the plant lives, but has announced no batch for half a second: a box of its is open, or it is
// one that announces by hand. over: it has said so. killed: its process has gone without a word.
enum class plant_state { running, suspended, over, killed };

// What one look has brought. The lists are those of the last look only.
struct look_news {
  struct change {
    std::size_t signal;  // its index in the record
    signal_change what;
  };
  std::vector<change> changes;
  std::int64_t missed = 0;  // batches that have come and gone since the look before
};

class area_recorder {
 public:
  // Takes the view, and looks for the first time: these are the initial values. The record's signals are
  // the inputs, then the outputs, in the order of the area. `most_changes`: as for signal_record.
  explicit area_recorder(area_view an_area, std::size_t most_changes = signal_record::default_most);

  // Looks at the time that it is. Call it often: every millisecond loses no batch of a plant that pauses
  // for 5 ms, and an output that rises and falls between two looks is not seen. A look takes about a
  // microsecond.
  //
  // A plant writes its inputs one by one and then announces the batch; nothing marks a batch that is
  // being written. Inputs are therefore taken when a batch has been announced since the look before, and
  // none was while they were read; when that fails three times, it is left to the next look, and the
  // batches in between count as missed. Outputs are taken at every look.
  const look_news& look() { return look_at(now_us()); }
  // The same, at a moment of the caller's; moments must not fall.
  const look_news& look_at(std::int64_t time_us);
  const look_news& news() const { return latest; }

  // Microseconds since the recorder was made, and when that was.
  std::int64_t now_us() const;
  std::chrono::system_clock::time_point made_at() const { return wall_start; }

  const area_view& area() const { return view; }
  const signal_record& record() const { return kept; }

  // As of the last look.
  plant_state state() const { return present; }
  bool ended() const { return present == plant_state::over || present == plant_state::killed; }

  // Batches of inputs announced, a second; over the last second or so; 0 in the first, and while suspended or
  // ended.
  double cycles_a_second() const;
  // Batches of inputs announced and batches of outputs announced since the recorder was made.
  std::int64_t batches() const { return batches_seen; }
  std::int64_t answers() const { return answers_seen; }
  // From the first batch of inputs that had no answer yet to the answer, microseconds: the median of the
  // last 1000 answers, and the longest since the recorder was made; -1 when there was none. Known no
  // better than the time between two looks, and never told shorter than it may have been.
  std::int64_t median_answer_us() const;
  std::int64_t longest_answer_us() const { return longest; }
  // How long the first unanswered batch has been waiting, at the last look; -1 when none does.
  std::int64_t unanswered_for_us() const { return waiting_since < 0 ? -1 : last_look - waiting_since; }

 private:
  void take_inputs(std::int64_t time_us);
  void take_outputs(std::int64_t time_us);
  void take(std::size_t signal, std::int64_t time_us, std::int32_t value);
  void measure(std::int64_t time_us);
  plant_state state_at(std::int64_t time_us) const;

  area_view view;
  signal_record kept;
  look_news latest;
  plant_state present = plant_state::running;
  std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
  std::chrono::system_clock::time_point wall_start = std::chrono::system_clock::now();

  std::array<std::int32_t, 41> values{};  // of the inputs, as they are being read
  std::int64_t clock = -1;                // of the inputs that were taken last; -1 before the first
  std::int64_t last_look = 0;

  std::int64_t counted_clock = 0, counted_answers = 0;  // as far as they have been counted
  std::int64_t batches_seen = 0, answers_seen = 0, last_batch_us = 0;
  std::int64_t rate_since_us = 0, rate_since_batches = 0;
  double rate = 0;
  std::int64_t waiting_since = -1, longest = -1;
  std::vector<std::int64_t> waits;  // of the last answers, in a ring
  std::size_t next_wait = 0;
};
