#include "outils/surveillant/unanswered_batches.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

void unanswered_batches::look(std::int64_t clock, std::int64_t output_clock, time now) {
  const std::int64_t news = clock - std::exchange(last_clock, clock);
  if (std::exchange(last_output_clock, output_clock) != output_clock) {
    if (output_clock != 0) answered = true;  // a controller that attaches sets 0
    waiting.clear();
    oldest.reset();
    return;
  }
  if (news > 0) {
    waiting.push_back({now, news});
    if (!oldest) oldest = now;
  }
  for (; !waiting.empty() && now - waiting.front().when > 100ms; waiting.pop_front()) {
    late.batches += waiting.front().batches;
    if (!first_late) first_late = now;
  }
  if (oldest && now - *oldest > 100ms)
    late.longest =
        std::max(late.longest, std::chrono::duration_cast<std::chrono::milliseconds>(now - *oldest));
}

std::optional<unanswered_batches::report> unanswered_batches::due(time now, bool at_once) {
  if (late.batches == 0) return {};
  const bool complete = !oldest || now - *oldest <= 100ms || now - *first_late >= 1s;
  const bool allowed = !last_report || now - *last_report >= 1s;
  if (!at_once && !(complete && allowed)) return {};
  last_report = now;
  first_late.reset();
  return std::exchange(late, {});
}
