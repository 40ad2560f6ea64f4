#include "bibliocpp/Stringpp.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <type_traits>

namespace {

bool is_digit(char c) { return '0' <= c && c <= '9'; }
bool is_letter(char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }
bool is_hexadecimal(char c) { return is_digit(c) || ('a' <= c && c <= 'f') || ('A' <= c && c <= 'F'); }
bool is_binary(char c) { return c == '0' || c == '1'; }
bool is_inside_name(char c) { return is_letter(c) || is_digit(c) || c == '_'; }

// Computes in the unsigned type, where wrapping around is defined.
template <typename Unsigned>
Unsigned unchecked_digit(char c) {
  return static_cast<Unsigned>(static_cast<signed char>(c) - '0');
}

template <typename Integer>
Integer signed_decimal(const String& s) {
  using Unsigned = std::make_unsigned_t<Integer>;
  const bool negative = s.starts_with('-');
  Unsigned value = 0;
  for (std::size_t i = negative; i < s.size(); ++i) value = value * 10 + unchecked_digit<Unsigned>(s[i]);
  return static_cast<Integer>(negative ? Unsigned{0} - value : value);
}

unsigned hexadecimal_digit(char c) {
  if (is_digit(c)) return static_cast<unsigned>(c - '0');
  if ('a' <= c && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
  if ('A' <= c && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
  return 0;
}

// A lone first character is the last one too and has to satisfy both.
bool is_name(const String& s, bool may_begin_with_underscore) {
  if (s.empty()) return false;
  const bool begins_well = is_letter(s.front()) || (may_begin_with_underscore && s.front() == '_');
  const bool ends_well = is_letter(s.back()) || is_digit(s.back());
  return begins_well && ends_well && std::all_of(s.begin() + 1, s.end(), is_inside_name);
}

}  // namespace

char* Stoa(const String& s) {
  char* const copy = new char[s.size() + 1];
  std::memcpy(copy, s.c_str(), s.size() + 1);
  return copy;
}

// NOLINTBEGIN(performance-unnecessary-value-param): callers know them with texts by value
int Stoi(String s) { return signed_decimal<int>(s); }
long Stol(String s) { return signed_decimal<long>(s); }
long long Stoll(String s) { return signed_decimal<long long>(s); }
// NOLINTEND(performance-unnecessary-value-param)

double Stod(String s, char sep) {
  std::size_t i = s.find_first_not_of(' ');
  if (i == String::npos) return 0.0;
  double sign = 1.0;
  if (s[i] == '-') {
    sign = -1.0;
    ++i;
  }
  double value = 0.0;
  double divisor = 0.0;  // stays 0 until a separator
  for (; i < s.size(); ++i) {
    if (s[i] == sep) {
      divisor = 1.0;
      continue;
    }
    if (!is_digit(s[i])) break;
    value = value * 10.0 + (s[i] - '0');
    divisor *= 10.0;
  }
  return divisor < 2.0 ? sign * value : sign * value / divisor;
}

unsigned long Stouhex(const String& s) {
  unsigned long value = 0;
  for (const char c : s) value = (value << 4) + hexadecimal_digit(c);
  return value;
}

long Stoshex(const String& s) {
  const unsigned long value = Stouhex(s);
  if (s.empty() || static_cast<signed char>(s.front()) < '8') return static_cast<long>(value);
  return static_cast<long>(value - (1UL << (4 * s.size() % 32)));
}

unsigned long Stoubin(const String& s) {
  unsigned long value = 0;
  for (const char c : s) value = value * 2 + unchecked_digit<unsigned long>(c);
  return value;
}

long Stosbin(const String& s) {
  if (s.empty()) return 0;
  if (s.front() == '0') return static_cast<long>(Stoubin(s.substr(1)));
  unsigned long inverted = 0;
  for (const char c : s.substr(1)) inverted = inverted * 2 + 1 - unchecked_digit<unsigned long>(c);
  return static_cast<long>(~inverted);  // -inverted - 1
}

String ctoS(char c) { return String(1, c); }

String unslong2S(unsigned long v) { return std::to_string(v); }

String unslongbyS(unsigned long v) {
  String text;
  do {
    text += static_cast<char>('A' + v % 8);
    v /= 8;
  } while (v != 0);
  std::reverse(text.begin(), text.end());
  return text;
}

String bin8toS(int v) {
  String text;
  for (int bit = 7; bit >= 0; --bit) text += (static_cast<unsigned>(v) >> bit & 1U) != 0 ? '1' : '0';
  return text;
}

String hex1toS(int v) {
  const int digit = v % 16;
  return ctoS(static_cast<char>(digit < 10 ? '0' + digit : 'a' + digit - 10));
}

int checkuint(const String& s) { return !s.empty() && std::all_of(s.begin(), s.end(), is_digit); }

int checkint(const String& s) { return checkuint(s.starts_with('-') ? s.substr(1) : s); }

int checkdouble(const String&) {
  std::cerr << "checkdouble() a ecrire" << std::endl;
  return 1;
}

int checkhex(const String& s) { return std::all_of(s.begin(), s.end(), is_hexadecimal); }

int checkbin(const String& s) { return std::all_of(s.begin(), s.end(), is_binary); }

int checkhexintel(const String& s) { return s.ends_with('h') && checkhex(s.substr(0, s.size() - 1)); }

int beginbynumber(const String& s) { return !s.empty() && is_digit(s.front()); }

int est_lc(char c) { return is_inside_name(c) || c == '@'; }

int check_ISO_8859_1_alphabetical_letter(char c) {
  const int code = static_cast<unsigned char>(c);
  return is_letter(c) || code == 181 || (192 <= code && code <= 214) || (217 <= code && code <= 246) ||
         (249 <= code && code <= 253) || code == 255;
}

int checkvarname(const String& s) { return is_name(s, false); }

int checkvarname_with_pre_underscore(const String& s) { return is_name(s, true); }

std::string_view next_record(std::string_view& remainder, char separator) {
  const std::size_t end = remainder.find(separator);
  const std::string_view record = remainder.substr(0, end);
  remainder.remove_prefix(end == std::string_view::npos ? remainder.size() : end + 1);
  return record;
}
