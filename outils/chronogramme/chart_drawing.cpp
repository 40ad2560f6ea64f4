#include "outils/chronogramme/chart_drawing.h"

#include <FL/fl_draw.H>

#include <algorithm>
#include <string>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"

namespace {

constexpr int least_row = 15, most_row = 26, text_size = 12, margin = 6;

// Tell inputs from outputs, and marks from both, with any kind of colour vision (palette of Okabe and Ito).
struct shades {
  Fl_Color line, fill;
};
Fl_Color shade(int r, int g, int b) {
  return fl_rgb_color(static_cast<uchar>(r), static_cast<uchar>(g), static_cast<uchar>(b));
}
const shades of_inputs{shade(0, 114, 178), shade(204, 227, 240)},
    of_outputs{shade(213, 94, 0), shade(247, 223, 204)};
const Fl_Color paper = FL_WHITE, ink = shade(40, 40, 40), faint = shade(120, 120, 120),
               grid = shade(228, 228, 228), band = shade(243, 243, 243), nothing = shade(234, 234, 234),
               warning = shade(230, 159, 0), cursor_colours[] = {shade(0, 128, 96), shade(170, 70, 130)};

const shades& shades_of(bool is_output) { return is_output ? of_outputs : of_inputs; }

// Names are anybody's: "@" is no symbol in them.
void write(const std::string& text, int x, int y, int w, int h, Fl_Align align) {
  fl_draw(text.c_str(), x, y, w, h, align, nullptr, 0);
}

std::string text_of(std::int32_t value) { return value == undefined_value ? "x" : std::to_string(value); }

void draw_scale(const chart_layout& at) {
  const std::int64_t step = tick_step_us(at.columns.span_us, at.columns.count, 80);
  const int decimals = decimals_of(step);
  const std::int64_t end = at.columns.begin_us(at.columns.count);
  fl_font(FL_HELVETICA, text_size);
  for (std::int64_t t = std::max<std::int64_t>((at.columns.left_us + step - 1) / step, 0) * step; t < end;
       t += step) {
    const int x = at.x_of(t);
    fl_color(grid);
    fl_yxline(x, at.rows_y(), at.y + at.h - 1);
    fl_color(faint);
    fl_yxline(x, at.y + 16, at.y + 20);
    fl_color(ink);
    write(time_text(t, decimals), x - 40, at.y, 80, 16, FL_ALIGN_CENTER);
  }
}

void hatch(const chart_layout& at, int from, int to, const char* text) {
  fl_push_clip(from, at.rows_y(), to - from, at.room());
  fl_rectf(from, at.rows_y(), to - from, at.room(), nothing);
  fl_color(grid);
  for (int x = from - at.room(); x < to; x += 8) fl_line(x, at.y + at.h, x + at.room(), at.rows_y());
  fl_color(faint);
  write(text, from, at.rows_y(), to - from - margin, at.room(), FL_ALIGN_RIGHT | FL_ALIGN_CLIP);
  fl_pop_clip();
}

// What lies before the record, or has gone from it.
void draw_past(const signal_record& record, const chart_layout& at) {
  const std::int64_t begin = record.forgotten_until_us();
  if (begin <= at.columns.left_us) return;
  const int x = std::max(at.x_of(begin), at.lines_x());
  if (begin > 0) return hatch(at, at.lines_x(), x, tr("oublié"));
  fl_rectf(at.lines_x(), at.rows_y(), x - at.lines_x(), at.room(), nothing);
}

// Batches that nobody saw: a mark in the scale, a broken line through all rows, their number where it fits.
void draw_missed(const signal_record& record, const chart_layout& at) {
  const auto& gaps = record.missed();
  const std::int64_t left = at.columns.left_us, end = left + at.columns.span_us;
  auto gap = std::lower_bound(gaps.begin(), gaps.end(), left,
                              [](const auto& g, std::int64_t t) { return g.time_us < t; });
  while (gap != gaps.end() && gap->time_us < end) {
    const int x = at.x_of(gap->time_us);
    std::int64_t count = 0;
    for (; gap != gaps.end() && at.x_of(gap->time_us) == x; ++gap) count += gap->count;
    fl_color(warning);
    fl_line_style(FL_DOT);
    fl_yxline(x, at.rows_y(), at.y + at.h - 1);
    fl_line_style(0);
    fl_polygon(x - 4, at.rows_y() - 9, x + 4, at.rows_y() - 9, x, at.rows_y() - 1);
    const std::string text =
        count > 1 ? tr("{} manqués", {std::to_string(count)}) : tr("{} manqué", {std::to_string(count)});
    const int text_end = x + 12 + static_cast<int>(fl_width(text.c_str()));
    if (gap != gaps.end() && at.x_of(gap->time_us) < text_end) continue;
    fl_color(ink);
    fl_draw(text.c_str(), x + 7, at.rows_y() - 4);
  }
}

// Lines of a signal: as high as its value, 0 or 1, or with the value written between two lines.
void draw_line(const signal_record& record, const chart_layout& at, const chart_row& row, bool numeric,
               int y) {
  const shades& colour = shades_of(row.is_output);
  const int top = y + 3, low = y + at.row_height - 4, height = low - top + 1;
  const std::vector<trace_piece> pieces = trace(record, *row.signal, at.columns);
  const auto x_of = [&](int column) { return at.lines_x() + column; };
  const auto is_level = [](const trace_piece& piece) { return piece.kind == trace_piece::level; };

  // Colour by colour: it is changing colours that takes time. An edge hides a fill of one pixel.
  for (const trace_piece& piece : pieces)
    if (is_level(piece) && (numeric || piece.value != 0) && piece.to - piece.from > 1)
      fl_rectf(x_of(piece.from), top, piece.to - piece.from, height, colour.fill);
  fl_color(colour.line);
  for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
    const int x = x_of(piece->from), w = piece->to - piece->from;
    if (piece->kind == trace_piece::busy) fl_rectf(x, top, w, height);
    if (!is_level(*piece)) continue;
    const bool edge = piece != pieces.begin() && is_level(*(piece - 1));
    if (edge) fl_rectf(x, top, 1, height);
    if (edge && w == 1) continue;
    if (numeric || piece->value == 0) fl_rectf(x, low, w, 1);
    if (numeric || piece->value != 0) fl_rectf(x, top, w, numeric ? 1 : 2);
  }
  if (!numeric) return;
  fl_color(ink);
  for (const trace_piece& piece : pieces) {
    const std::string text = is_level(piece) ? text_of(piece.value) : "";
    if (!text.empty() && fl_width(text.c_str()) + 4 < piece.to - piece.from)
      write(text, x_of(piece.from) + 2, y, piece.to - piece.from - 2, at.row_height, FL_ALIGN_CENTER);
  }
}

