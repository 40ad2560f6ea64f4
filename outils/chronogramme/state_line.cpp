#include "outils/chronogramme/state_line.h"

#include <array>
#include <cmath>

#include "bibliocpp/language.h"

namespace {

const char* word_for(plant_state state) {
  switch (state) {
    case plant_state::suspended:
      return in_language("suspendue", "suspended");
    case plant_state::over:
      return in_language("terminée", "over");
    case plant_state::killed:
      return in_language("tuée", "killed");
    default:
      return in_language("en marche", "running");
  }
}

std::string with_tenth(std::int64_t tenths) {
  return std::to_string(tenths / 10) + in_language(",", ".") + std::to_string(tenths % 10);
}

std::string ms_text(std::int64_t us) { return with_tenth((us + 50) / 100) + " ms"; }

constexpr const char* apart = "  ·  ";

}  // namespace

std::string title_of(const std::string& shown, plant_state state) {
  std::string title = "chronogramme - " + shown;
  if (state != plant_state::running) title.append(" - ").append(word_for(state));
  return title;
}

std::string plant_line(const std::string& plant, const plant_figures& figures, std::int64_t missed) {
  const std::string answered = std::to_string(figures.answers) + " / " + std::to_string(figures.batches);
  std::string line = plant + apart + word_for(figures.state) + apart +
                     with_tenth(std::llround(figures.cycles_a_second * 10)) + " cycles/s";
  if (missed > 0)
    line += apart + std::to_string(missed) + in_language(" lot(s) manqué(s)", " batch(es) missed");
  line += apart + std::string(in_language("réponses ", "answers ")) + answered;
  if (figures.median_us >= 0)
    line += in_language(" : médiane ", ": median ") + ms_text(figures.median_us) +
            in_language(", au plus ", ", longest ") + ms_text(figures.longest_us);
  return line;
}

std::string file_line(const std::string& file, const signal_record& record) {
  return file + apart + std::to_string(record.signals().size()) + in_language(" signaux", " signals") +
         apart + std::to_string(record.size()) + in_language(" changements", " changes") + apart +
         time_text(record.end_us(), 1);
}

std::string cursor_line(const chart_view& view) {
  constexpr int decimals = 3;
  std::string line;
  const auto& [a, b] = view.cursors;
  if (a) line.append("A ").append(time_text(*a, decimals)).append("   ");
  if (b) line.append("B ").append(time_text(*b, decimals)).append("   ");
  if (a && b) line.append("A → B ").append(interval_text(*b - *a));
  return line;
}
