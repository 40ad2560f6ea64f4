#pragma once
// The values of all expressions, and what edges and delays remember of them.

#include <cstdint>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/situation.h"

namespace grafcet_file {

class node_memories {
 public:
  explicit node_memories(const program& charts);

  // Gives every node its value in this situation; to be called once in an evolution, and once before the
  // first, where what is 1 seems to rise. Whether some edge is seen.
  bool evaluate(situation& now);

 private:
  struct memory {
    bool operand = false;  // at the last call
    bool in_time = false;  // a delay's t1 had passed
    std::int64_t risen_at = 0;
    std::int64_t left_at = 0;  // when t1/operand fell last
    bool has_left = false;
  };

  std::int64_t value(const node& n, const situation& now, memory& before) const;
  static bool delayed(const node& n, const situation& now, memory& before);

  const program& charts;
  std::vector<memory> memories;
};

}  // namespace grafcet_file
