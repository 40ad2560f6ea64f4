#pragma once
// The markup of message lines, read alike by the screen, the printed document and the text export.
//
// A line that begins with "#C", "#P" or "#T" controls the layout; any other is text, and "#" cuts it
// into cells. Nothing here needs a display.
//
// A character is a UTF-8 sequence; a byte that belongs to none counts as one, so that lines in
// ISO 8859-1 keep their columns too.

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace viewer_markup {

constexpr int max_columns = 15;
constexpr int lines_on_a_page = 77;
// Widths above are cut to this: a thousand pages wide, and the sums still fit.
constexpr int widest_column = 100'000;

enum line_type { text_line = 0, new_block = 1, new_layout = 2, horizontal_rule = 3 };

// 0 text (also any line shorter than 2 characters), 1 "#C", 2 "#P", 3 "#T".
int typeligne(const std::string& line);

// The columns that the last #C or #P line defined; none at first, that is all of width 0.
class column_table {
 public:
  // Forgets all columns, then takes those of a line: each decimal number followed by a blank is the next
  // column's width in characters, and a "T" before it asks for a vertical rule at its left edge. Other
  // characters are passed over, a number without a blank after it is lost, and so are columns beyond the
  // 15th.
  void define(const std::string& line);

  // c counts from 0; columns that are not defined have width 0 and no rule.
  int width(int c) const { return c < max_columns ? columns[static_cast<std::size_t>(c)].width : 0; }
  bool has_rule(int c) const { return c < max_columns && columns[static_cast<std::size_t>(c)].rule; }
  // Characters to the left of column c; left(max_columns) is the width of the whole table.
  int left(int c) const;

 private:
  struct column {
    int width = 0;
    bool rule = false;
  };
  std::array<column, max_columns> columns{};
};

// The cells of a text line, each cut to the width of its column. The character after a "#" belongs to no
// cell, whatever it is. The texts are parts of `line`.
std::vector<std::string_view> cells(const std::string& line, const column_table& columns);

// At most the first n characters of a text, and how many characters it has.
std::string_view first_characters(std::string_view text, int n);
int count_characters(std::string_view text);

// Where each page begins, as indexes of lines: always 0 first, also for no lines at all. Text lines and
// horizontal rules count; after the 77th counted line of a page, what follows begins the next one.
std::vector<int> page_starts(std::span<const std::string> lines);

// `count` lines from `lines` on; none when the pointer is null or the count not positive.
std::span<const std::string> line_span(const std::string* lines, int count);

}  // namespace viewer_markup
