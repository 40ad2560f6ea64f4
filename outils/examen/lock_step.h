#pragma once
// How long a plant is kept waiting for its controller.

#include <chrono>
#include <cstdint>
#include <functional>

#include "outils/examen/relay.h"

enum class answer { given, none, stop };

// Waits until the controller has announced outputs since its clock stood at `before`: a few microseconds by
// looking, then in short naps, in which others can work. Between two naps `goes_on` is asked whether there is
// any hope; when not, the answer is `stop`, unless one has come meanwhile.
answer wait_for_answer(const relay& between, std::int64_t before, std::chrono::milliseconds patience,
                       const std::function<bool()>& goes_on);
