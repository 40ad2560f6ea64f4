#pragma once
// Which part of a record is shown, and how: plain data, and what an operator does to it. Knows no toolkit.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bibliocpp/signal_record.h"

struct chart_view {
  // As much time as a screen shows, microseconds.
  static constexpr std::int64_t least_span_us = 1'000'000, most_span_us = 600'000'000;

  std::vector<std::size_t> order;  // every signal once, the inputs first
  std::vector<bool> numeric;       // signals that have been seen with values beyond 0 and 1
  std::string filter;              // only names that hold this, in whatever case
  bool only_changing = false;      // only signals that have changed since the record began
  bool follow = true;              // the newest stays at the right edge
  std::int64_t span_us = 10'000'000;
  std::int64_t right_us = 0;  // the moment at the right edge, unless it follows
  std::array<std::optional<std::int64_t>, 2> cursors;
  std::int64_t looked_until_us = -1;  // how far look_for_numbers has come
};

// All signals in the order of the record, following.
chart_view view_of(const signal_record& record);

// A line of the chart: a signal, or the heading of the inputs or the outputs.
struct chart_row {
  std::optional<std::size_t> signal;
  bool is_output = false;
};
// The rows from the top; a heading only where signals follow.
std::vector<chart_row> rows_of(const chart_view& view, const signal_record& record);

// Marks the signals whose values have gone beyond 0 and 1 since the last call.
void look_for_numbers(chart_view& view, const signal_record& record);

std::int64_t right_edge_us(const chart_view& view, const signal_record& record);
std::int64_t left_edge_us(const chart_view& view, const signal_record& record);

// Makes the span `factor` times as long, within the limits, so that the moment stays where it is on the
// screen. What follows goes on following unless that takes the newest off the edge.
void zoom(chart_view& view, const signal_record& record, double factor, std::int64_t about_us);
// Shows what lies so much later, as far as the record goes; an earlier moment than the newest is held.
void pan(chart_view& view, const signal_record& record, std::int64_t later_us);
// Puts a signal at the place of another one of its kind, which moves on; other kinds stay apart.
void move_line(chart_view& view, const signal_record& record, std::size_t signal, std::size_t place_of);

// Between marks of the scale: 1, 2 or 5 times a power of ten of seconds, or whole minutes; the shortest
// that takes at least that many pixels.
std::int64_t tick_step_us(std::int64_t span_us, int width, int least_pixels);
// Minutes and seconds ("1:05"), hours when there are any ("1:00:05"), with so many decimals.
std::string time_text(std::int64_t time_us, int decimals);
// The time between two moments, to the millisecond, which is as often as a plant is looked at: "0.750 s".
std::string interval_text(std::int64_t us);
// As many decimals as a step of the scale needs.
int decimals_of(std::int64_t step_us);
