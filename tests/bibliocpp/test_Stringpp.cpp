#include "bibliocpp/Stringpp.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

namespace {

template <typename Read>
auto values(Read read, const std::vector<String>& texts) {
  std::vector<decltype(read(String()))> result;
  for (const String& text : texts) result.push_back(read(text));
  return result;
}

String passing(int (*test)(const String&)) {
  String passed;
  for (const char* text :
       {"", "10", "-12", "+1", "-", "1:", "h", "fFh", "1gh", "A1", "1A", "a_1", "a_", "a-b", "_a", "_", "é"})
    if (test(text) == 1) passed += text + String(" ");
  return passed;
}

double decimal(const String& s) { return Stod(s, '.'); }

// What must hold for any text.
void try_text(const String& s) {
  EXPECT_EQ(String(std::unique_ptr<char[]>(Stoa(s)).get(), s.size() + 1), s + '\0');
  EXPECT_EQ(Stoi(s), static_cast<int>(Stol(s))) << "both wrap around";
  EXPECT_TRUE(checkint(s) == 0 || s.size() > 18 || Stoll(s) == std::stoll(s));
  EXPECT_EQ(Stouhex(s + "G"), Stouhex(s) << 4);
  EXPECT_TRUE(checkhex(s) == 0 || s.size() > 16 || Stouhex(s) == std::stoul("0" + s, nullptr, 16));
  EXPECT_EQ(Stosbin("0" + s), static_cast<long>(Stoubin(s)));
  const unsigned long weight = s.size() < 64 ? 1UL << s.size() : 0;
  EXPECT_TRUE(Stosbin("1" + s) == static_cast<long>(Stoubin(s) - weight) || checkbin(s) == 0);
  EXPECT_TRUE(checkuint(s) == 0 || s.size() > 15 || decimal(s) == static_cast<double>(Stol(s)));
  Stoshex(s);
  Stod(s, s.empty() ? ',' : s[s.size() / 2]);
  EXPECT_LE(checkvarname(s), checkvarname_with_pre_underscore(s));
  EXPECT_EQ(checkhexintel(s + "h"), checkhex(s));
  String joined;
  for (std::string_view rest = s; !rest.empty();) joined.append(next_record(rest, '0')).append("0");
  EXPECT_TRUE(joined == s || joined == s + "0");
}

}  // namespace

TEST(Stringpp, reads_numbers_by_its_rules) {
  EXPECT_EQ(values(Stoi, {"-12", "", "-", "1a", "--5", "\xff", "2147483648", "4294967297"}),
            (std::vector{-12, 0, 0, 59, 25, -49, INT_MIN, 1}));
  EXPECT_EQ(Stol("-9223372036854775808"), LONG_MIN);
  EXPECT_EQ(Stoll("18446744073709551617"), 1);
  EXPECT_EQ(values(decimal, {"  -3.25", "7.", "12abc", "1.2.3", ".5", "+5", "\t5", "3,5", "", "  "}),
            (std::vector{-3.25, 7.0, 12.0, 12.3, 0.5, 0.0, 0.0, 3.0, 0.0, 0.0}));
  EXPECT_EQ(Stod("-3,25", ','), -3.25);
  EXPECT_TRUE(std::signbit(decimal("-")));
  EXPECT_EQ(values(Stouhex, {"", "1G", "aFfeDcBa98765432", "1ffffffffffffffff"}),
            (std::vector<unsigned long>{0, 16, 0xaffedcba98765432, ULONG_MAX}));
  EXPECT_EQ(values(Stoshex, {"7F", "80", "FF", "8000", "FFFFFFF", "", "\x90", "FFFFFFFF", "800000000"}),
            (std::vector<long>{127, -128, -1, -32768, -1, 0, 0, 4294967294, 0x800000000 - 16}));
  EXPECT_EQ(values(Stoubin, {"", "1012", "/"}), (std::vector<unsigned long>{0, 12, ULONG_MAX}));
  EXPECT_EQ(values(Stosbin, {"", "0", "1", "0101", "1011", "111", "x011", "12"}),
            (std::vector<long>{0, 0, -1, 5, -5, -1, -5, 0}));
}

TEST(Stringpp, writes_numbers) {
  EXPECT_EQ(unslong2S(0) + unslong2S(ULONG_MAX), "018446744073709551615");
  EXPECT_EQ(unslongbyS(0) + unslongbyS(7) + unslongbyS(8) + unslongbyS(64), "AHBABAA");
  EXPECT_EQ(unslongbyS(ULONG_MAX), "B" + String(21, 'H'));
  EXPECT_EQ(bin8toS(5) + bin8toS(-1) + bin8toS(256), "000001011111111100000000");
  EXPECT_EQ(hex1toS(9) + hex1toS(26) + hex1toS(15) + hex1toS(-1) + hex1toS(-15) + hex1toS(INT_MIN), "9af/!0");
  EXPECT_EQ(ctoS('\0'), String("\0", 1));
}

TEST(Stringpp, tells_texts_and_characters) {
  EXPECT_EQ(passing(checkuint), "10 ");
  EXPECT_EQ(passing(checkint), "10 -12 ");
  EXPECT_EQ(passing(checkhex), " 10 A1 1A ");
  EXPECT_EQ(passing(checkbin), " 10 ");
  EXPECT_EQ(passing(checkhexintel), "h fFh ");
  EXPECT_EQ(passing(beginbynumber), "10 1: 1gh 1A ");
  EXPECT_EQ(passing(checkvarname), "h fFh A1 a_1 ");
  EXPECT_EQ(passing(checkvarname_with_pre_underscore), "h fFh A1 a_1 _a ");
  testing::internal::CaptureStderr();
  EXPECT_EQ(checkdouble("no number"), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "checkdouble() a ecrire\n");
  const String letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  for (int code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    const bool accented = code >= 192 && String("\xd7\xd8\xf7\xf8\xfe").find(c) == String::npos;
    EXPECT_EQ(est_lc(c), (letters + "0123456789_@").find(c) != String::npos) << code;
    EXPECT_EQ(check_ISO_8859_1_alphabetical_letter(c),
              accented || (letters + "\xb5").find(c) != String::npos);
  }
}

// FUZZ_SECONDS prolongs it with a new seed (script/fuzz); without it, always the same short run.
TEST(Stringpp, keeps_its_rules_on_any_text) {
  const char* const seconds = std::getenv("FUZZ_SECONDS");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds ? Stol(seconds) : 0);
  const auto seed = seconds ? std::random_device{}() : 1;
  std::mt19937_64 random(seed);
  const String alphabets[] = {"01",   "0123456789",           "09afAF", "0123456789-.",
                              "aZ0_", " -+./:@[`{gGhH\n\xff", ""};
  const std::size_t longest[] = {3, 20, 70, 1000, 100'000};
  for (long n = 0; (n < 500 || std::chrono::steady_clock::now() < end) && !HasFailure(); ++n) {
    const String& alphabet = alphabets[random() % std::size(alphabets)];
    String text(random() % longest[random() % std::size(longest)], '\0');
    for (char& c : text)
      c = alphabet.empty() ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
    try_text(text);
    const unsigned long bits = random() >> random() % 64;
    EXPECT_EQ(Stoubin(bin8toS(static_cast<int>(bits))), bits & 255);
    EXPECT_EQ(unslong2S(bits), std::to_string(bits));
    EXPECT_EQ(hex1toS(static_cast<int>(bits)).size(), 1U);
  }
  RecordProperty("seed", std::to_string(seed));
}
