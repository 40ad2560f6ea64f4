// Selections in which two ways can be open at once.

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "bibliocpp/grafcet_file/reading.h"

namespace grafcet_file {

namespace {

bool is_edge(const node& n) { return n.what == operation::rising || n.what == operation::falling; }
bool is_leaf(const node& n) {
  return n.what == operation::input || n.what == operation::variable || n.what == operation::step;
}
bool compares(const node& n) { return n.what >= operation::equal && n.what <= operation::greater_or_equal; }

// Tries all values that what two receptivities read may have. Edges and delays may be true or not where their
// operand allows it.
class trial {
 public:
  explicit trial(const program& some_charts) : charts(some_charts) {
    std::map<std::tuple<operation, int, int, int, std::int64_t>, int> known;
    for (const node& n : charts.nodes) {
      const auto same = [this](int part) {
        return part == none ? none : alike[static_cast<std::size_t>(part)];
      };
      const int k = static_cast<int>(alike.size());
      alike.push_back(
          known.try_emplace({n.what, same(n.left), same(n.right), same(n.third), n.value}, k).first->second);
    }
    values.resize(charts.nodes.size());
  }

  // What makes both true, as a text; empty when nothing does, or when it is too much to try.
  std::string both_true(int one, int other, const std::vector<int>& active_steps) {
    one = alike[static_cast<std::size_t>(one)];
    other = alike[static_cast<std::size_t>(other)];
    gather(one, other);
    candidates.clear();
    std::int64_t ways = 1;
    for (const int u : unknown) {
      candidates.push_back(values_of(node_at(u), active_steps));
      ways *= std::ssize(candidates.back());
      if (ways > 20'000) return "";
    }
    std::vector<std::size_t> choice(unknown.size());
    for (; ways > 0 && !tired(); --ways) {
      if (holds(one, other, choice)) return told(choice);
      for (std::size_t k = 0; k < choice.size(); ++k) {
        if (++choice[k] < candidates[k].size()) break;
        choice[k] = 0;
      }
    }
    return "";
  }

  // So that no text, however bad, takes long.
  bool tired() const { return effort <= 0; }

 private:
  const node& node_at(int n) const { return charts.nodes[static_cast<std::size_t>(n)]; }
  std::int64_t& value_at(int n) {
    return values[static_cast<std::size_t>(alike[static_cast<std::size_t>(n)])];
  }

  // All nodes that count, in the order in which they can be computed; those among them that are free; and the
  // numbers that stand in comparisons.
  void gather(int one, int other) {
    std::set<int> found;
    std::vector<int> open{one, other};
    bool compared = false;
    while (!open.empty()) {
      const int n = alike[static_cast<std::size_t>(open.back())];
      open.pop_back();
      if (!found.insert(n).second) continue;
      compared = compared || compares(node_at(n));
      for (const int part : {node_at(n).left, node_at(n).right, node_at(n).third})
        if (part != none) open.push_back(part);
    }
    order.assign(found.begin(), found.end());
    effort -= 10 * std::ssize(order);
    unknown.clear();
    numbers = {0, 1};
    for (const int n : order) {
      const node& here = node_at(n);
      if (is_leaf(here) || is_edge(here) || here.what == operation::delay) unknown.push_back(n);
      if (compared && here.what == operation::constant && numbers.size() < 20 && here.value < INT32_MAX)
        for (const int by : {-1, 0, 1}) numbers.insert(here.value + by);
    }
  }

  std::vector<std::int64_t> values_of(const node& n, const std::vector<int>& active_steps) const {
    if (n.what == operation::step && std::count(active_steps.begin(), active_steps.end(), n.value) != 0)
      return {1};
    if (n.what == operation::input || n.what == operation::variable) return {numbers.begin(), numbers.end()};
    return {0, 1};
  }

  bool holds(int one, int other, const std::vector<std::size_t>& choice) {
    effort -= std::ssize(order) + 1;
    std::size_t k = 0;
    for (const int n : order) {
      const bool free = k < unknown.size() && unknown[k] == n;
      const std::int64_t chosen = free ? candidates[k][choice[k]] : 0;
      if (free) ++k;
      value_at(n) = value_of(node_at(n), chosen);
      if (free && !is_leaf(node_at(n)) && value_at(n) != chosen) return false;  // tried elsewhere
    }
    return value_at(one) != 0 && value_at(other) != 0 && delays_agree();
  }

  std::int64_t value_of(const node& n, std::int64_t chosen) {
    const std::int64_t left = n.left == none ? 0 : value_at(n.left);
    const std::int64_t right = n.right == none ? 0 : value_at(n.right);
    const auto wrapped = [](std::uint64_t v) { return static_cast<std::int64_t>(v); };
    const auto l = static_cast<std::uint64_t>(left), r = static_cast<std::uint64_t>(right);
    switch (n.what) {
      case operation::constant:
        return n.value;
      case operation::input:
      case operation::variable:
      case operation::step:
        return chosen;
      case operation::rising:
        return chosen != 0 && left != 0;
      case operation::falling:
        return chosen != 0 && left == 0;
      case operation::delay:
        return chosen != 0 && (left != 0 || n.third != none);
      case operation::negation:
        return left == 0;
      case operation::conjunction:
        return left != 0 && right != 0;
      case operation::disjunction:
        return left != 0 || right != 0;
      case operation::equal:
        return left == right;
      case operation::different:
        return left != right;
      case operation::less:
        return left < right;
      case operation::less_or_equal:
        return left <= right;
      case operation::greater:
        return left > right;
      case operation::greater_or_equal:
        return left >= right;
      case operation::opposite:
        return wrapped(0 - l);
      case operation::sum:
        return wrapped(l + r);
      case operation::difference:
        return wrapped(l - r);
      case operation::product:
        return wrapped(l * r);
    }
    return 0;
  }

  // Of two delays of the same operand the longer is not over before the shorter.
  bool delays_agree() {
    for (const int longer : unknown)
      for (const int shorter : unknown) {
        const node &a = node_at(longer), &b = node_at(shorter);
        if (a.what != operation::delay || b.what != operation::delay || a.third != none || b.third != none)
          continue;
        if (alike[static_cast<std::size_t>(a.left)] != alike[static_cast<std::size_t>(b.left)]) continue;
        if (value_at(a.right) >= value_at(b.right) && value_at(longer) != 0 && value_at(shorter) == 0)
          return false;
      }
    return true;
  }

  std::string told(const std::vector<std::size_t>& choice) const {
    std::string text;
    for (std::size_t k = 0; k < unknown.size(); ++k) {
      const node& n = node_at(unknown[k]);
      const std::int64_t value = candidates[k][choice[k]];
      if (n.what != operation::input && n.what != operation::variable) continue;
      const auto index = static_cast<std::size_t>(n.value);
      text += (text.empty() ? "" : ", ") +
              (n.what == operation::input ? charts.inputs[index].name : charts.variables[index].name) +
              " = " + std::to_string(value);
    }
    return text.empty() ? tr("toujours") : text;
  }

  const program& charts;
  std::vector<int> alike;  // by node: the first that is the same expression
  std::vector<std::int64_t> values;
  std::vector<int> order, unknown;
  std::set<std::int64_t> numbers;
  std::vector<std::vector<std::int64_t>> candidates;
  std::int64_t effort = 4'000'000;
};

}  // namespace

void warn_of_selections(const program& charts, remarks& told) {
  trial tries(charts);
  std::vector<std::vector<int>> behind(charts.steps.size());  // by step
  for (std::size_t t = 0; t < charts.transitions.size(); ++t)
    for (const int s : charts.transitions[t].from)
      behind[static_cast<std::size_t>(s)].push_back(static_cast<int>(t));
  for (const std::vector<int>& ways : behind)
    for (auto other = ways.begin(); other != ways.end(); ++other)
      for (auto one = ways.begin(); one != other && !tries.tired(); ++one) {
        const transition &first = charts.transitions[static_cast<std::size_t>(*one)],
                         &second = charts.transitions[static_cast<std::size_t>(*other)];
        std::vector<int> active = first.from;
        active.insert(active.end(), second.from.begin(), second.from.end());
        const std::string when = tries.both_true(first.receptivity, second.receptivity, active);
        if (!when.empty())
          told.warn(second.where, tr("peut être franchie en même temps que la transition de la ligne {} ({})",
                                     {std::to_string(first.where.line), when}));
      }
}

}  // namespace grafcet_file
