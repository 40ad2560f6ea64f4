#include "outils/chronogramme/state_line.h"

#include <array>
#include <cmath>

#include "bibliocpp/language.h"

namespace {

const char* word_for(plant_state state) {
  switch (state) {
    case plant_state::suspended:
      return tr("suspendue");
    case plant_state::over:
      return tr("terminée");
    case plant_state::killed:
      return tr("tuée");
    default:
      return tr("en marche");
  }
}

std::string with_tenth(std::int64_t tenths) {
  return std::to_string(tenths / 10) + tr(",") + std::to_string(tenths % 10);
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
  if (missed > 0) line += apart + tr("{} lot(s) manqué(s)", {std::to_string(missed)});
  return line + apart +
         (figures.median_us < 0 ? tr("réponses {}", {answered})
                                : tr("réponses {} : médiane {}, au plus {}",
                                     {answered, ms_text(figures.median_us), ms_text(figures.longest_us)}));
}

std::string file_line(const std::string& file, const signal_record& record) {
  return file + apart + tr("{} signaux", {std::to_string(record.signals().size())}) + apart +
         tr("{} changements", {std::to_string(record.size())}) + apart + time_text(record.end_us(), 1);
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
