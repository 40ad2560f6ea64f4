// Throws random texts at every operation, under the sanitizers, and compares with what must hold for any
// text. FUZZ_SECONDS prolongs it with a new seed (script/fuzz); without it, always the same short run.

#include <gtest/gtest.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>

#include "bibliocpp/Stringpp.h"

namespace {

class source {
 public:
  explicit source(unsigned seed) : random(seed) {}

  std::size_t below(std::size_t bound) { return random() % bound; }

  // Of any length up to 100 000, short ones more often; of any bytes or of a few telling ones.
  String text() {
    const std::size_t longest[] = {3, 8, 20, 70, 1000, 100'000};
    static const String alphabets[] = {
        "01", "0123456789", "0123456789abcdefABCDEF", "0123456789-.", "aZ0_", " -+.,/:@[`{gGhH\n\xff\x80",
        ""};
    const String& alphabet = alphabets[below(std::size(alphabets))];
    String s(below(longest[below(std::size(longest))] + 1), '\0');
    for (char& c : s) c = alphabet.empty() ? static_cast<char>(below(256)) : alphabet[below(alphabet.size())];
    return s;
  }

 private:
  std::mt19937_64 random;
};

using pattern = testing::Matcher<const String&>;

template <typename Integer>
Integer standard_value(const String& s, int base) {
  Integer value = 0;
  std::from_chars(s.data(), s.data() + s.size(), value, base);
  return value;
}

// Patterns know no further.
bool is_c_text(const String& s) { return s.find('\0') == String::npos; }

void try_numbers(const String& s) {
  EXPECT_EQ(Stoll(s), Stol(s));
  EXPECT_EQ(Stoi(s), static_cast<int>(Stol(s))) << "both wrap around";
  if (checkint(s) && s.size() < 19) {
    EXPECT_EQ(Stol(s), standard_value<long>(s, 10));
  }
  if (checkhex(s) && s.size() <= 16) {
    EXPECT_EQ(Stouhex(s), standard_value<unsigned long>(s, 16));
  }
  EXPECT_EQ(Stouhex(s + "G"), Stouhex(s) << 4);
  if (checkbin(s) && !s.empty() && s.size() < 63) {
    EXPECT_EQ(Stoubin(s), standard_value<unsigned long>(s, 2));
    EXPECT_EQ(Stosbin(s), Stol(unslong2S(Stoubin(s))) - (s[0] == '1' ? 1L << s.size() : 0));
  } else {
    Stosbin(s);
  }
  if (checkhex(s) && !s.empty() && s.size() < 8) {
    const unsigned unused_bits = 32 - 4 * static_cast<unsigned>(s.size());
    EXPECT_EQ(Stoshex(s), static_cast<std::int32_t>(Stouhex(s) << unused_bits) >> unused_bits);
  } else {
    Stoshex(s);
  }
  static const pattern decimal = testing::MatchesRegex("-?[0-9]{1,7}(\\.[0-9]{1,8})?");
  if (s.size() < 18 && is_c_text(s) && decimal.Matches(s)) {
    EXPECT_EQ(Stod(s, '.'), std::strtod(s.c_str(), nullptr)) << "both exact to the last bit";
  }
  Stod(s, s.empty() ? ',' : s[s.size() / 2]);
}

void try_tests(const String& s) {
  EXPECT_EQ(String(std::unique_ptr<char[]>(Stoa(s)).get(), s.size() + 1), s + '\0');
  EXPECT_LE(checkuint(s), checkint(s));
  EXPECT_LE(checkuint(s), beginbynumber(s));
  EXPECT_LE(checkbin(s), checkhex(s));
  EXPECT_LE(checkvarname(s), checkvarname_with_pre_underscore(s));
  EXPECT_EQ(checkhexintel(s + "h"), checkhex(s));
  static const pattern name = testing::MatchesRegex("[a-zA-Z]([a-zA-Z0-9_]*[a-zA-Z0-9])?");
  static const pattern underscore_name = testing::MatchesRegex("_[a-zA-Z0-9_]*[a-zA-Z0-9]");
  if (s.size() > 70 || !is_c_text(s)) return;
  EXPECT_EQ(checkvarname(s), name.Matches(s));
  EXPECT_EQ(checkvarname_with_pre_underscore(s), name.Matches(s) || underscore_name.Matches(s));
}

void try_writing(std::uint64_t bits) {
  const int v = static_cast<int>(bits);
  EXPECT_EQ(Stoubin(bin8toS(v)), bits & 255);
  if (v >= 0) {
    EXPECT_EQ(Stouhex(hex1toS(v)), bits & 15);
  }
  EXPECT_EQ(hex1toS(v).size(), 1U);
  EXPECT_EQ(standard_value<unsigned long>(unslong2S(bits), 10), bits);
  unsigned long octal = 0;
  for (const char c : unslongbyS(bits)) octal = octal * 8 + static_cast<unsigned long>(c - 'A');
  EXPECT_EQ(octal, bits);
}

void try_records(const String& s, char separator) {
  String joined;
  for (std::string_view rest = s; !rest.empty();) {
    const String record(next_record(rest, separator));
    joined += record + separator;
  }
  EXPECT_TRUE(joined == s || joined == s + separator);
}

}  // namespace

TEST(Stringpp, keeps_its_rules_on_any_text) {
  const char* const seconds = std::getenv("FUZZ_SECONDS");
  const unsigned seed = seconds == nullptr ? 1 : std::random_device{}();
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::seconds(seconds == nullptr ? 0 : Stol(seconds));
  source any(seed);
  long texts = 0;
  for (; (texts < 500 || std::chrono::steady_clock::now() < end) && !HasFailure(); ++texts) {
    const String s = any.text();
    SCOPED_TRACE("text " + std::to_string(texts) + " of seed " + std::to_string(seed));
    try_numbers(s);
    try_tests(s);
    try_writing(any.below(UINT64_MAX) >> any.below(64));
    try_records(s, s.empty() ? '\n' : s[any.below(s.size())]);
  }
  std::cout << texts << " texts, seed " << seed << "\n";
}
