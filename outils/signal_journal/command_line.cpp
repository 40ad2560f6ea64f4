#include "outils/signal_journal/command_line.h"

#include <charconv>
#include <optional>
#include <system_error>
#include <vector>

#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

std::optional<int> as_number(const std::string& text) {
  int value = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size()) return std::nullopt;
  return value;
}

int number(const std::string& text) {
  if (const auto value = as_number(text)) return *value;
  throw bad_command_line(tr("ce n'est pas un nombre : {}", {text}));
}

int positive(const std::string& text) {
  const int value = number(text);
  if (value <= 0) throw bad_command_line(tr("il faut un nombre positif : {}", {text}));
  return value;
}

}  // namespace

const char* usage() {
  return tr(
      "usage : signal_journal PID [--until SIGNAL VALEUR [FOIS]] [--vcd FICHIER] [--csv FICHIER]\n"
      "        signal_journal PID --zone\n");
}

command_line read_command_line(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  command_line asked;
  std::string plant, times;
  std::size_t n = 0;
  const auto following = [&]() -> const std::string& {
    if (n + 1 >= words.size()) throw bad_command_line(tr("{} : il manque un mot", {words[n]}));
    return words[++n];
  };
  for (; n < words.size(); ++n) {
    const std::string& word = words[n];
    if (word == "--help") answer_help(usage());
    if (word == "--version") answer_version();
    if (word == "--zone") {
      asked.only_area = true;
    } else if (word == "--vcd") {
      asked.vcd = following();
    } else if (word == "--csv") {
      asked.csv = following();
    } else if (word == "--until") {
      asked.until = following();
      asked.value = number(following());
      if (n + 1 < words.size() && as_number(words[n + 1])) times = words[++n];
    } else if (plant.empty() && !word.starts_with('-')) {
      plant = word;
    } else {
      throw bad_command_line(tr("je ne comprends pas : {}", {word}));
    }
  }
  if (plant.empty()) plant.swap(times);  // "--until SIGNAL VALUE PID"
  if (plant.empty()) throw bad_command_line(tr("de quel processus ?"));
  asked.plant = positive(plant);
  if (!times.empty()) asked.times = positive(times);
  return asked;
}
