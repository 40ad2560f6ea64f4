#include "bibliocpp/grafcet_file/outline.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace grafcet_file {

namespace {

constexpr int top = 0;

struct vertex {
  int step = none, transition = none;
  std::vector<int> next;
  int root = none;       // what it was first reached from
  int rank = none;       // among all in an order in which links go on
  int above = none;      // its dominator
  int before = 0;        // links that go on to it
  bool open = false;     // being gone through
  std::size_t done = 0;  // links followed
};

struct graph {
  std::vector<vertex> vertices{1};
  std::vector<int> order;                     // by rank
  std::vector<std::pair<int, int>> going_up;  // sorted
  std::vector<int> of_step, of_transition;

  vertex& at(int v) { return vertices[static_cast<std::size_t>(v)]; }
  const vertex& at(int v) const { return vertices[static_cast<std::size_t>(v)]; }
  int add(int step, int transition) {
    vertices.push_back({.step = step, .transition = transition, .next = {}});
    return static_cast<int>(vertices.size()) - 1;
  }
  void link(int from, int to) {
    std::vector<int>& next = at(from).next;
    if (std::find(next.begin(), next.end(), to) == next.end()) next.push_back(to);
  }
  bool goes_up(int from, int to) const {
    return std::binary_search(going_up.begin(), going_up.end(), std::pair(from, to));
  }
  // Over to a step of a sequence that starts elsewhere. A transition waits for all the steps before it,
  // wherever they come from.
  bool goes_over(int from, int to) const { return at(from).root != at(to).root && at(to).transition == none; }
  bool goes_on(int from, int to) const { return !goes_up(from, to) && !goes_over(from, to); }
};

graph graph_of(const program& charts, const chart& drawn) {
  graph all;
  all.of_step.assign(charts.steps.size(), none);
  all.of_transition.assign(charts.transitions.size(), none);
  for (const int s : drawn.steps) all.of_step[static_cast<std::size_t>(s)] = all.add(s, none);
  for (const int t : drawn.transitions) {
    const int made = all.of_transition[static_cast<std::size_t>(t)] = all.add(none, t);
    const transition& it = charts.transitions[static_cast<std::size_t>(t)];
    for (const int s : it.from)
      if (const int from = all.of_step[static_cast<std::size_t>(s)]; from != none) all.link(from, made);
    for (const int s : it.to)
      if (const int to = all.of_step[static_cast<std::size_t>(s)]; to != none) all.link(made, to);
  }
  return all;
}

// Follows all links from there, and ranks what was not reached before.
void follow(graph& all, int root, std::vector<int>& finished) {
  if (all.at(root).root != none) return;
  all.link(top, root);
  std::vector<int> way{root};
  all.at(root).root = root;
  all.at(root).open = true;
  while (!way.empty()) {
    const int here = way.back();
    vertex& it = all.at(here);
    if (it.done == it.next.size()) {
      it.open = false;
      finished.push_back(here);
      way.pop_back();
      continue;
    }
    const int next = it.next[it.done++];
    if (all.at(next).open) all.going_up.emplace_back(here, next);
    if (all.at(next).root != none) continue;
    all.at(next).root = root;
    all.at(next).open = true;
    way.push_back(next);
  }
}

// Sequences begin with initial steps, the entry of an expansion, what an enclosing step activates, and source
// transitions; whatever none of them leads to begins one as well.
void rank(graph& all, const program& charts, const chart& drawn) {
  std::vector<int> finished;
  const int entry = drawn.owner == none ? none : charts.steps[static_cast<std::size_t>(drawn.owner)].entry;
  for (const int s : drawn.steps) {
    const step& it = charts.steps[static_cast<std::size_t>(s)];
    if (it.initial || it.linked || s == entry)
      follow(all, all.of_step[static_cast<std::size_t>(s)], finished);
  }
  for (const int t : drawn.transitions)
    if (charts.transitions[static_cast<std::size_t>(t)].from.empty())
      follow(all, all.of_transition[static_cast<std::size_t>(t)], finished);
  for (int v = 1; v < static_cast<int>(all.vertices.size()); ++v)
    if (all.at(v).step != none) follow(all, v, finished);
  for (int v = 1; v < static_cast<int>(all.vertices.size()); ++v) follow(all, v, finished);

  std::sort(all.going_up.begin(), all.going_up.end());
  all.order.assign(finished.rbegin(), finished.rend());
  all.order.insert(all.order.begin(), top);
  for (std::size_t k = 0; k < all.order.size(); ++k) all.at(all.order[k]).rank = static_cast<int>(k);
}

// As there is no way back among the links that go on, one pass finds every dominator.
void find_dominators(graph& all) {
  const auto meet = [&all](int a, int b) {
    while (a != b)
      (all.at(a).rank > all.at(b).rank ? a : b) = all.at(all.at(a).rank > all.at(b).rank ? a : b).above;
    return a;
  };
  for (const int from : all.order)
    for (const int to : all.at(from).next) {
      if (from != top && !all.goes_on(from, to)) continue;
      all.at(to).above = all.at(to).before++ == 0 ? from : meet(from, all.at(to).above);
    }
}

// Which vertices stand somewhere under which.
class descent {
 public:
  explicit descent(const graph& all) : size(all.vertices.size(), 1), begin(all.vertices.size(), 0) {
    for (auto v = all.order.rbegin(); v != all.order.rend(); ++v)
      if (*v != top) count(size, all.at(*v).above) += count(size, *v);
    std::vector<int> next_place(all.vertices.size(), 1);
    for (const int v : all.order) {
      if (v == top) continue;
      const int above = all.at(v).above;
      count(begin, v) = count(begin, above) + count(next_place, above);
      count(next_place, above) += count(size, v);
    }
  }
  bool is_under(int v, int above) const {
    const auto a = static_cast<std::size_t>(above), b = static_cast<std::size_t>(v);
    return begin[b] >= begin[a] && begin[b] < begin[a] + size[a];
  }

