#include "outils/chronogramme/chart_trace.h"

#include <algorithm>
#include <iterator>

namespace {

// The next column lies near, as a rule; where changes are dense, it is sought in growing steps.
template <typename Iterator>
Iterator first_from(Iterator begin, Iterator end, std::int64_t time_us) {
  constexpr int near = 8;
  for (int n = 0; n < near; ++n, ++begin)
    if (begin == end || begin->time_us >= time_us) return begin;
  std::ptrdiff_t step = 1;
  while (step < end - begin && begin[step].time_us < time_us) {
    begin += step;
    step *= 2;
  }
  return std::lower_bound(begin, step < end - begin ? begin + step : end, time_us,
                          [](const signal_change& change, std::int64_t t) { return change.time_us < t; });
}

}  // namespace

int time_columns::at(std::int64_t time_us) const {
  const std::int64_t scaled = (time_us - left_us) * count;
  const std::int64_t column = scaled / span_us - (scaled % span_us < 0 ? 1 : 0);
  return static_cast<int>(std::clamp<std::int64_t>(column, -1, count));
}

std::int64_t time_columns::begin_us(int column) const {
  return left_us + (static_cast<std::int64_t>(column) * span_us + count - 1) / count;
}

std::vector<trace_piece> trace(const signal_record& record, std::size_t signal, const time_columns& columns) {
  std::vector<trace_piece> pieces;
  const auto& changes = record.changes(signal);
  const int end = std::min(columns.at(record.end_us()) + 1, columns.count);
  const auto append = [&](trace_piece::kind_of_piece kind, int from, int to, std::int32_t value) {
    if (!pieces.empty() && kind == trace_piece::busy && pieces.back().kind == kind)
      pieces.back() = {kind, pieces.back().from, to, value};
    else if (from < to)
      pieces.push_back({kind, from, to, value});
  };

  auto next = changes.begin() + record.last_change_at(signal, columns.left_us - 1) + 1;
  const bool known = next != changes.begin();
  int column = next == changes.end() ? end : std::clamp(columns.at(next->time_us), 0, std::max(end, 0));
  append(known ? trace_piece::level : trace_piece::unknown, 0, column, known ? std::prev(next)->value : 0);
  std::int64_t column_end_us = columns.begin_us(column + 1);
  while (column < end) {
    const auto after = first_from(next, changes.end(), column_end_us);
    const bool once = after - next == 1;
    const std::int32_t value = std::prev(after)->value;
    column_end_us = columns.begin_us(column + 2);
    int until = end;
    if (after != changes.end() && after->time_us < column_end_us) {  // the next column, without a division
      until = std::min(column + 1, end);
    } else if (after != changes.end()) {
      until = std::min(columns.at(after->time_us), end);
      column_end_us = columns.begin_us(until + 1);
    }
    append(once ? trace_piece::level : trace_piece::busy, column, once ? until : column + 1, value);
    if (!once) append(trace_piece::level, column + 1, until, value);
    next = after;
    column = until;
  }
  return pieces;
}
