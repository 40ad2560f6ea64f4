#include "bibliocpp/Stringpp.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <memory>
#include <tuple>
#include <vector>

namespace {

template <typename Result>
using table = std::vector<std::tuple<String, Result>>;

}  // namespace

TEST(Stringpp, reads_integers_and_counts_any_character_as_a_digit) {
  for (const auto& [text, value] : table<int>{{"-12", -12},
                                              {"", 0},
                                              {"-", 0},
                                              {"1a", 59},
                                              {"+5", ('+' - '0') * 10 + 5},
                                              {"--5", -(('-' - '0') * 10 + 5)},
                                              {"\xff", -1 - '0'},
                                              {"-2147483648", INT_MIN},
                                              {"2147483648", INT_MIN},
                                              {"4294967297", 1}})
    EXPECT_EQ(Stoi(text), value) << text;
  EXPECT_EQ(Stol("-9223372036854775808"), LONG_MIN);
  EXPECT_EQ(Stoll("18446744073709551617"), 1);
}

TEST(Stringpp, reads_decimals_with_a_separator_of_choice) {
  for (const auto& [text, sep, value] : std::vector<std::tuple<String, char, double>>{{"  -3,25", ',', -3.25},
                                                                                      {"7.", '.', 7.0},
                                                                                      {"12abc", '.', 12.0},
                                                                                      {"1.2.3", '.', 12.3},
                                                                                      {"3.25", ',', 3.0},
                                                                                      {".5", '.', 0.5},
                                                                                      {"+5", '.', 0.0},
                                                                                      {"\t5", '.', 0.0},
                                                                                      {"", '.', 0.0},
                                                                                      {"   ", '.', 0.0}})
    EXPECT_EQ(Stod(text, sep), value) << text;
  EXPECT_TRUE(std::signbit(Stod("-", '.')));
  EXPECT_FALSE(std::signbit(Stod(" ", '.')));
}

TEST(Stringpp, reads_hexadecimal_and_binary) {
  EXPECT_EQ(Stouhex("1G"), 16U);
  EXPECT_EQ(Stouhex("aFfeDcBa98765432"), 0xaffedcba98765432UL);
  EXPECT_EQ(Stouhex("1ffffffffffffffff"), ULONG_MAX) << "the oldest digit is shifted out";
  EXPECT_EQ(Stoubin("1012"), 12U);
  EXPECT_EQ(Stoubin("/"), ULONG_MAX);
  for (const auto& [text, value] : table<long>{{"7F", 127},
                                               {"80", -128},
                                               {"FF", -1},
                                               {"8000", -32768},
                                               {"FFFFFFF", -1},
                                               {"", 0},
                                               {"\x90", 0},
                                               {"FFFFFFFF", 4294967294},
                                               {"800000000", 0x800000000 - 16}})
    EXPECT_EQ(Stoshex(text), value) << text;
  for (const auto& [text, value] : table<long>{{"", 0},
                                               {"0", 0},
                                               {"1", -1},
                                               {"0101", 5},
                                               {"1011", -5},
                                               {"111", -1},
                                               {"x011", -5},
                                               {"12", -1 + 1}})
    EXPECT_EQ(Stosbin(text), value) << text;
}

TEST(Stringpp, writes_numbers) {
  EXPECT_EQ(unslong2S(0), "0");
  EXPECT_EQ(unslong2S(ULONG_MAX), "18446744073709551615");
  for (const auto& [text, value] : table<unsigned long>{
           {"A", 0}, {"H", 7}, {"BA", 8}, {"BAA", 64}, {"BHHHHHHHHHHHHHHHHHHHHH", ULONG_MAX}})
    EXPECT_EQ(unslongbyS(value), text);
  for (const auto& [text, value] :
       table<int>{{"00000101", 5}, {"11111111", -1}, {"00000000", 256}, {"10000000", INT_MIN + 128}})
    EXPECT_EQ(bin8toS(value), text);
  for (const auto& [text, value] :
       table<int>{{"9", 9}, {"a", 26}, {"f", 15}, {"/", -1}, {"!", -15}, {"0", INT_MIN}})
    EXPECT_EQ(hex1toS(value), text) << value;
  EXPECT_EQ(ctoS('\0'), String("\0", 1));
}