 private:
  static int& count(std::vector<int>& of, int v) { return of[static_cast<std::size_t>(v)]; }
  std::vector<int> size, begin;
};

}  // namespace

outline outline_of(const program& charts, const chart& drawn) {
  graph all = graph_of(charts, drawn);
  rank(all, charts, drawn);
  find_dominators(all);
  const descent under(all);

  outline made;
  std::vector<int> element_of(all.vertices.size(), none);
  const auto at = [&made](int e) -> element& { return made.elements[static_cast<std::size_t>(e)]; };
  const auto add = [&](int step, int transition) {
    made.elements.push_back({.step = step, .transition = transition, .branches = {}, .joins = {}});
    return static_cast<int>(made.elements.size()) - 1;
  };
  for (const int v : all.order)
    element_of[static_cast<std::size_t>(v)] = add(all.at(v).step, all.at(v).transition);
  const auto element_at = [&](int v) { return element_of[static_cast<std::size_t>(v)]; };

  for (const int from : all.order) {
    const vertex& it = all.at(from);
    const int here = element_at(from);
    // Steps of other charts that a transition names: nothing here leads to them.
    std::vector<int> strangers;
    if (it.transition != none)
      for (const int s : charts.transitions[static_cast<std::size_t>(it.transition)].to)
        if (all.of_step[static_cast<std::size_t>(s)] == none) strangers.push_back(s);
    const bool several = it.next.size() + strangers.size() > 1;
    const auto bearer = [&] {  // of a link that is no branch
      if (!several) return here;
      const int line = add(none, none);
      at(here).branches.push_back(line);
      return line;
    };
    for (const int to : it.next) {
      if (all.at(to).before == 1 && all.at(to).above == from) {
        at(here).branches.push_back(element_at(to));
        continue;
      }
      const int line = bearer();
      at(line).to_step = all.at(to).step;
      at(line).to_transition = all.at(to).transition;
      const bool up = all.goes_up(from, to);
      if (up ? under.is_under(from, to) && all.at(to).step != none : all.goes_on(from, to)) {
        at(line).leads_to = element_at(to);
        at(line).goes_up = up;
        if (up) at(element_at(to)).looped = true;
      }
    }
    for (const int s : strangers) at(bearer()).to_step = s;
  }
  for (const int v : all.order)
    if (v != top && all.at(v).before > 1) at(element_at(all.at(v).above)).joins.push_back(element_at(v));
  return made;
}

}  // namespace grafcet_file
