#pragma once
// A scenario's course beside a run, cycle by cycle: what the operator does next, which signals are forced,
// and whether all that is expected has come. Pure logic: no process, no area, no clock.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "outils/examen/mistakes.h"
#include "outils/examen/scenario.h"
#include "outils/examen/verdict.h"

struct finding {
  enum class kind { passed, failed, not_judged } what = kind::passed;
  std::string sentence;    // what was missed, or the plant's own sentence, in the locale's language
  std::int64_t cycle = 0;  // when
};

class course {
 public:
  // Looks up every signal that the scenario names. Throws a scenario_error that tells all it does not find,
  // each with the nearest name of the plant's. A name is looked for among the inputs first.
  course(scenario a_scenario, std::vector<std::string> some_inputs, std::vector<std::string> some_outputs);

  // Once a cycle, in this order; values in the order of the area.
  // What the controller is to see in place of the plant's inputs.
  void force_inputs(std::int64_t cycle, std::span<std::int32_t> values) const { force(false, cycle, values); }
  // What the plant is to get in place of the controller's outputs.
  void force_outputs(std::int64_t cycle, std::span<std::int32_t> values) const { force(true, cycle, values); }
  // After both sides have spoken: what the operator does before the next cycle, as lines for the mock-up
  // ("hold dc"). `inputs` as the plant published them, `outputs` as the controller wrote them.
  std::vector<std::string> advance(std::int64_t cycle, std::span<const std::int32_t> inputs,
                                   std::span<const std::int32_t> outputs);

  // The plant's own sentence; only the first one of a run counts.
  void fault(std::int64_t cycle, const std::string& text);
  // The plant could not obey a line that advance() gave (no such button, ...): nothing can be judged.
  void refused(std::int64_t cycle, const std::string& line, const std::string& text);
  // Adds to the events what others have to tell (a controller's end, an operator at random).
  void note(std::int64_t cycle, const std::string& text) { told.push_back({cycle, text}); }

  // The scenario's time has come, an expectation has been missed, or the plant has told a fault.
  bool over() const { return ended; }
  // What is found at the end of the run, however it came. Callable once.
  finding end(std::int64_t cycle);
  // What has happened so far, in order.
  const std::vector<run_event>& events() const { return told; }

 private:
  struct signal {
    bool is_output;
    std::size_t index;
  };
  struct edge_count {  // beside one of the scenario's deliveries
    signal counted;
    std::int64_t so_far = 0;
  };
  // Beside a rest or a stop: begins when a signal rises, counts from the delay on, ends when another one
  // does.
  struct watch {
    signal begin;
    std::optional<signal> end;
    std::int64_t delay;
    std::vector<signal> looked_at;
    std::int64_t due = -1;  // the cycle from which it counts; -1: not begun
    bool examined = false;
  };

  void force(bool output, std::int64_t cycle, std::span<std::int32_t> values) const;
  signal find(const named_signal& wanted, mistakes& wrong) const;
  std::optional<signal> find(const std::optional<named_signal>& wanted, mistakes& wrong) const;
  std::int32_t value(signal s) const { return (s.is_output ? outputs : inputs)[s.index]; }
  bool rises(signal s) const;
  bool counts_now(watch& w, std::int64_t cycle, bool while_begun) const;
  const std::string& name(signal s) const { return (s.is_output ? output_names : input_names)[s.index]; }

  void check(std::int64_t cycle);
  void check_deliveries(std::size_t i, std::int64_t cycle);
  void check_values(const watch& w, std::int32_t expected, std::int64_t cycle);
  std::string what_was_good() const;
  void tell_forcings(std::int64_t cycle);
  void operate(std::int64_t cycle, std::vector<std::string>& lines);
  bool its_moment_has_come(std::int64_t cycle);
  void miss(std::int64_t cycle, const std::string& what);

  scenario asked;
  std::vector<std::string> input_names, output_names;
  std::vector<signal> forced, waited_for;  // beside the scenario's; of an action without a signal any
  std::vector<edge_count> deliveries;
  std::vector<watch> rests, stops;
  std::vector<std::pair<signal, std::optional<signal>>> nevers;

  std::vector<std::int32_t> inputs, outputs, inputs_before, outputs_before;
  std::size_t next = 0;          // action
  std::int64_t since = 0;        // when the one before was done
  std::int64_t times = 0;        // its signal has become so since
  std::int64_t moment = -1;      // the cycle at which it is to be done, once that is known
  std::int64_t release_at = -1;  // of the button that is pressed
  std::string plant_fault;
  std::optional<finding> found;
  bool ended = false;
  std::vector<run_event> told;
};