TEST(Stringpp, copies_a_text_for_c) {
  const std::unique_ptr<char[]> copy(Stoa(String("a\0b", 3)));
  EXPECT_EQ(String(copy.get(), 4), String("a\0b\0", 4));
}

TEST(Stringpp, tells_numbers_and_names) {
  struct expected {
    int uinteger, integer, hex, bin, intel, number_first, name, underscore_name;
    bool operator==(const expected&) const = default;
  };
  for (const auto& [text, e] : std::vector<std::tuple<String, expected>>{{"", {0, 0, 1, 1, 0, 0, 0, 0}},
                                                                         {"10", {1, 1, 1, 1, 0, 1, 0, 0}},
                                                                         {"-12", {0, 1, 0, 0, 0, 0, 0, 0}},
                                                                         {"+1", {0, 0, 0, 0, 0, 0, 0, 0}},
                                                                         {"-", {0, 0, 0, 0, 0, 0, 0, 0}},
                                                                         {"1:", {0, 0, 0, 0, 0, 1, 0, 0}},
                                                                         {"h", {0, 0, 0, 0, 1, 0, 1, 1}},
                                                                         {"fFh", {0, 0, 0, 0, 1, 0, 1, 1}},
                                                                         {"1gh", {0, 0, 0, 0, 0, 1, 0, 0}},
                                                                         {"A1", {0, 0, 1, 0, 0, 0, 1, 1}},
                                                                         {"1A", {0, 0, 1, 0, 0, 1, 0, 0}},
                                                                         {"a_1", {0, 0, 0, 0, 0, 0, 1, 1}},
                                                                         {"a_", {0, 0, 0, 0, 0, 0, 0, 0}},
                                                                         {"a-b", {0, 0, 0, 0, 0, 0, 0, 0}},
                                                                         {"_a", {0, 0, 0, 0, 0, 0, 0, 1}},
                                                                         {"_", {0, 0, 0, 0, 0, 0, 0, 0}},
                                                                         {"é", {0, 0, 0, 0, 0, 0, 0, 0}}}) {
    const expected seen{
        checkuint(text),     checkint(text),      checkhex(text),     checkbin(text),
        checkhexintel(text), beginbynumber(text), checkvarname(text), checkvarname_with_pre_underscore(text)};
    EXPECT_TRUE(seen == e) << '"' << text << '"';
  }
  testing::internal::CaptureStderr();
  EXPECT_EQ(checkdouble("no number"), 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "checkdouble() a ecrire\n");
}

TEST(Stringpp, tells_characters) {
  String letters_of_names, iso_letters;
  for (int code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    if (est_lc(c)) letters_of_names += c;
    if (check_ISO_8859_1_alphabetical_letter(c)) iso_letters += c;
  }
  const String upper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ", lower = "abcdefghijklmnopqrstuvwxyz";
  EXPECT_EQ(letters_of_names, "0123456789@" + upper + "_" + lower);
  String accented;
  for (int code = 192; code < 256; ++code)
    if (String("\xd7\xd8\xf7\xf8\xfe").find(static_cast<char>(code)) == String::npos)
      accented += static_cast<char>(code);
  EXPECT_EQ(iso_letters, upper + lower + "\xb5" + accented);
}

TEST(Stringpp, splits_records) {
  for (const auto& [text, records] : table<std::vector<String>>{
           {"one", {"one"}}, {"one\ntwo\n", {"one", "two"}}, {"a\n\nb", {"a", "", "b"}}, {"\n", {""}}}) {
    std::vector<String> seen;
    for (std::string_view rest = text; !rest.empty();) seen.emplace_back(next_record(rest, '\n'));
    EXPECT_EQ(seen, records) << text;
  }
}
