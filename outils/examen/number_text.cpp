#include "outils/examen/number_text.h"

#include <array>
#include <cstdio>

#include "outils/examen/scenario.h"

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
