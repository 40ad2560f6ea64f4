#pragma once
#include <cstdint>
#include <string>

// "2.5 s" for a number of cycles, and a number as short as it can be told, or with decimals.
std::string in_seconds(std::int64_t cycles);
std::string in_short(double number);
std::string with_decimals(double number, int decimals);
