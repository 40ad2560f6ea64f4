#include "bibliocpp/grafcet_file/tokens.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace grafcet_file {

namespace {

struct spelling {
  std::string_view text;
  token_kind kind;
};

constexpr std::array<spelling, 20> words{{
    {"grafcet", token_kind::grafcet},
    {"etape", token_kind::step},
    {"step", token_kind::step},
    {"macro", token_kind::macro},
    {"expansion", token_kind::expansion},
    {"encapsulation", token_kind::encapsulation},
    {"transition", token_kind::transition},
    {"variable", token_kind::variable},
    {"soit", token_kind::definition},
    {"let", token_kind::definition},
    {"et", token_kind::conjunction},
    {"and", token_kind::conjunction},
    {"ou", token_kind::disjunction},
    {"or", token_kind::disjunction},
    {"non", token_kind::negation},
    {"not", token_kind::negation},
    {"fm", token_kind::rising},
    {"rise", token_kind::rising},
    {"fd", token_kind::falling},
    {"fall", token_kind::falling},
}};

// Longer ones first.
constexpr std::array<spelling, 32> marks{{
    {"->", token_kind::arrow},
    {"→", token_kind::arrow},
    {":=", token_kind::assign},
    {"<>", token_kind::different},
    {"≠", token_kind::different},
    {"<=", token_kind::less_or_equal},
    {"≤", token_kind::less_or_equal},
    {">=", token_kind::greater_or_equal},
    {"≥", token_kind::greater_or_equal},
    {"↑", token_kind::rising},
    {"↓", token_kind::falling},
    {"·", token_kind::conjunction},
    {".", token_kind::conjunction},
    {"+", token_kind::disjunction},
    {"!", token_kind::negation},
    {"¬", token_kind::negation},
    {"=", token_kind::equal},
    {"<", token_kind::less},
    {">", token_kind::greater},
    {"-", token_kind::minus},
    {"*", token_kind::star},
    {"/", token_kind::slash},
    {":", token_kind::colon},
    {";", token_kind::semicolon},
    {",", token_kind::comma},
    {"(", token_kind::open},
    {")", token_kind::close},
    {"[", token_kind::open_bracket},
    {"]", token_kind::close_bracket},
    {"{", token_kind::open_brace},
    {"}", token_kind::close_brace},
    {"\xEF\xBB\xBF", token_kind::end_of_text},  // a byte order mark
}};

struct unit {
  std::string_view text;
  std::int64_t us;
};

constexpr std::array<unit, 6> units{{{"us", 1},
                                     {"ms", 1'000},
                                     {"s", 1'000'000},
                                     {"min", 60'000'000},
                                     {"mn", 60'000'000},
                                     {"h", 3'600'000'000}}};
constexpr std::int64_t greatest = 1'000'000'000'000'000;  // over thirty years of microseconds

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool is_continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80; }

// Bytes of the character, 0 when they are no UTF-8.
std::size_t length_of_character(std::string_view rest) {
  const auto first = static_cast<unsigned char>(rest[0]);
  const std::size_t length = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  if (length > rest.size()) return 0;
  for (std::size_t k = 1; k < length; ++k)
    if (!is_continuation(rest[k])) return 0;
  return length;
}

// Letters with accents and of other scripts, but no punctuation: from "À" on, without what lies about the
// arrows and the signs of mathematics.
std::size_t length_of_letter(std::string_view rest) {
  if (is_letter(rest[0])) return 1;
  const auto first = static_cast<unsigned char>(rest[0]);
  return first < 0xC3 || first == 0xE2 ? 0 : length_of_character(rest);
}

class reader {
 public:
  reader(std::string_view a_text, remarks& to_tell) : text(a_text), told(to_tell) {}

  std::vector<token> all() {
    while (skip_blanks()) read_one();
    add(token_kind::end_of_text, 0);
    return std::move(list);
  }

 private:
  std::string_view rest() const { return text.substr(at); }
  bool at_end() const { return at >= text.size(); }

  void advance(std::size_t bytes) {
    for (const std::size_t end = at + bytes; at < end; ++at)
      if (text[at] == '\n') {
        here = {here.line + 1, 1};
        first_of_line = true;
      } else if (!is_continuation(text[at])) {
        ++here.column;
      }
  }

  // And what follows a "#" on its line. False at the end.
  bool skip_blanks() {
    while (!at_end()) {
      if (text[at] == '#')
        advance(std::min(text.find('\n', at), text.size()) - at);
      else if (std::string_view(" \t\r\n\f\v").find(text[at]) != std::string_view::npos)
        advance(1);
      else if (rest().starts_with("\xC2\xA0"))  // a blank that does not break
        advance(2);
      else
        return true;
    }
    return false;
  }

  token& add(token_kind kind, std::size_t bytes) {
    token& added = list.emplace_back();
    added.kind = kind;
    added.text = added.source = rest().substr(0, bytes);
    added.where = here;
    added.first_of_line = first_of_line;
    first_of_line = false;
    advance(bytes);
    return added;
  }

  void read_one() {
    if (text[at] == '"') return read_quoted('"', token_kind::comment);
    if (text[at] == '\'') return read_quoted('\'', token_kind::name);
    if (is_digit(text[at])) return read_number();
    for (const auto& [spelled, kind] : marks)
      if (rest().starts_with(spelled)) {
        if (kind == token_kind::end_of_text)
          advance(spelled.size());
        else
          add(kind, spelled.size());
        return;
      }
    if (const std::size_t length = length_of_name(rest())) return read_word(length);
    refuse_character();
  }

  static std::size_t length_of_name(std::string_view from) {
    std::size_t length = length_of_letter(from);
    if (length == 0) return 0;
    while (length < from.size()) {
      const std::size_t more = is_digit(from[length]) ? 1 : length_of_letter(from.substr(length));
      if (more == 0) break;
      length += more;
    }
    return length;
  }

  void read_word(std::size_t length) {
    const std::string word = folded(rest().substr(0, length));
    token_kind kind = token_kind::name;
    for (const spelling& known : words)
      if (word == known.text) kind = known.kind;
    add(kind, length);
  }

  void read_quoted(char quote, token_kind kind) {
    const std::size_t end = text.find_first_of(std::string{quote, '\n'}, at + 1);
    if (end == std::string_view::npos || text[end] == '\n') {
      told.error(here, tr("{} sans {} qui le ferme sur la même ligne",
                          {std::string(1, quote), std::string(1, quote)}));
      return advance(std::min(end, text.size()) - at);
    }
    token& added = add(kind, end + 1 - at);
    added.text = added.source.substr(1, added.source.size() - 2);
    added.quoted = true;
  }

  // "12", "5s", "0.5s".
  void read_number() {
    const std::string_view from = rest();
    std::size_t length = 0;
    std::int64_t value = 0, parts = 1;
    bool too_great = false, point = false;
    for (; length < from.size(); ++length) {
      const bool is_point =
          !point && from[length] == '.' && length + 1 < from.size() && is_digit(from[length + 1]);
      if (!is_point && !is_digit(from[length])) break;
      point = point || is_point;
      if (is_point) continue;
      if (value > greatest || parts > greatest) too_great = true;
      if (too_great) continue;
      value = value * 10 + (from[length] - '0');
      if (point) parts *= 10;
    }
    const std::string_view behind =
        from.substr(length, length < from.size() ? length_of_name(from.substr(length)) : 0);
    const position where = here;
    for (const auto& [name, us] : units)
      if (behind == name) {
        if (value > greatest / us) too_great = true;
        add(token_kind::duration, length + behind.size()).value = too_great ? 0 : value * us / parts;
        if (too_great) told.error(where, tr("durée trop longue"));
        return;
      }
    token& added = add(token_kind::number, length + behind.size());
    added.value = behind.empty() ? value : 0;
    const std::string written(added.text);
    if (!behind.empty())
      told.error(where, tr("ni nombre, ni durée (5s, 500ms, 2min, 1h), ni nom : « {} »", {written}));
    else if (point)
      told.error(where, tr("un nombre est entier ; une durée a une unité : « {} »", {written}));
    else if (too_great || value > greatest)
      told.error(where, tr("nombre trop grand"));
  }

  void refuse_character() {
    const std::size_t length = length_of_character(rest());
    if (length != 0) {
      told.error(here, tr("caractère inattendu « {} »", {std::string(rest().substr(0, length))}));
    } else if (!bad_bytes) {
      bad_bytes = true;
      told.error(here, tr("le fichier n'est pas en UTF-8 : enregistrez-le ainsi"));
    }
    advance(std::max<std::size_t>(length, 1));
  }

  std::string_view text;
  remarks& told;
  std::vector<token> list;
  std::size_t at = 0;
  position here{1, 1};
  bool first_of_line = true, bad_bytes = false;
};

}  // namespace

std::string folded(std::string_view word) {
  // A word all in capitals is a signal, not one of the language.
  const bool capitals = std::none_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
  if (capitals) return std::string(word);
  // The accents of the language's own words.
  constexpr std::array<std::pair<std::string_view, char>, 8> accents{
      {{"é", 'e'}, {"è", 'e'}, {"ê", 'e'}, {"à", 'a'}, {"É", 'e'}, {"È", 'e'}, {"Ê", 'e'}, {"À", 'a'}}};
  std::string plain;
  while (!word.empty()) {
    std::size_t length = 1;
    char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(word[0])));
    for (const auto& [accented, without] : accents)
      if (word.starts_with(accented)) {
        letter = without;
        length = accented.size();
      }
    plain += letter;
    word.remove_prefix(length);
  }
  return plain;
}

std::vector<token> read_tokens(std::string_view text, remarks& told) { return reader(text, told).all(); }

}  // namespace grafcet_file