void draw_name(const signal_record& record, const chart_layout& at, const chart_row& row, int y) {
  const int right = at.lines_x() - margin;
  if (!row.signal) {
    fl_font(FL_HELVETICA_BOLD, text_size);
    fl_color(shades_of(row.is_output).line);
    const char* const heading = row.is_output ? tr("Sorties") : tr("Entrées");
    return write(heading, at.x + margin, y, at.names_width, at.row_height, FL_ALIGN_LEFT);
  }
  const auto& changes = record.changes(*row.signal);
  const std::string value = changes.empty() ? "?" : text_of(changes.back().value);
  const bool at_rest = changes.empty() || changes.back().value == 0;
  fl_font(at_rest ? FL_HELVETICA : FL_HELVETICA_BOLD, text_size);
  fl_color(at_rest ? faint : shades_of(row.is_output).line);
  write(value, right - at.names_width, y, at.names_width, at.row_height, FL_ALIGN_RIGHT);
  const int room = at.names_width - 3 * margin - static_cast<int>(fl_width(value.c_str()));
  fl_font(FL_HELVETICA, text_size);
  fl_color(ink);
  // Higher than the row: a "_" reaches below a low one.
  write(record.signals()[*row.signal].name, at.x + 2 * margin, y - 2, room - margin, at.row_height + 4,
        FL_ALIGN_LEFT | FL_ALIGN_CLIP);
}

void draw_cursors(const chart_view& view, const chart_layout& at) {
  const auto& [a, b] = view.cursors;
  fl_font(FL_HELVETICA_BOLD, text_size);
  for (std::size_t n = 0; n < view.cursors.size(); ++n) {
    if (!view.cursors[n]) continue;
    const int x = at.x_of(*view.cursors[n]);
    if (x < at.lines_x() || x >= at.x + at.w) continue;
    fl_color(cursor_colours[n]);
    fl_yxline(x, at.rows_y() - 18, at.y + at.h - 1);
    fl_rectf(x - 7, at.rows_y() - 18, 15, 15);
    fl_color(paper);
    write(n == 0 ? "A" : "B", x - 7, at.rows_y() - 18, 15, 15, FL_ALIGN_CENTER);
  }
  if (!a || !b) return;
  const int left = at.x_of(std::min(*a, *b)) + 10, right = at.x_of(std::max(*a, *b)) - 10;
  const std::string text = interval_text(*b - *a);
  const int w = static_cast<int>(fl_width(text.c_str())) + 2 * margin;
  if (right - left < w) return;
  fl_color(faint);
  fl_xyline(left, at.rows_y() - 11, right);
  const int middle = (left + right) / 2;
  fl_rectf(middle - w / 2, at.rows_y() - 18, w, 16, paper);
  fl_color(ink);
  write(text, middle - w / 2, at.rows_y() - 18, w, 15, FL_ALIGN_CENTER);
}

}  // namespace

