#pragma once
#include <iostream>
#include <string>

// A line on the error stream, at once, so that it does not mix with those of others.
inline void tell(const std::string& sentence) { std::cerr << "passerelle_modbus: " + sentence + "\n"; }
