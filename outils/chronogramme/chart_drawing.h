#pragma once
// Paints a chart into the current FLTK surface: inside a widget's draw(), or on an offscreen one.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bibliocpp/signal_record.h"
#include "outils/chronogramme/chart_trace.h"
#include "outils/chronogramme/chart_view.h"

// Where what lies, in pixels of the surface: the scale above, the names with their present values on the
// left, the lines beside them. Rows that find no room are reached by scrolling.
struct chart_layout {
  int x, y, w, h;
  int names_width, row_height;
  int scrolled;  // pixels
  std::vector<chart_row> rows;
  time_columns columns;

  static constexpr int scale_height = 40;
  int lines_x() const { return x + names_width; }
  int rows_y() const { return y + scale_height; }
  // Pixels that the rows take, and that there are for them.
  int rows_height() const { return static_cast<int>(rows.size()) * row_height; }
  int room() const { return h - scale_height; }
  int x_of(std::int64_t time_us) const { return lines_x() + columns.at(time_us); }
  // The moment at the left of a pixel; also of one beside the lines.
  std::int64_t time_at(int px) const { return columns.begin_us(px - lines_x()); }
  std::optional<std::size_t> signal_at(int py) const;
};

// Needs an open display, to measure names. Scrolls no further than there are rows.
chart_layout layout_of(const signal_record& record, const chart_view& view, int x, int y, int w, int h,
                       int scrolled);

void draw_chart(const signal_record& record, const chart_view& view, const chart_layout& at);

// A line of text below: what is going on on the left, the cursors on the right.
void draw_state(const std::string& state, const std::string& cursors, int x, int y, int w, int h);
