#include "outils/examen/course.h"

#include <algorithm>

#include "bibliocpp/language.h"
#include "bibliocpp/nearest_name.h"
#include "outils/examen/number_text.h"

namespace {

using kind = operator_action::kind;

// The plant's sentences are laid out in lines for a box.
std::string one_line(const std::string& text) {
  std::string line;
  for (const char c : text)
    if (c != '\n' && c != ' ')
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  return line;
}

std::string what_is_done(const operator_action& action) {
  switch (action.what) {
    case kind::press:
      return tr("l'opérateur appuie sur {}", {action.label});
    case kind::hold:
      return tr("l'opérateur tient {}", {action.label});
    case kind::release:
      return tr("l'opérateur lâche {}", {action.label});
    default:
      return tr("l'opérateur règle {} à {}", {action.label, in_short(action.value)});
  }
}

// The line that begins the action.
std::string order(const operator_action& action) {
  switch (action.what) {
    case kind::release:
      return "release " + action.label;
    case kind::set:
      return "set " + in_short(action.value) + " " + action.label;
    default:
      return "hold " + action.label;
  }
}

}  // namespace

course::course(scenario a_scenario, std::vector<std::string> some_inputs,
               std::vector<std::string> some_outputs)
    : asked(std::move(a_scenario)),
      input_names(std::move(some_inputs)),
      output_names(std::move(some_outputs)),
      inputs(input_names.size()),
      outputs(output_names.size()) {
  mistakes wrong(asked.file);
  for (const forcing& one : asked.forced) forced.push_back(find(one.signal, wrong));
  for (const operator_action& one : asked.actions)
    waited_for.push_back(find(one.on, wrong).value_or(signal{}));
  for (const expected_edges& one : asked.deliveries) deliveries.push_back({find(one.signal, wrong)});
  for (const expected_rest& one : asked.rests) {
    watch& w = rests.emplace_back(watch{find(one.after, wrong), find(one.until, wrong), one.delay, {}});
    for (const named_signal& each : one.signals) w.looked_at.push_back(find(each, wrong));
  }
  for (const expected_stop& one : asked.stops) {
    watch& w = stops.emplace_back(watch{find(one.signal, wrong), find(one.until, wrong), one.delay, {}});
    std::vector<bool> is_excepted(output_names.size());
    for (const named_signal& each : one.except) {
      const signal except = find(each, wrong);
      if (except.is_output) is_excepted[except.index] = true;
    }
    for (std::size_t k = 0; k < output_names.size(); ++k)
      if (!is_excepted[k]) w.looked_at.push_back({true, k});
  }
  for (const expected_never& one : asked.nevers)
    nevers.emplace_back(find(one.signal, wrong), find(one.with, wrong));
  if (wrong.any()) throw scenario_error(wrong.text());
}

course::signal course::find(const named_signal& wanted, mistakes& wrong) const {
  for (const bool is_output : {false, true}) {
    const std::vector<std::string>& names = is_output ? output_names : input_names;
    const auto at = std::find(names.begin(), names.end(), wanted.name);
    if (at != names.end()) return {is_output, static_cast<std::size_t>(at - names.begin())};
  }
  std::vector<std::string> all = input_names;
  all.insert(all.end(), output_names.begin(), output_names.end());
  const std::ptrdiff_t nearest = nearest_name(wanted.name, all);
  wrong.add(wanted.line, tr("aucun signal ne s'appelle « {} » ; le plus proche est « {} »",
                            {wanted.name, all.empty() ? "-" : all[static_cast<std::size_t>(nearest)]}));
  return {};
}

std::optional<course::signal> course::find(const std::optional<named_signal>& wanted, mistakes& wrong) const {
  if (!wanted) return std::nullopt;
  return find(*wanted, wrong);
}

void course::force(bool output, std::int64_t cycle, std::span<std::int32_t> values) const {
  for (std::size_t i = 0; i < forced.size(); ++i) {
    const forcing& wanted = asked.forced[i];
    if (forced[i].is_output == output && wanted.from <= cycle && cycle < wanted.until)
      values[forced[i].index] = wanted.value;
  }
}

std::vector<std::string> course::advance(std::int64_t cycle, std::span<const std::int32_t> some_inputs,
                                         std::span<const std::int32_t> some_outputs) {
  inputs.assign(some_inputs.begin(), some_inputs.end());
  outputs.assign(some_outputs.begin(), some_outputs.end());
  tell_forcings(cycle);
  check(cycle);
  std::vector<std::string> lines;
  if (!ended) operate(cycle, lines);
  inputs_before = inputs;
  outputs_before = outputs;
  ended = ended || cycle >= asked.cycles;
  return lines;
}

// What a signal was before the first cycle is not known: it does not rise there.
bool course::rises(signal s) const {
  const std::vector<std::int32_t>& before = s.is_output ? outputs_before : inputs_before;
  return !before.empty() && before[s.index] != 1 && value(s) == 1;
}

bool course::counts_now(watch& w, std::int64_t cycle, bool while_begun) const {
  const bool is_over = w.end ? rises(*w.end) : while_begun && value(w.begin) != 1;
  if (is_over) w.due = -1;
  if (rises(w.begin)) w.due = cycle + w.delay;
  const bool counts = w.due >= 0 && cycle >= w.due;
  w.examined = w.examined || counts;
  return counts;
}

