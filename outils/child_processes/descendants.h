#pragma once
// All processes that this one has started, and those that they have started in turn.

#include <sys/types.h>

#include <chrono>
#include <vector>

// From now on a descendant whose parent ends becomes our child, so that none is ever lost sight of.
void adopt_descendants();

// Those that there are now, in no order; one that has ended and is not yet waited for counts.
std::vector<pid_t> descendants();

// Sends them the signal; one that has ended meanwhile is passed over.
void signal_descendants(int number);

// Waits until all have ended by themselves; false when that takes longer.
bool wait_for_descendants(std::chrono::milliseconds in_time);

// Returns when none is left: SIGTERM first, SIGKILL for those that remain after `patience`.
void end_descendants(std::chrono::milliseconds patience);
