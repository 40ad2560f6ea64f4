#pragma once
// Charts at work: the five rules of evolution, from one batch of inputs to the next.
//
//   grafcet_file::evolution charts(parsed.charts);
//   charts.batch(inputs, now_us);       // until the situation is stable
//   charts.now().outputs ...
//
// Once made, nothing here allocates.

#include <cstdint>
#include <span>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/situation.h"
#include "bibliocpp/grafcet_file/values.h"

namespace grafcet_file {

class evolution {
 public:
  // The program must be ok(), is not copied, and outlives this object. The initial situation holds at once;
  // stored actions on activation of its steps are done as the first batch begins.
  explicit evolution(const program& some_charts);

  // A batch of inputs, in the order of program::inputs, at a time in microseconds that never falls. The first
  // evolution sees the changes of the inputs (edges); others follow until nothing changes any more, and only
  // then are the outputs of continuous actions set anew. After most_evolutions the batch is given up: then
  // the situation is not stable, and circle() tells the steps that go on changing.
  void batch(std::span<const std::int32_t> inputs, std::int64_t time_us);
  static constexpr int most_evolutions = 1000;

  // The same in single evolutions, for a view that goes step by step: begin(), then evolve() until it gives
  // false, which also sets the outputs.
  void begin(std::span<const std::int32_t> inputs, std::int64_t time_us);
  bool evolve();

  const situation& now() const { return present; }
  // Steps that were still changing when the last batch was given up, in the order of the text; empty after a
  // stable one.
  std::span<const int> circle() const { return {changing.data(), changing_steps}; }

 private:
  // What an action does, with indexes ready.
  struct stored_action {
    int step, event, value, target;
    moment when;
    bool on_signal;
  };
  struct continuous_action {
    int step, condition, output;
  };
  struct forcing_order {
    int step, target;  // target: a GRAFCET
    forced_to order;
    std::vector<std::uint8_t> imposed;  // by step, where the order gives a situation
  };
  struct crossing {
    std::vector<int> from, to;  // steps that are truly deactivated and activated
    int within;                 // the enclosing step that must be active, or none
    int grafcet, receptivity;
  };

  void collect_actions();
  void collect_crossings();
  void order_parts();
  void order_forcings();
  std::vector<std::uint8_t> imposed_by(const action& a) const;

  void clear_transitions();
  void open_and_close_encapsulations();
  void force();
  void mark_macros();
  void take_over();
  bool store(moment when);
  void act();

  const program& charts;
  situation present;
  node_memories memories;
  std::vector<crossing> crossings;
  std::vector<stored_action> stored;
  std::vector<continuous_action> continuous;
  std::vector<forcing_order> forcings;       // those of higher GRAFCETs first
  std::vector<int> parts;                    // expansions and encapsulations, outer ones first
  std::vector<std::vector<int>> enclosed;    // by chart: for an encapsulation, all steps in it at any depth
  std::vector<int> root;                     // by step: its GRAFCET
  std::vector<std::uint8_t> next;            // by step
  std::vector<std::uint8_t> next_forced;     // by chart
  std::vector<std::uint8_t> continuously;    // by output: driven by continuous actions
  std::vector<std::uint8_t> still_changing;  // by step
  std::vector<int> changing;
  std::size_t changing_steps = 0;
  bool first_batch = true;
};

}  // namespace grafcet_file
