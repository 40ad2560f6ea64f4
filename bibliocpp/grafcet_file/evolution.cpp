#include "bibliocpp/grafcet_file/evolution.h"

#include <algorithm>

namespace grafcet_file {

namespace {

template <typename Things>
auto& at(Things& things, std::int64_t index) {
  return things[static_cast<std::size_t>(index)];
}

situation sized_for(const program& charts) {
  situation s;
  s.active.resize(charts.steps.size());
  s.since_us.resize(charts.steps.size());
  s.enabled.resize(charts.transitions.size());
  s.receptive.resize(charts.transitions.size());
  s.forced.resize(charts.charts.size());
  s.values.resize(charts.nodes.size());
  s.inputs.resize(charts.inputs.size());
  s.outputs.resize(charts.outputs.size());
  for (const variable& v : charts.variables) s.variables.push_back(v.initial);
  return s;
}

// How many parts a chart lies in.
int depth(const program& charts, int c) {
  int n = 0;
  for (int owner = at(charts.charts, c).owner; owner != none; ++n)
    owner = at(charts.charts, at(charts.steps, owner).chart).owner;
  return n;
}

// The innermost encapsulation's step around a chart.
int enclosing_step(const program& charts, int c) {
  while (c != none && at(charts.charts, c).kind == chart_kind::expansion)
    c = at(charts.steps, at(charts.charts, c).owner).chart;
  return at(charts.charts, c).owner;
}

}  // namespace

evolution::evolution(const program& some_charts)
    : charts(some_charts),
      present(sized_for(some_charts)),
      memories(some_charts),
      next(some_charts.steps.size()),
      next_forced(some_charts.charts.size()),
      continuously(some_charts.outputs.size()),
      still_changing(some_charts.steps.size()),
      changing(some_charts.steps.size()) {
  for (const step& s : charts.steps) root.push_back(at(charts.charts, s.chart).root);
  order_parts();
  collect_crossings();
  collect_actions();
  order_forcings();
  for (std::size_t s = 0; s < next.size(); ++s) next[s] = charts.steps[s].initial;
  open_and_close_encapsulations();
  force();
  mark_macros();
  present.active = next;
  present.forced = next_forced;
}

// --- What is made ready once ---

void evolution::order_parts() {
  enclosed.resize(charts.charts.size());
  for (int c = 0; c < std::ssize(charts.charts); ++c) {
    if (at(charts.charts, c).kind != chart_kind::grafcet) parts.push_back(c);
    for (int outer = c; outer != none;) {
      at(enclosed, outer)
          .insert(at(enclosed, outer).end(), at(charts.charts, c).steps.begin(),
                  at(charts.charts, c).steps.end());
      const int owner = at(charts.charts, outer).owner;
      outer = owner == none ? none : at(charts.steps, owner).chart;
    }
  }
  std::stable_sort(parts.begin(), parts.end(),
                   [this](int a, int b) { return depth(charts, a) < depth(charts, b); });
}

void evolution::collect_crossings() {
  for (const transition& t : charts.transitions) {
    crossing made{{}, {}, enclosing_step(charts, t.chart), at(charts.charts, t.chart).root, t.receptivity};
    for (const int s : t.from) made.from.push_back(at(charts.steps, s).macro ? at(charts.steps, s).exit : s);
    for (const int s : t.to) made.to.push_back(at(charts.steps, s).macro ? at(charts.steps, s).entry : s);
    crossings.push_back(std::move(made));
  }
}

void evolution::collect_actions() {
  for (int s = 0; s < std::ssize(charts.steps); ++s)
    for (const action& a : at(charts.steps, s).actions) switch (a.kind) {
        case action_kind::continuous:
          continuous.push_back({s, a.condition, a.target});
          at(continuously, a.target) = 1;
          break;
        case action_kind::stored:
          stored.push_back({s, a.event, a.value, a.target, a.when, a.on_signal});
          break;
        case action_kind::forcing:
          forcings.push_back({s, a.target, a.order, imposed_by(a)});
          break;
      }
}

// An enclosing step that is forced opens its encapsulations, unless the order names steps in them.
std::vector<std::uint8_t> evolution::imposed_by(const action& a) const {
  std::vector<std::uint8_t> imposed(charts.steps.size());
  for (const int s : a.situation) at(imposed, s) = 1;
  if (a.order == forced_to::initial)
    for (std::size_t s = 0; s < imposed.size(); ++s)
      imposed[s] = root[s] == a.target && charts.steps[s].initial;
  for (const int c : parts) {
    const chart& part = at(charts.charts, c);
    if (part.kind != chart_kind::encapsulation || part.root != a.target || at(imposed, part.owner) == 0)
      continue;
    const auto& inside = at(enclosed, c);
    if (std::any_of(inside.begin(), inside.end(), [&](int s) { return at(imposed, s) != 0; })) continue;
    for (const int s : part.steps) at(imposed, s) = at(charts.steps, s).linked;
  }
  return imposed;
}

// A GRAFCET that is forced stands below the one that forces it.
void evolution::order_forcings() {
  std::vector<int> rank(charts.charts.size());
  for (std::size_t n = 0; n < charts.charts.size(); ++n)
    for (const forcing_order& f : forcings)
      at(rank, f.target) = std::max(at(rank, f.target), at(rank, at(root, f.step)) + 1);
  std::stable_sort(forcings.begin(), forcings.end(), [&](const forcing_order& a, const forcing_order& b) {
    return at(rank, at(root, a.step)) < at(rank, at(root, b.step));
  });
}

// --- A batch ---

void evolution::begin(std::span<const std::int32_t> inputs, std::int64_t time_us) {
  std::copy(inputs.begin(), inputs.end(), present.inputs.begin());
  present.time_us = time_us;
  present.evolutions = 0;
  ++present.batches;
  changing_steps = 0;
  std::fill(still_changing.begin(), still_changing.end(), 0);
  if (!first_batch) return;
  first_batch = false;
  std::fill(present.since_us.begin(), present.since_us.end(), time_us);
  memories.evaluate(present);  // what is 1 now does not rise in the first evolution
  next = present.active;
  std::fill(present.active.begin(), present.active.end(), 0);
  store(moment::activation);
  present.active = next;
}

void evolution::batch(std::span<const std::int32_t> inputs, std::int64_t time_us) {
  begin(inputs, time_us);
  for (int n = 0; n < most_evolutions; ++n)
    if (!evolve()) return;
  for (std::size_t s = 0; s < still_changing.size(); ++s)
    if (still_changing[s] != 0) changing[changing_steps++] = static_cast<int>(s);
}

// One evolution: what can be cleared is cleared at once, then higher GRAFCETs have their say.
bool evolution::evolve() {
  const bool event = memories.evaluate(present);
  clear_transitions();
  open_and_close_encapsulations();
  force();
  mark_macros();
  const bool situation_changes = next != present.active;
  bool changed = store(moment::event);
  if (situation_changes) {
    changed = store(moment::deactivation) || changed;
    changed = store(moment::activation) || changed;
    take_over();
  }
  present.forced = next_forced;
  present.stable = !changed && !situation_changes && !event;
  if (present.stable)
    act();
  else
    ++present.evolutions;
  return !present.stable;
}

// What is activated and deactivated at once stays active.
void evolution::clear_transitions() {
  next = present.active;
  for (std::size_t k = 0; k < crossings.size(); ++k) {
    const crossing& c = crossings[k];
    bool enabled =
        at(present.forced, c.grafcet) == 0 && (c.within == none || at(present.active, c.within) != 0);
    for (const int s : c.from) enabled = enabled && at(present.active, s) != 0;
    present.enabled[k] = enabled;
    present.receptive[k] = at(present.values, c.receptivity) != 0;
    if (enabled && present.receptive[k] != 0)
      for (const int s : c.from) at(next, s) = 0;
  }
  for (std::size_t k = 0; k < crossings.size(); ++k)
    if (present.enabled[k] != 0 && present.receptive[k] != 0)
      for (const int s : crossings[k].to) at(next, s) = 1;
}

// A step that is left empties its encapsulations; one that is entered activates the linked steps in them.
void evolution::open_and_close_encapsulations() {
  for (const int c : parts) {
    const chart& part = at(charts.charts, c);
    if (part.kind != chart_kind::encapsulation) continue;
    if (at(next, part.owner) == 0) {
      for (const int s : at(enclosed, c)) at(next, s) = 0;
    } else if (at(present.active, part.owner) == 0) {
      const auto& inside = at(enclosed, c);
      if (std::any_of(inside.begin(), inside.end(), [this](int s) { return at(next, s) != 0; })) continue;
      for (const int s : part.steps) at(next, s) = at(charts.steps, s).linked;
    }
  }
}

// The first order that holds a GRAFCET counts.
void evolution::force() {
  std::fill(next_forced.begin(), next_forced.end(), 0);
  for (const forcing_order& f : forcings) {
    if (at(next, f.step) == 0 || at(next_forced, f.target) != 0) continue;
    at(next_forced, f.target) = 1;
    if (f.order == forced_to::present) continue;
    for (std::size_t s = 0; s < next.size(); ++s)
      if (root[s] == f.target) next[s] = f.imposed[s];
  }
}

// Innermost first.
void evolution::mark_macros() {
  for (auto c = parts.rbegin(); c != parts.rend(); ++c) {
    const chart& part = at(charts.charts, *c);
    if (part.kind != chart_kind::expansion) continue;
    at(next, part.owner) =
        std::any_of(part.steps.begin(), part.steps.end(), [this](int s) { return at(next, s) != 0; });
  }
}

void evolution::take_over() {
  const bool late = present.evolutions >= most_evolutions / 2;
  for (std::size_t s = 0; s < next.size(); ++s) {
    if (present.active[s] == next[s]) continue;
    present.since_us[s] = present.time_us;
    if (late) still_changing[s] = 1;
  }
  present.active = next;
}

// What is assigned was computed before the evolution; of two assignments the later in the text counts.
bool evolution::store(moment when) {
  bool changed = false;
  for (const stored_action& a : stored) {
    if (a.when != when) continue;
    const bool was = at(present.active, a.step) != 0, is = at(next, a.step) != 0;
    const bool due = when == moment::event          ? was && at(present.values, a.event) != 0
                     : when == moment::deactivation ? was && !is
                                                    : !was && is;
    if (!due) continue;
    const std::int64_t value = at(present.values, a.value);
    if (a.on_signal) {
      at(present.outputs, a.target) = static_cast<std::int32_t>(value);
    } else {
      changed = changed || at(present.variables, a.target) != value;
      at(present.variables, a.target) = value;
    }
  }
  return changed;
}

// Continuous actions, once the situation is stable.
void evolution::act() {
  for (std::size_t k = 0; k < continuously.size(); ++k)
    if (continuously[k] != 0) present.outputs[k] = 0;
  for (const continuous_action& a : continuous)
    if (at(present.active, a.step) != 0 && (a.condition == none || at(present.values, a.condition) != 0))
      at(present.outputs, a.output) = 1;
}

}  // namespace grafcet_file
