#pragma once
#include <chrono>
#include <thread>

// Looks every other millisecond until it is so; false when it is not so in time. The time is only
// there to end a test that has failed.
template <typename Predicate>
bool wait_until(Predicate is_so, std::chrono::milliseconds in_time = std::chrono::seconds(20)) {
  const auto end = std::chrono::steady_clock::now() + in_time;
  while (!is_so()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}
