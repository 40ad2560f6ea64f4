#pragma once
// A partial GRAFCET without parallel branches: one active step, and transitions written as a table.

#include <cstddef>

// Fires when `from` is active and the receptivity holds for the situation it is asked about.
template <typename Step, typename Situation>
struct transition {
  Step from;
  bool (*receptivity)(const Situation&);
  Step to;
};

template <typename Step>
class grafcet {
 public:
  explicit grafcet(Step initial) : active(initial) {}

  Step step() const { return active; }
  bool in(Step s) const { return active == s; }

  // Evolves by at most one transition, the first of the table that may fire: a step that has become
  // active is so for one batch of inputs at least, and its actions are seen.
  template <typename Situation, std::size_t count>
  void evolve(const transition<Step, Situation> (&table)[count], const Situation& situation) {
    for (const auto& t : table)
      if (t.from == active && t.receptivity(situation)) {
        active = t.to;
        return;
      }
  }

  // What a chart of higher rank does to this one.
  void force(Step s) { active = s; }

 private:
  Step active;
};
