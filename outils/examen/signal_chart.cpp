#include "outils/examen/signal_chart.h"

#include <algorithm>
#include <cmath>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"
#include "outils/examen/harmless.h"
#include "outils/examen/number_text.h"
#include "outils/examen/page_text.h"

namespace {

// In characters of the page, and how many columns the markup has beside the name's and the closing rule.
constexpr int name_width = 20, chart_width = page_width - name_width, most_pieces = 13;

struct window_of_time {
  std::int64_t from_us, to_us;
  int column(std::int64_t time_us) const {
    const double share = static_cast<double>(time_us - from_us) /
                         static_cast<double>(std::max<std::int64_t>(1, to_us - from_us));
    return static_cast<int>(std::lround(share * chart_width));
  }
};

// A signal's value over a part of the window.
struct piece {
  std::int64_t from_us;
  std::string text;  // "" for 0, "-" for 1: a stroke
};

std::string text_of(std::int32_t value) {
  if (value == 0) return "";
  return value == 1 ? "-" : value == undefined_value ? "?" : std::to_string(value);
}

std::int64_t beginning_of(const signal_record& record) {
  std::int64_t first = record.end_us();
  for (std::size_t s = 0; s < record.signals().size(); ++s)
    if (!record.changes(s).empty()) first = std::min(first, record.changes(s).front().time_us);
  return first;
}

// From the beginning of the window on; of more than the markup has columns for, the last ones.
std::vector<piece> pieces_of(const signal_record& record, std::size_t s, const window_of_time& window) {
  const auto& changes = record.changes(s);
  std::vector<piece> all;
  const std::ptrdiff_t first = record.last_change_at(s, window.from_us);
  if (first < 0) all.push_back({window.from_us, ""});
  for (auto i = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, first)); i < changes.size(); ++i)
    if (changes[i].time_us <= window.to_us)
      all.push_back({std::max(changes[i].time_us, window.from_us), text_of(changes[i].value)});
  if (all.size() > most_pieces) {
    all.erase(all.begin(), all.end() - most_pieces);
    all[0] = {window.from_us, "..."};
  }
  return all;
}

std::string stroke(int width, medium shown_in) {
  // A cell begins a character after its rule; in print a character is 5 points wide, the dash 7.
  const int dashes = shown_in == medium::print ? (width * 5 - 5) / 7 : width;
  std::string text;
  for (int n = 0; n < dashes; ++n) text += "—";
  return text.empty() ? " " : text;
}

// The columns of a line, and the line.
void add_row(std::vector<std::string>& page, const std::string& name, const std::vector<piece>& pieces,
             const window_of_time& window, medium shown_in) {
  std::vector<int> columns;
  for (const piece& p : pieces) columns.push_back(window.column(p.from_us));
  columns.push_back(chart_width);
  const std::size_t count = pieces.size();
  // However short it is, a piece is to be seen.
  for (std::size_t i = 1; i < count; ++i) columns[i] = std::max(columns[i], columns[i - 1] + 1);
  for (std::size_t i = count - 1; i > 0; --i) columns[i] = std::min(columns[i], columns[i + 1] - 1);
  std::string layout = "#C T" + std::to_string(name_width) + " ", line = name;
  for (std::size_t i = 0; i < count; ++i) {
    const int width = columns[i + 1] - columns[i];
    const std::string& text = pieces[i].text;
    layout += "T" + std::to_string(width) + " ";
    line += "# " + (text == "-" ? stroke(width, shown_in) : text.empty() ? " " : text);
  }
  page.emplace_back(layout + "T");
  page.push_back(line);
}

void add_scale(std::vector<std::string>& page, const window_of_time& window) {
  constexpr int marks = 4;
  std::string layout = "#C T" + std::to_string(name_width) + " ", line = tr("secondes");
  for (int i = 0; i < marks; ++i) {
    const std::int64_t from_us = window.from_us + (window.to_us - window.from_us) * i / marks;
    layout += "T" + std::to_string(chart_width / marks) + " ";
    line += "# " + with_decimals(static_cast<double>(from_us) / 1e6, 3);
  }
  page.emplace_back(layout + "T");
  page.push_back(line);
}

}  // namespace

std::vector<std::string> signal_chart(const signal_record& record, double seconds, medium shown_in) {
  const auto length = static_cast<std::int64_t>(seconds * 1e6);
  const window_of_time window{std::max(beginning_of(record), record.end_us() - length), record.end_us()};
  std::vector<std::string> page;
  add_scale(page, window);
  page.emplace_back("#T");
  std::string ones, zeros;
  for (std::size_t s = 0; s < record.signals().size(); ++s) {
    const std::vector<piece> pieces = pieces_of(record, s, window);
    const std::string name = in_page(record.signals()[s].name);
    if (pieces.size() > 1)
      add_row(page, name, pieces, window, shown_in);
    else
      (pieces[0].text.empty() ? zeros : ones) +=
          " " + name + (pieces[0].text.size() < 2 ? "" : "=" + pieces[0].text);
  }
  page.emplace_back(columns_for_text);
  page.emplace_back("#T");
  if (!ones.empty()) add_wrapped(page, tr("À 1 tout ce temps :{}", {ones}));
  if (!zeros.empty()) add_wrapped(page, tr("À 0 tout ce temps :{}", {zeros}));
  return page;
}
