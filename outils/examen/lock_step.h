#pragma once
// How long a plant is kept waiting for its controller, and where both of them work.

#include <chrono>
#include <cstdint>
#include <functional>

#include "outils/examen/relay.h"

// Keeps this process, and all that it starts from now on, on one of the processors that it may use. In
// lock-step only one of an exam's processes has work to do at a time, and waking one that sleeps on another
// processor takes longer than a cycle. Exams of different numbers get different ones as long as there are.
void stay_on_one_processor(int number);

enum class answer { given, none, stop };

class answer_wait {
 public:
  // Waits until the controller has announced outputs since its clock stood at `before`: a few microseconds by
  // looking, then in short naps. Between two naps `goes_on` is asked whether there is any hope; when not, the
  // answer is `stop`, unless one has come meanwhile.
  answer wait(const relay& between, std::int64_t before, std::chrono::milliseconds patience,
              const std::function<bool()>& goes_on);

 private:
  // Cycles for which it does not look but naps: others want the processor, be it a controller that never
  // pauses, and each look in vain would cost one of their turns of some milliseconds.
  int busy = 0;
};
