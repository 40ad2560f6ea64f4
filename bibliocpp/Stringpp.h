#pragma once
// Conversions between texts and other types.

#include <string>

using String = std::string;

// A new NUL-terminated copy of s, which the caller releases with delete[].
char* Stoa(const String& s);
