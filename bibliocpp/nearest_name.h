#pragma once
// Which name somebody may have meant.

#include <string>
#include <string_view>
#include <vector>

// How far one name is from another: letters to put in, take out or change (4 each); upper and lower case are
// hardly different (1).
int name_distance(std::string_view from, std::string_view to);

// The index of the nearest of them, the first of several; -1 when there are none.
int nearest_name(std::string_view name, const std::vector<std::string>& names);
