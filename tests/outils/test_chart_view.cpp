// What the chart shows of a record: rows, time, columns of pixels, and the marks of what is not known.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "outils/chronogramme/chart_drawing.h"
#include "outils/chronogramme/state_line.h"
#include "tests/support/a_window.h"

namespace {

constexpr std::int64_t second = 1'000'000;
const bool english = setenv("LC_ALL", "en", 1) == 0;

signal_record record_until(std::int64_t end_us, std::size_t most = 1000) {
  signal_record record({{"out", true}, {"pcA", false}, {"pcB", false}, {"Count", false}}, most);
  record.extend(end_us);
  return record;
}

}  // namespace

TEST(chart_view, keeps_kinds_apart_and_shows_what_is_asked_for) {
  signal_record record = record_until(second);
  chart_view view = view_of(record);
  const auto lines = [&] {
    std::string shown;
    for (const chart_row& row : rows_of(view, record))
      shown += row.signal ? std::to_string(*row.signal) : "-";
    return shown;
  };
  EXPECT_EQ(lines(), "-123-0");
  move_line(view, record, 1, 3);
  EXPECT_EQ(lines(), "-231-0");
  move_line(view, record, 1, 2);
  move_line(view, record, 1, 0);
  EXPECT_EQ(lines(), "-123-0") << "an input stays among the inputs";
  view.filter = "PC";
  EXPECT_EQ(lines(), "-12");
  view.filter = "";
  view.only_changing = true;
  look_for_numbers(view, record);
  for (const int value : {0, 7}) record.add(0, {second, 1, value});
  record.add(1, {second, 1, 0});
  EXPECT_EQ(lines(), "-0") << "an initial value is no change";
  look_for_numbers(view, record);
  EXPECT_EQ(view.numeric, (std::vector<bool>{true, false, false, false})) << "at the moment looked at last";
}

TEST(chart_view, zooms_about_a_moment_and_goes_back_no_further_than_there_is) {
  signal_record record = record_until(100 * second);
  chart_view view = view_of(record);
  zoom(view, record, 2, 100 * second);
  EXPECT_TRUE(view.follow) << "the newest is still at the edge";
  zoom(view, record, 0.5, 95 * second);
  EXPECT_FALSE(view.follow);
  record.extend(200 * second);
  EXPECT_EQ(right_edge_us(view, record), 95 * second + 5 * second / 2) << "held";
  EXPECT_EQ(left_edge_us(view, record), 95 * second - 15 * second / 2) << "three quarters of it before";
  pan(view, record, -1000 * second);
  EXPECT_EQ(left_edge_us(view, record), 0);
  zoom(view, record, 1e-9, 0);
  EXPECT_EQ(view.span_us, second);
  zoom(view, record, 1e9, 0);
  EXPECT_EQ(view.span_us, 600 * second);
  EXPECT_EQ(right_edge_us(view, record), 200 * second);
}

TEST(chart_view, writes_times_and_figures) {
  for (const auto& [span, step] : {std::pair(1, 100'000), {3, 500'000}, {200, 20'000'000}, {300, 60'000'000}})
    EXPECT_EQ(tick_step_us(span * second, 1000, 80), step) << span;
  EXPECT_EQ(time_text(59'960'000, decimals_of(100'000)), "1:00.0");
  EXPECT_EQ(time_text(3'725 * second, decimals_of(second)), "1:02:05");
  chart_view view;
  view.cursors = {2 * second, 1'249'600};
  EXPECT_EQ(cursor_line(view), "A 0:02.000   B 0:01.250   A → B -0.750 s");
  EXPECT_EQ(plant_line("wagons (7)", {plant_state::suspended, 98.25, 1200, 1190, 10'249, 21'050}, 3),
            "wagons (7)  ·  suspended  ·  98.3 cycles/s  ·  3 batch(es) missed  ·  answers 1190 / 1200: "
            "median 10.2 ms, longest 21.1 ms");
}

// Against the definition, column by column.
TEST(chart_trace, says_of_each_column_what_the_signal_does_there) {
  std::mt19937 dice(7);
  const auto throw_below = [&](unsigned limit) { return static_cast<std::int64_t>(dice() % limit); };
  for (int round = 0; round < 300; ++round) {
    signal_record record({{"s", false}});
    std::int64_t time = throw_below(500);
    for (int n = 0; n < 200; ++n, time += throw_below(round % 2 == 0 ? 9 : 200)) record.add(0, {time, 0, n});
    record.extend(time);
    const time_columns columns{throw_below(1000) - 200, 37 + throw_below(3000), 100};
    int column = 0;
    for (const trace_piece& piece : trace(record, 0, columns)) {
      ASSERT_EQ(piece.from, column) << "no hole, no overlap";
      for (; column < piece.to; ++column) {
        const auto before = record.last_change_at(0, columns.begin_us(column) - 1);
        const auto last = record.last_change_at(0, columns.begin_us(column + 1) - 1);
        ASSERT_EQ(piece.kind, last - before > 1 ? trace_piece::busy
                              : last < 0        ? trace_piece::unknown
                                                : trace_piece::level);
        ASSERT_TRUE(piece.kind != trace_piece::level || piece.value == last);  // the nth value is n
        ASSERT_TRUE(last - before != 1 || column == piece.from) << "a change that stands alone has its edge";
      }
    }
    ASSERT_EQ(column, std::clamp(columns.at(time) + 1, 0, 100)) << "as far as the record goes";
  }
}

TEST(chart_drawing, marks_what_was_missed_and_what_is_forgotten_and_writes_numbers) {
  a_window window(600, 200);
  signal_record record = record_until(10 * second, 8);
  for (int n = 0; n < 8; ++n) record.add(1, {n * second, n, n % 2});
  record.add(3, {9 * second, 9, 41});
  record.miss({5 * second + second / 2, 12});
  chart_view view = view_of(record);
  look_for_numbers(view, record);
  const chart_layout at = layout_of(record, view, 0, 0, 600, 200, 0);
  draw_chart(record, view, at);
  const picture seen = window.look();
  const auto column = [&](const rgb& colour, std::int64_t half_seconds) {
    return seen.count(colour, at.x_of(half_seconds * second / 2), at.rows_y(), 1, at.room());
  };
  ASSERT_GT(record.forgotten_until_us(), second / 2);
  EXPECT_GT(column({234, 234, 234}, 1), 80) << "grey where it is forgotten";
  EXPECT_GT(column({0, 114, 178}, 12), at.row_height / 2) << "an edge of an input";
  EXPECT_GT(column({230, 159, 0}, 11), 20) << "a broken line for what was missed";
  const int row = at.rows_y() + 3 * at.row_height;
  EXPECT_GT(seen.dark(at.x_of(9 * second) + 5, row + 4, 40, at.row_height - 8), 5) << "41";
}
