#pragma once
// The last seconds of a recording as a timing chart in the markup of visionneuse: a line for each signal that
// has changed in them, with a rule at each change and a stroke while the signal is 1.

#include <cstdint>
#include <string>
#include <vector>

#include "bibliocpp/signal_record.h"

// How much of a column a stroke of dashes fills: in print a dash is wider than a column's character.
enum class medium { window, print };

// The last `seconds` before the end of the record. Signals that are constant there are told in words.
std::vector<std::string> signal_chart(const signal_record& record, double seconds, medium shown_in);
