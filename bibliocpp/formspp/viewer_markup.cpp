#include "bibliocpp/formspp/viewer_markup.h"

#include <FL/fl_utf8.h>

#include <algorithm>

namespace {

std::size_t next_character(std::string_view text, std::size_t at) {
  if (static_cast<unsigned char>(text[at]) < 0x80) return at + 1;
  int length = 1;
  fl_utf8decode(text.data() + at, text.data() + text.size(), &length);
  return at + static_cast<std::size_t>(length);
}

}  // namespace

namespace viewer_markup {

int typeligne(const std::string& line) {
  if (line.size() < 2 || line[0] != '#') return text_line;
  switch (line[1]) {
    case 'C':
      return new_block;
    case 'P':
      return new_layout;
    case 'T':
      return horizontal_rule;
    default:
      return text_line;
  }
}

void column_table::define(const std::string& line) {
  columns = {};
  std::size_t next = 0;  // the column whose width comes next
  int number = 0;
  for (const char c : line) {
    if (next == columns.size()) return;
    if (c == ' ' && number != 0) {
      columns[next++].width = number;
      number = 0;
    } else if (c == 'T') {
      columns[next].rule = true;
    } else if (c >= '0' && c <= '9') {
      number = std::min(number * 10 + (c - '0'), widest_column);
    }
  }
}

int column_table::left(int c) const {
  int sum = 0;
  const int columns_before = std::min(c, max_columns);  // a line may have many cells more
  for (int before = 0; before < columns_before; ++before) sum += width(before);
  return sum;
}

std::vector<std::string_view> cells(const std::string& line, const column_table& columns) {
  std::vector<std::string_view> found;
  std::string_view rest = line;
  while (true) {
    const std::size_t end = rest.find('#');
    found.push_back(first_characters(rest.substr(0, end), columns.width(static_cast<int>(found.size()))));
    if (end == std::string_view::npos) return found;
    rest.remove_prefix(end + 1);
    if (!rest.empty()) rest.remove_prefix(next_character(rest, 0));
  }
}

std::string_view first_characters(std::string_view text, int n) {
  std::size_t end = 0;
  for (; n > 0 && end < text.size(); --n) end = next_character(text, end);
  return text.substr(0, end);
}

int count_characters(std::string_view text) {
  int count = 0;
  for (std::size_t at = 0; at < text.size(); at = next_character(text, at)) ++count;
  return count;
}

std::vector<int> page_starts(std::span<const std::string> lines) {
  std::vector<int> starts{0};
  int counted = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (counted == lines_on_a_page) {
      starts.push_back(static_cast<int>(i));
      counted = 0;
    }
    const int type = typeligne(lines[i]);
    if (type == text_line || type == horizontal_rule) ++counted;
  }
  return starts;
}

std::span<const std::string> line_span(const std::string* lines, int count) {
  if (lines == nullptr || count <= 0) return {};
  return {lines, static_cast<std::size_t>(count)};
}

}  // namespace viewer_markup
