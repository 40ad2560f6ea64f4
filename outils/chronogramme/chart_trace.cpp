#include "outils/chronogramme/chart_trace.h"

#include <algorithm>
#include <iterator>

namespace {

// The next columns lie near, as a rule: steps of growing length find them sooner than halving all there is.
template <typename Iterator>
Iterator first_from(Iterator begin, Iterator end, std::int64_t time_us) {
  std::ptrdiff_t step = 1;
  Iterator low = begin;
  while (step < end - low && low[step].time_us < time_us) {
    low += step;
    step *= 2;
  }
  return std::lower_bound(low, step < end - low ? low + step : end, time_us,
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
  while (column < end) {
    const auto after = first_from(next, changes.end(), columns.begin_us(column + 1));
    const bool once = after - next == 1;
    const std::int32_t value = std::prev(after)->value;
    const int until = after == changes.end() ? end : std::min(columns.at(after->time_us), end);
    append(once ? trace_piece::level : trace_piece::busy, column, once ? until : column + 1, value);
    if (!once) append(trace_piece::level, column + 1, until, value);
    next = after;
    column = until;
  }
  return pieces;
}
