#pragma once
#include <cstdint>
#include <initializer_list>
#include <string>

// The wording in the locale's language, each "{}" in it replaced by the next of the parts.
std::string phrase(const char* french, const char* english, std::initializer_list<std::string> parts = {});

// "2.5 s" for a number of cycles, and a number as short as it can be told, or with decimals.
std::string in_seconds(std::int64_t cycles);
std::string in_short(double number);
std::string with_decimals(double number, int decimals);
