#pragma once
// Charts at work, written as text: what went in and what came of it, a batch a line.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "bibliocpp/grafcet_file/evolution.h"
#include "bibliocpp/grafcet_file/parser.h"

// Told remarks, a line each: "3:12 sentence".
inline std::string remarks_of(const grafcet_file::parsed& read) {
  std::string text;
  for (const auto& r : read.remarks)
    text += std::to_string(r.where.line) + ":" + std::to_string(r.where.column) +
            (r.warning ? " avertissement : " : " ") + r.sentence + "\n";
  return text;
}

// "A.X1", or "1" where there is one GRAFCET only.
inline std::string name_of(const grafcet_file::program& p, int step) {
  const auto at = [](const auto& list, int k) -> auto& { return list[static_cast<std::size_t>(k)]; };
  const auto& s = at(p.steps, step);
  const auto roots = std::count_if(p.charts.begin(), p.charts.end(),
                                   [](const auto& c) { return c.kind == grafcet_file::chart_kind::grafcet; });
  return roots == 1 ? s.label : at(p.charts, at(p.charts, s.chart).root).name + ".X" + s.label;
}

// Runs the batches of a trace, each "<ms> <inputs that are not 0> | ...", and gives it back with what was
// true after each: "10 a n=3 | <active steps> | <outputs and variables that are not 0>".
inline std::string traced(const std::string& text, const std::string& trace) {
  const auto read = grafcet_file::read_charts(text);
  if (!read.ok()) return remarks_of(read);
  const auto& p = read.charts;
  grafcet_file::evolution charts(p);
  std::istringstream lines(trace);
  std::string line, result;
  while (std::getline(lines, line)) {
    std::istringstream words(line.substr(0, line.find('|')));
    std::vector<std::int32_t> inputs(p.inputs.size());
    std::string time, word, given;
    for (words >> time; words >> word; given += " " + word)
      for (std::size_t i = 0; i < inputs.size(); ++i)
        if (word.substr(0, word.find('=')) == p.inputs[i].name)
          inputs[i] = word.find('=') == std::string::npos ? 1 : std::stoi(word.substr(word.find('=') + 1));
    charts.batch(inputs, std::stoll(time) * 1000);
    std::string steps, values;
    for (std::size_t s = 0; s < p.steps.size(); ++s)
      if (charts.now().active[s] != 0) steps += " " + name_of(p, static_cast<int>(s));
    const auto add = [&values](const std::string& name, std::int64_t value) {
      if (value != 0) values.append(" ").append(name).append(value == 1 ? "" : "=" + std::to_string(value));
    };
    for (std::size_t k = 0; k < p.outputs.size(); ++k) add(p.outputs[k].name, charts.now().outputs[k]);
    for (std::size_t k = 0; k < p.variables.size(); ++k) add(p.variables[k].name, charts.now().variables[k]);
    result.append(time).append(given).append(" |").append(steps).append(" |").append(values);
    if (!charts.now().stable) {
      result += " | instable";
      for (const int s : charts.circle()) result += " " + name_of(p, s);
    }
    result += "\n";
  }
  return result;
}
