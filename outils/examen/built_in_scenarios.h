#pragma once
#include <array>

// The scenarios that come with a plant, as they stand in share/scenarios/.
struct built_in_scenario {
  const char *plant, *text;
};

extern const std::array<built_in_scenario, 2> built_in_scenarios;