void course::check(std::int64_t cycle) {
  for (std::size_t i = 0; i < deliveries.size(); ++i) {
    edge_count& each = deliveries[i];
    if (rises(each.counted))
      note(cycle, tr("{} passe à 1 ({})", {name(each.counted), std::to_string(++each.so_far)}));
    if (cycle == asked.deliveries[i].before) check_deliveries(i, cycle);
  }
  for (watch& w : rests)
    if (counts_now(w, cycle, false)) check_values(w, 1, cycle);
  for (watch& w : stops)
    if (counts_now(w, cycle, true)) check_values(w, 0, cycle);
  for (const auto& [one, other] : nevers) {
    if (value(one) != 1 || (other && value(*other) != 1)) continue;
    if (other)
      miss(cycle, tr("{} est à 1 en même temps que {}", {name(one), name(*other)}));
    else
      miss(cycle, tr("{} est à 1", {name(one)}));
  }
}

void course::check_deliveries(std::size_t i, std::int64_t cycle) {
  const expected_edges& wanted = asked.deliveries[i];
  if (deliveries[i].so_far < wanted.at_least)
    miss(cycle, tr("{} est passé à 1 {} fois au lieu de {} en {}",
                   {wanted.signal.name, std::to_string(deliveries[i].so_far), std::to_string(wanted.at_least),
                    in_seconds(wanted.before)}));
}

void course::check_values(const watch& w, std::int32_t expected, std::int64_t cycle) {
  for (const signal s : w.looked_at)
    if (value(s) != expected)
      miss(cycle, tr("{} n'est pas à {}, {} après {}", {name(s), std::to_string(expected),
                                                        in_seconds(cycle - w.due + w.delay), name(w.begin)}));
}

void course::tell_forcings(std::int64_t cycle) {
  for (const forcing& one : asked.forced) {
    if (cycle == std::max<std::int64_t>(one.from, 1))
      note(cycle, tr("{} est forcé à {}", {one.signal.name, std::to_string(one.value)}));
    if (cycle == one.until) note(cycle, tr("{} n'est plus forcé", {one.signal.name}));
  }
}

// One thing after the other, several in a cycle when their moments have come.
void course::operate(std::int64_t cycle, std::vector<std::string>& lines) {
  while (next < asked.actions.size()) {
    const operator_action& action = asked.actions[next];
    if (release_at < 0) {
      if (!its_moment_has_come(cycle)) return;
      note(cycle, what_is_done(action));
      lines.push_back(order(action));
      release_at = action.what == kind::press ? cycle + action.during : cycle;
    }
    if (cycle < release_at) return;
    if (action.what == kind::press) lines.push_back("release " + action.label);
    ++next;
    since = cycle;
    times = 0;
    moment = release_at = -1;
  }
}

bool course::its_moment_has_come(std::int64_t cycle) {
  const operator_action& action = asked.actions[next];
  if (action.at) return cycle >= *action.at;
  if (moment < 0 && !action.on) moment = since + action.after;
  if (moment < 0) {
    const signal s = waited_for[next];
    const std::vector<std::int32_t>& before = s.is_output ? outputs_before : inputs_before;
    const bool is_so = value(s) == action.on_value;
    times += is_so && cycle > since && !before.empty() && before[s.index] != action.on_value;
    if (action.times == 0 ? is_so : times >= action.times)
      moment = cycle + action.after;
    else if (action.limit >= 0 && cycle - since >= action.limit)
      miss(cycle, tr("{} n'est pas passé à {} en {} ; l'opérateur l'attendait (ligne {})",
                     {action.on->name, std::to_string(action.on_value), in_seconds(action.limit),
                      std::to_string(action.line)}));
  }
  return moment >= 0 && cycle >= moment;
}

void course::fault(std::int64_t cycle, const std::string& text) {
  ended = true;
  if (!plant_fault.empty()) return;
  plant_fault = one_line(text);
  note(cycle, plant_fault);
  const bool is_expected =
      !asked.fault.empty() && plant_fault.find(one_line(asked.fault)) != std::string::npos;
  if (!is_expected && !found) found = {finding::kind::failed, plant_fault, cycle};
}

void course::refused(std::int64_t cycle, const std::string& line, const std::string& text) {
  const auto sent = std::find_if(asked.actions.begin(), asked.actions.end(),
                                 [&](const auto& a) { return line.ends_with(" " + a.label); });
  const int at = sent == asked.actions.end() ? 1 : sent->line;
  found = {finding::kind::not_judged,
           asked.file + ":" + std::to_string(at) + ": " + tr("la maquette refuse « {} » : {}", {line, text}),
           cycle};
  ended = true;
}

// Several things missed in one cycle are told together.
void course::miss(std::int64_t cycle, const std::string& what) {
  ended = true;
  if (found && found->cycle == cycle && found->what == finding::kind::failed)
    found->sentence += tr(" ; ") + what;
  else if (!found)
    found = {finding::kind::failed, what, cycle};
}

// What has never been looked at has not been seen to be right.
finding course::end(std::int64_t cycle) {
  if (found) return *found;
  for (std::size_t i = 0; i < deliveries.size(); ++i) check_deliveries(i, cycle);
  for (const std::vector<watch>* const all : {&rests, &stops})
    for (const watch& w : *all)
      if (!w.examined)
        miss(cycle, tr("la fin est venue avant {} après {}", {in_seconds(w.delay), name(w.begin)}));
  if (!asked.fault.empty() && plant_fault.empty())
    miss(cycle, tr("le défaut attendu n'est pas venu : {}", {asked.fault}));
  if (next < asked.actions.size() && plant_fault.empty())
    miss(cycle, tr("l'opérateur attendait encore (ligne {})", {std::to_string(asked.actions[next].line)}));
  return found.value_or(finding{finding::kind::passed, what_was_good(), cycle});
}

std::string course::what_was_good() const {
  std::string text = plant_fault;
  for (const edge_count& each : deliveries)
    text += (text.empty() ? "" : tr(" ; ")) +
            tr("{} : {} fois", {name(each.counted), std::to_string(each.so_far)});
  return text;
}
