// Reading a value change dump: declarations first, then moments and the values taken at them.

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"

namespace {

constexpr std::int64_t least = INT32_MIN, greatest = INT32_MAX;

bool is_one_of(std::string_view characters, char c) { return characters.find(c) != std::string_view::npos; }

std::string whole(const std::string& path) {
  constexpr std::size_t most = std::size_t{1} << 30, portion = std::size_t{1} << 20;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  while (file && text.size() <= most) {
    const std::size_t size = text.size();
    text.resize(size + portion);
    file.read(text.data() + size, portion);
    text.resize(size + static_cast<std::size_t>(file.gcount()));
  }
  if (text.size() > most) throw signal_file_error(path + ": " + tr("plus de 1 Gio"));
  if (!file.eof()) throw signal_file_error(path + ": " + std::strerror(errno));
  return text;
}

class reader {
 public:
  explicit reader(std::string a_path) : path(std::move(a_path)), text(whole(path)) {}

  signal_record read() {
    declarations();
    signal_record record(std::move(signals));
    values(record);
    return record;
  }

 private:
  // A variable may be declared under several names; its values are theirs all.
  struct variable {
    std::vector<std::size_t> signals;
    std::int64_t* own = nullptr;  // one of those that our files add
  };

  [[noreturn]] void fail(const std::string& reason) const {
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(token_start), '\n');
    throw signal_file_error(path + ":" + std::to_string(line) + ": " + reason);
  }

  // The next word; empty at the end.
  std::string_view next() {
    const auto blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (position < text.size() && blank(text[position])) ++position;
    token_start = position;
    while (position < text.size() && !blank(text[position])) ++position;
    return std::string_view(text).substr(token_start, position - token_start);
  }

  std::vector<std::string> words_to_end() {
    std::vector<std::string> words;
    for (std::string_view word = next(); word != "$end"; word = next()) {
      if (word.empty()) fail(tr("il manque un $end"));
      words.emplace_back(word);
    }
    return words;
  }

  void declarations() {
    for (std::string_view word = next(); word != "$enddefinitions"; word = next()) {
      if (word.empty() || word[0] != '$') fail(tr("ce n'est pas un fichier VCD : $enddefinitions attendu"));
      const std::vector<std::string> words = words_to_end();
      if (word == "$version") ours = words == std::vector<std::string>{"wagons"};
      if (word == "$timescale") timescale(words);
      if (word == "$scope") scopes.push_back(words.size() == 2 ? words[1] : "");
      if (word == "$upscope" && !scopes.empty()) scopes.pop_back();
      if (word == "$var") declare(words);
    }
    words_to_end();
  }

  void timescale(const std::vector<std::string>& words) {
    std::string both;
    for (const std::string& word : words) both += word;
    constexpr const char* units[] = {"s", "ms", "us", "ns", "ps", "fs"};
    std::uint64_t femtoseconds = 1'000'000'000'000'000;
    for (const char* const unit : units) {
      for (const char* const number : {"1", "10", "100"})
        if (both == std::string(number) + unit) {
          unit_fs = femtoseconds * std::stoull(number);
          return;
        }
      femtoseconds /= 1000;
    }
    fail(tr("unité de temps inconnue : {}", {both}));
  }

  void declare(const std::vector<std::string>& words) {
    constexpr std::size_t type_size_code_name = 4;
    if (words.size() < type_size_code_name) fail(tr("$var sans type, taille, code et nom"));
    variable& it = variables[words[2]];
    std::string name = words[3];
    for (std::size_t n = type_size_code_name; n < words.size(); ++n) name += words[n];  // a range of bits
    if (ours && scopes == std::vector<std::string>{"zone"}) {
      it.own = name == "lot" ? &clock : &missed;
      return;
    }
    bool is_output = false;
    std::string before;
    for (const std::string& scope : scopes) {
      is_output = is_output || scope == "sorties";
      if (!ours) before += scope + ".";
    }
    it.signals.push_back(signals.size());
    signals.push_back({before + name, is_output});
  }

