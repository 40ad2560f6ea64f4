#include "outils/grafcet/values_panel.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "bibliocpp/language.h"
#include "outils/grafcet/painting.h"

using namespace grafcet_file;

namespace {

constexpr int line = 16, letters = 12, gap = 6;

// Tenths of a second: "12.3 s".
std::string time_text(std::int64_t us) {
  const std::int64_t tenths = us / 100'000;
  return std::to_string(tenths / 10) + tr(",") + std::to_string(tenths % 10) + " s";
}

Fl_Color fltk(const colour& c) {
  const auto byte = [](double part) { return static_cast<uchar>(std::lround(part * 255)); };
  return fl_rgb_color(byte(c.r), byte(c.g), byte(c.b));
}

// "mode.X4"; in a program of one GRAFCET "X4".
std::string name_of(const program& charts, const step& it) {
  const chart& part = charts.charts[static_cast<std::size_t>(it.chart)];
  const std::string own = (it.macro ? "" : "X") + it.label;
  const bool alone = std::all_of(charts.charts.begin(), charts.charts.end(),
                                 [&](const chart& other) { return other.root == part.root; });
  return alone ? own : charts.charts[static_cast<std::size_t>(part.root)].name + "." + own;
}

}  // namespace

std::vector<value_line> values_of(const program& charts, const situation& now) {
  std::vector<value_line> lines;
  const auto heading = [&](const char* text, bool any) {
    if (any) lines.push_back({text, "", true, false});
  };
  heading(tr("Étapes actives"), true);
  for (std::size_t s = 0; s < charts.steps.size(); ++s)
    if (now.active[s] != 0)
      lines.push_back(
          {name_of(charts, charts.steps[s]), time_text(now.time_us - now.since_us[s]), false, true});
  const auto signals = [&](const std::vector<signal>& of, const std::vector<std::int32_t>& values) {
    for (std::size_t k = 0; k < of.size(); ++k)
      lines.push_back({of[k].name, std::to_string(values[k]), false, values[k] != 0});
  };
  heading(tr("Entrées"), !charts.inputs.empty());
  signals(charts.inputs, now.inputs);
  heading(tr("Sorties"), !charts.outputs.empty());
  signals(charts.outputs, now.outputs);
  heading(tr("Variables"), !charts.variables.empty());
  for (std::size_t k = 0; k < charts.variables.size(); ++k)
    lines.push_back({charts.variables[k].name, std::to_string(now.variables[k]), false, false});
  heading(tr("Définitions"), !charts.definitions.empty());
  for (const definition& d : charts.definitions) {
    const std::int64_t value = now.values[static_cast<std::size_t>(d.value)];
    lines.push_back({d.name, std::to_string(value), false, value != 0});
  }
  return lines;
}

void values_panel::update(std::vector<value_line> lines) {
  if (lines == shown) return;
  shown = std::move(lines);
  redraw();
}

void values_panel::draw() {
  fl_push_clip(x(), y(), w(), h());
  fl_rectf(x(), y(), w(), h(), FL_WHITE);
  fl_color(FL_GRAY);
  fl_yxline(x(), y(), y() + h());
  scrolled = std::clamp(scrolled, 0, std::max(static_cast<int>(shown.size()) - h() / line, 0));
  for (int k = scrolled, top = y(); k < static_cast<int>(shown.size()) && top < y() + h(); ++k, top += line) {
    const value_line& it = shown[static_cast<std::size_t>(k)];
    if (it.lit) fl_rectf(x() + gap, top + 2, 8, line - 4, fltk(active_step));
    fl_color(FL_BLACK);
    fl_font(it.heading ? FL_HELVETICA_BOLD : FL_HELVETICA, letters);
    const int left = x() + gap + (it.heading ? 0 : 14);
    const int value_width = static_cast<int>(fl_width(it.value.c_str())) + 2 * gap;
    fl_push_clip(left, top, x() + w() - value_width - left, line);
    fl_draw(it.name.c_str(), left, top + line - 4);
    fl_pop_clip();
    fl_draw(it.value.c_str(), x() + w() - value_width + gap, top + line - 4);
  }
  fl_pop_clip();
}

int values_panel::handle(int event) {
  if (event != FL_MOUSEWHEEL) return Fl_Widget::handle(event);
  scrolled += 3 * Fl::event_dy();
  redraw();
  return 1;
}