std::optional<std::size_t> chart_layout::signal_at(int py) const {
  const int below = py - rows_y() + scrolled;
  if (py < rows_y() || below >= rows_height()) return std::nullopt;
  return rows[static_cast<std::size_t>(below / row_height)].signal;
}

chart_layout layout_of(const signal_record& record, const chart_view& view, int x, int y, int w, int h,
                       int scrolled) {
  chart_layout at{.x = x,
                  .y = y,
                  .w = w,
                  .h = h,
                  .names_width = 0,
                  .row_height = 0,
                  .scrolled = 0,
                  .rows = rows_of(view, record),
                  .columns = {}};
  // All names count, so that the lines stay where they are when the filter changes.
  fl_font(FL_HELVETICA, text_size);
  for (const recorded_signal& signal : record.signals())
    at.names_width = std::max(at.names_width, static_cast<int>(fl_width(signal.name.c_str())));
  at.names_width = std::min(at.names_width + 5 * margin + 20, w / 3);
  at.row_height = std::clamp(at.room() / std::max(static_cast<int>(at.rows.size()), 1), least_row, most_row);
  at.scrolled = std::clamp(scrolled, 0, std::max(at.rows_height() - at.room(), 0));
  at.columns = {.left_us = left_edge_us(view, record),
                .span_us = view.span_us,
                .count = std::max(w - at.names_width, 1)};
  return at;
}

void draw_state(const std::string& state, const std::string& cursors, int x, int y, int w, int h) {
  fl_push_clip(x, y, w, h);
  fl_rectf(x, y, w, h, band);
  fl_color(grid);
  fl_xyline(x, y, x + w - 1);
  fl_font(FL_HELVETICA, text_size);
  fl_color(ink);
  write(state, x + margin, y, w, h, FL_ALIGN_LEFT);
  // The cursors' part wins where both do not fit.
  const int cursors_width = static_cast<int>(fl_width(cursors.c_str())) + 2 * margin;
  if (!cursors.empty()) fl_rectf(x + w - cursors_width, y + 1, cursors_width, h - 1, band);
  fl_color(ink);
  write(cursors, x, y, w - margin, h, FL_ALIGN_RIGHT);
  fl_pop_clip();
}

void draw_chart(const signal_record& record, const chart_view& view, const chart_layout& at) {
  fl_push_clip(at.x, at.y, at.w, at.h);
  fl_rectf(at.x, at.y, at.w, at.h, paper);
  const auto each_row = [&](auto draw) {
    int y = at.rows_y() - at.scrolled;
    for (const chart_row& row : at.rows) {
      if (y + at.row_height > at.rows_y() && y < at.y + at.h) draw(row, y);
      y += at.row_height;
    }
  };
  fl_push_clip(at.x, at.rows_y(), at.w, at.room());
  each_row([&](const chart_row& row, int y) {
    if (!row.signal) fl_rectf(at.x, y, at.w, at.row_height, band);
  });
  each_row([&](const chart_row& row, int y) { draw_name(record, at, row, y); });
  fl_pop_clip();

  fl_push_clip(at.lines_x(), at.y, at.w - at.names_width, at.h);
  draw_past(record, at);
  draw_scale(at);
  fl_push_clip(at.lines_x(), at.rows_y(), at.w - at.names_width, at.room());
  each_row([&](const chart_row& row, int y) {
    if (row.signal) draw_line(record, at, row, view.numeric[*row.signal], y);
  });
  fl_pop_clip();
  draw_missed(record, at);
  draw_cursors(view, at);
  fl_pop_clip();

  fl_color(grid);
  fl_yxline(at.lines_x() - 1, at.y, at.y + at.h - 1);
  fl_xyline(at.x, at.rows_y() - 1, at.x + at.w - 1);
  fl_pop_clip();
}
