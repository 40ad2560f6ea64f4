#pragma once
// Signals to this process, taken one after the other where it waits for them.

#include <chrono>

class signal_inbox {
 public:
  // From now on SIGTERM, SIGINT, SIGHUP and SIGCHLD wait here, also where they were ignored. SIGPIPE is
  // held back: that nobody reads our messages any more is no reason to end.
  signal_inbox();
  ~signal_inbox();
  signal_inbox(const signal_inbox&) = delete;
  signal_inbox& operator=(const signal_inbox&) = delete;

  // Waits for one; 0 when none comes in time, and now and then before that.
  int next(std::chrono::milliseconds in_time) const;
  int next() const { return next(for_ever); }
  // For poll(): readable when one waits.
  int readable() const { return descriptor; }

 private:
  static constexpr std::chrono::milliseconds for_ever{-1};
  int descriptor;
};
