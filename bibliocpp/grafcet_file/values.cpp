#include "bibliocpp/grafcet_file/values.h"

#include <utility>

namespace grafcet_file {

namespace {

// Numbers wrap around.
std::int64_t wrapped(std::uint64_t value) { return static_cast<std::int64_t>(value); }
std::uint64_t bits(std::int64_t value) { return static_cast<std::uint64_t>(value); }

std::size_t at(std::int64_t index) { return static_cast<std::size_t>(index); }

// Whether more than `wait` lies between; a wait that is negative is over.
bool passed(std::int64_t since, std::int64_t now, std::int64_t wait) { return now - since >= wait; }

}  // namespace

node_memories::node_memories(const program& some_charts)
    : charts(some_charts), memories(some_charts.nodes.size()) {}

bool node_memories::evaluate(situation& now) {
  bool edge = false;
  for (std::size_t k = 0; k < charts.nodes.size(); ++k) {
    const node& n = charts.nodes[k];
    now.values[k] = value(n, now, memories[k]);
    if (now.values[k] != 0 && (n.what == operation::rising || n.what == operation::falling)) edge = true;
  }
  return edge;
}

std::int64_t node_memories::value(const node& n, const situation& now, memory& before) const {
  const auto left = [&] { return now.values[at(n.left)]; };
  const auto right = [&] { return now.values[at(n.right)]; };
  switch (n.what) {
    case operation::constant:
      return n.value;
    case operation::input:
      return now.inputs[at(n.value)];
    case operation::variable:
      return now.variables[at(n.value)];
    case operation::step:
      return now.active[at(n.value)];
    case operation::negation:
      return left() == 0;
    case operation::conjunction:
      return left() != 0 && right() != 0;
    case operation::disjunction:
      return left() != 0 || right() != 0;
    case operation::rising: {
      const bool was = std::exchange(before.operand, left() != 0);
      return !was && before.operand;
    }
    case operation::falling: {
      const bool was = std::exchange(before.operand, left() != 0);
      return was && !before.operand;
    }
    case operation::delay:
      return delayed(n, now, before);
    case operation::equal:
      return left() == right();
    case operation::different:
      return left() != right();
    case operation::less:
      return left() < right();
    case operation::less_or_equal:
      return left() <= right();
    case operation::greater:
      return left() > right();
    case operation::greater_or_equal:
      return left() >= right();
    case operation::opposite:
      return wrapped(0 - bits(left()));
    case operation::sum:
      return wrapped(bits(left()) + bits(right()));
    case operation::difference:
      return wrapped(bits(left()) - bits(right()));
    case operation::product:
      return wrapped(bits(left()) * bits(right()));
  }
  return 0;
}

// True from t1 after the operand has risen, if it lasts so long, until t2 after it has fallen.
bool node_memories::delayed(const node& n, const situation& now, memory& before) {
  const bool operand = now.values[at(n.left)] != 0;
  if (operand && !std::exchange(before.operand, operand)) before.risen_at = now.time_us;
  before.operand = operand;
  const bool in_time = operand && passed(before.risen_at, now.time_us, now.values[at(n.right)]);
  if (std::exchange(before.in_time, in_time) && !in_time) {
    before.left_at = now.time_us;
    before.has_left = true;
  }
  if (in_time || n.third == none) return in_time;
  return before.has_left && !passed(before.left_at, now.time_us, now.values[at(n.third)]);
}

}  // namespace grafcet_file
