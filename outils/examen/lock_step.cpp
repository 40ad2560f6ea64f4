#include "outils/examen/lock_step.h"

#include <sched.h>

#include <algorithm>
#include <thread>

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

void stay_on_one_processor(int number) {
  cpu_set_t all;
  if (sched_getaffinity(0, sizeof all, &all) != 0) return;
  int left = number % std::max(1, CPU_COUNT(&all));
  for (std::size_t n = 0; n < CPU_SETSIZE; ++n) {
    if (!CPU_ISSET(n, &all) || left-- > 0) continue;
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(n, &one);
    sched_setaffinity(0, sizeof one, &one);
    return;
  }
}

answer answer_wait::wait(const relay& between, std::int64_t before, std::chrono::milliseconds patience,
                         const std::function<bool()>& goes_on) {
  constexpr auto moments = 300us, turn_of_others = 1000us;
  constexpr std::chrono::microseconds longest_nap = 1ms;
  const auto begin = clock_type::now();
  auto last = begin;
  auto nap = 10us;
  if (busy > 0) --busy;
  for (int naps = 0;;) {
    if (between.answers() != before) return answer::given;
    const auto now = clock_type::now();
    if (now - last > turn_of_others && naps == 0) busy = 1000;
    last = now;
    if (busy == 0 && now - begin < moments) {
      sched_yield();
      continue;
    }
    if (!goes_on()) return between.answers() != before ? answer::given : answer::stop;
    if (now - begin > patience) return answer::none;
    std::this_thread::sleep_for(nap);
    if (++naps > 20) nap = std::min(2 * nap, longest_nap);
  }
}
