#include "outils/chronogramme/chart_view.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>

#include "bibliocpp/language.h"

namespace {

constexpr std::int64_t second_us = 1'000'000;

bool holds(const std::string& name, const std::string& part) {
  return std::search(name.begin(), name.end(), part.begin(), part.end(),
                     [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); }) !=
         name.end();
}

// The newest at the right, and not all of the screen before the beginning.
std::int64_t within(const signal_record& record, std::int64_t right_us, std::int64_t span_us) {
  const std::int64_t earliest = std::min(record.forgotten_until_us() + span_us, record.end_us());
  return std::clamp(right_us, earliest, record.end_us());
}

}  // namespace

chart_view view_of(const signal_record& record) {
  const auto& signals = record.signals();
  chart_view view;
  view.order.resize(signals.size());
  std::iota(view.order.begin(), view.order.end(), 0U);
  std::stable_partition(view.order.begin(), view.order.end(), [&](auto s) { return !signals[s].is_output; });
  view.numeric.resize(signals.size());
  return view;
}

std::vector<chart_row> rows_of(const chart_view& view, const signal_record& record) {
  std::vector<chart_row> rows;
  for (const std::size_t signal : view.order) {
    const auto& [name, is_output] = record.signals()[signal];
    if (!holds(name, view.filter) || (view.only_changing && record.changes(signal).size() < 2)) continue;
    if (rows.empty() || rows.back().is_output != is_output) rows.push_back({std::nullopt, is_output});
    rows.push_back({signal, is_output});
  }
  return rows;
}

void look_for_numbers(chart_view& view, const signal_record& record) {
  for (const std::size_t signal : view.order) {
    if (view.numeric[signal]) continue;
    const auto& changes = record.changes(signal);
    // From the moment it came to once more: changes of the same moment may have been added.
    const auto first = record.last_change_at(signal, view.looked_until_us - 1) + 1;
    view.numeric[signal] = std::any_of(changes.begin() + first, changes.end(),
                                       [](const auto& change) { return (change.value & ~1) != 0; });
  }
  view.looked_until_us = record.end_us();
}

std::int64_t right_edge_us(const chart_view& view, const signal_record& record) {
  return view.follow ? record.end_us() : view.right_us;
}

std::int64_t left_edge_us(const chart_view& view, const signal_record& record) {
  return right_edge_us(view, record) - view.span_us;
}

void zoom(chart_view& view, const signal_record& record, double factor, std::int64_t about_us) {
  const std::int64_t right = right_edge_us(view, record), before = view.span_us;
  view.span_us = std::clamp<std::int64_t>(std::llround(static_cast<double>(before) * factor),
                                          chart_view::least_span_us, chart_view::most_span_us);
  const double ratio = static_cast<double>(view.span_us) / static_cast<double>(before);
  const std::int64_t wanted = about_us + std::llround(static_cast<double>(right - about_us) * ratio);
  view.right_us = within(record, wanted, view.span_us);
  view.follow = view.follow && view.right_us == record.end_us();
}

void pan(chart_view& view, const signal_record& record, std::int64_t later_us) {
  if (later_us == 0) return;
  view.right_us = within(record, right_edge_us(view, record) + later_us, view.span_us);
  view.follow = view.follow && view.right_us == record.end_us();
}

void move_line(chart_view& view, const signal_record& record, std::size_t signal, std::size_t place_of) {
  if (record.signals()[signal].is_output != record.signals()[place_of].is_output) return;
  const auto at = [&](std::size_t s) { return std::find(view.order.begin(), view.order.end(), s); };
  const auto from = at(signal), to = at(place_of);
  if (from < to)
    std::rotate(from, from + 1, to + 1);
  else
    std::rotate(to, from, from + 1);
}

std::int64_t tick_step_us(std::int64_t span_us, int width, int least_pixels) {
  constexpr std::array<std::int64_t, 15> steps_ms{
      10, 20, 50, 100, 200, 500, 1'000, 2'000, 5'000, 10'000, 20'000, 60'000, 120'000, 300'000, 600'000};
  const std::int64_t least_us = span_us * least_pixels / std::max(width, 1);
  const auto step = std::find_if(steps_ms.begin(), steps_ms.end() - 1,
                                 [&](std::int64_t ms) { return ms * 1000 >= least_us; });
  return *step * 1000;
}

std::string time_text(std::int64_t time_us, int decimals) {
  std::int64_t unit = second_us;
  for (int n = 0; n < decimals; ++n) unit /= 10;
  const std::int64_t units = (std::llabs(time_us) + unit / 2) / unit, in_second = second_us / unit;
  const std::int64_t seconds = units / in_second;
  std::array<char, 64> text{};
  const char* const sign = time_us < 0 ? "-" : "";
  const auto part = [](std::int64_t n) { return static_cast<int>(n); };
  if (seconds >= 3600)
    std::snprintf(text.data(), text.size(), "%s%d:%02d:%02d", sign, part(seconds / 3600),
                  part(seconds / 60 % 60), part(seconds % 60));
  else
    std::snprintf(text.data(), text.size(), "%s%d:%02d", sign, part(seconds / 60), part(seconds % 60));
  std::string result = text.data();
  if (decimals > 0) {
    const std::string digits = std::to_string(units % in_second);
    result.append(tr(",")).append(static_cast<std::size_t>(decimals) - digits.size(), '0').append(digits);
  }
  return result;
}

std::string interval_text(std::int64_t us) {
  const std::int64_t ms = (std::llabs(us) + 500) / 1000;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s%lld%s%03d s", us < 0 ? "-" : "",
                static_cast<long long>(ms / 1000), tr(","), static_cast<int>(ms % 1000));
  return text.data();
}

int decimals_of(std::int64_t step_us) {
  int decimals = 0;
  for (std::int64_t unit = second_us; step_us % unit != 0; unit /= 10) ++decimals;
  return decimals;
}
