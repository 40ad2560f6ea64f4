#pragma once
// A signal as columns of pixels: what is to be drawn of it, however many changes it has. Knows no toolkit.

#include <cstdint>
#include <vector>

#include "bibliocpp/signal_record.h"

struct trace_piece {
  enum kind_of_piece {
    unknown,  // no value yet
    level,    // holds the value, having taken it in the first column
    busy      // changes more than once in each of the columns
  };
  kind_of_piece kind;
  int from, to;  // columns, the last one not included
  std::int32_t value;
};

// Columns of equal time between two moments, left to right.
struct time_columns {
  std::int64_t left_us, span_us;
  int count;

  // The column of a moment; below 0 or from `count` on for one that is not shown.
  int at(std::int64_t time_us) const;
  // The first moment of a column.
  std::int64_t begin_us(int column) const;
};

// From the first column to the one of the record's end. At most two pieces a column, and about as much work.
std::vector<trace_piece> trace(const signal_record& record, std::size_t signal, const time_columns& columns);
