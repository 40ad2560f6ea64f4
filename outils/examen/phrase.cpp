#include "outils/examen/phrase.h"

#include <array>
#include <cstdio>

#include "bibliocpp/language.h"
#include "outils/examen/scenario.h"

std::string phrase(const char* french, const char* english, std::initializer_list<std::string> parts) {
  std::string text = in_language(french, english);
  std::size_t at = 0;
  for (const std::string& part : parts) {
    at = text.find("{}", at);
    text.replace(at, 2, part);
    at += part.size();
  }
  return text;
}

std::string in_seconds(std::int64_t cycles) { return in_short(seconds_of(cycles)) + " s"; }

std::string in_short(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.10g", number);
  return text.data();
}

std::string with_decimals(double number, int decimals) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
  return text.data();
}
