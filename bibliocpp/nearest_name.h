#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

// Index of the name that needs the fewest letters put in, taken out or changed to be the wanted one; upper
// and lower case hardly differ. The first of equals; 0 for none at all.
std::ptrdiff_t nearest_name(std::string_view wanted, std::span<const std::string> names);