  void values(signal_record& record) {
    for (std::string_view word = next(); !word.empty(); word = next()) {
      const std::string_view rest = word.substr(1);
      switch (word[0]) {
        case '#':
          moment(rest);
          record.extend(time_us);
          break;
        case '$':
          if (word == "$comment") words_to_end();
          break;  // the others frame values, or nothing
        case 'b':
        case 'B':
          take(record, next(), bits(rest));
          break;
        case 'r':
        case 'R':
          take(record, next(), real(rest));
          break;
        case 's':
        case 'S':
          next();
          break;
        default:
          if (!is_one_of("01hHlLxXzZuUwW-", word[0]))
            fail(tr("ni instant ni valeur : {}", {std::string(word)}));
          take(record, rest, bits(word.substr(0, 1)));
      }
    }
  }

  void moment(std::string_view digits) {
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    constexpr std::uint64_t us_fs = 1'000'000'000;
    const std::uint64_t factor = std::max<std::uint64_t>(unit_fs / us_fs, 1),
                        divisor = std::max<std::uint64_t>(us_fs / unit_fs, 1);
    if (error != std::errc{} || end != digits.data() + digits.size() || count / divisor > INT64_MAX / factor)
      fail(tr("ce n'est pas un instant : #{}", {std::string(digits)}));
    const auto moment_us = static_cast<std::int64_t>(count / divisor * factor);
    if (moment_us < time_us) fail(tr("le temps recule"));
    time_us = moment_us;
  }

  // Nothing when a bit is neither 0 nor 1.
  std::optional<std::int64_t> bits(std::string_view digits) const {
    std::uint64_t value = 0;
    bool too_many = false;
    for (const char digit : digits) {
      if (!is_one_of("01hHlL", digit)) {
        if (is_one_of("xXzZuUwW-", digit)) return std::nullopt;
        fail(tr("ce n'est pas une valeur : b{}", {std::string(digits)}));
      }
      too_many = too_many || value >> 63 != 0;
      value = value << 1 | (digit == '1' || digit == 'h' || digit == 'H' ? 1U : 0U);
    }
    if (digits.empty()) fail(tr("il manque une valeur"));
    return too_many || value > INT64_MAX ? INT64_MAX : static_cast<std::int64_t>(value);
  }

  std::optional<std::int64_t> real(std::string_view digits) const {
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (end != digits.data() + digits.size() || error != std::errc{})
      fail(tr("ce n'est pas un nombre : r{}", {std::string(digits)}));
    if (std::isnan(value)) return std::nullopt;
    return std::llround(std::clamp(value, static_cast<double>(least), static_cast<double>(greatest)));
  }

  void take(signal_record& record, std::string_view code, std::optional<std::int64_t> value) {
    const auto found = variables.find(code);
    if (found == variables.end()) fail(tr("aucune variable n'a le code {}", {std::string(code)}));
    const variable& it = found->second;
    if (it.own != nullptr && value) {
      const std::int64_t before = std::exchange(*it.own, *value);
      if (it.own == &missed && missed > before) record.miss({time_us, missed - before});
    }
    for (const std::size_t signal : it.signals) {
      if (!value && record.changes(signal).empty()) continue;
      record.add(signal, {time_us, clock, value ? narrow(*value) : undefined_value});
    }
  }

  // 32 bits are a whole number with its sign.
  static std::int32_t narrow(std::int64_t value) {
    if (value > greatest && value <= UINT32_MAX) return static_cast<std::int32_t>(value);
    return static_cast<std::int32_t>(std::clamp(value, least, greatest));
  }

  struct same_text {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>()(s); }
  };

  std::string path, text;
  std::size_t position = 0, token_start = 0;
  bool ours = false;
  std::uint64_t unit_fs = 1'000'000;  // a nanosecond, when none is told
  std::vector<std::string> scopes;
  std::vector<recorded_signal> signals;
  std::unordered_map<std::string, variable, same_text, std::equal_to<>> variables;
  std::int64_t time_us = 0, clock = 0, missed = 0;
};

}  // namespace

signal_record read_vcd(const std::string& path) { return reader(path).read(); }
