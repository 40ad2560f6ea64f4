#pragma once
// The order in which a controller writes its outputs.

#include <cstddef>
#include <vector>

// Calls set(k, level) for the k-th of `values` (0 or 1 each): first for all that are 0, then for all that
// are 1. A plant may look at any moment: everything that ends is dropped before anything begins, so that it
// never sees both at once.
template <typename Set>
void drop_then_set(const std::vector<int>& values, Set set) {
  for (const int level : {0, 1})
    for (std::size_t k = 0; k < values.size(); ++k)
      if (values[k] == level) set(k, level);
}
