#include "bibliocpp/Stringpp.h"

#include <cstring>

char* Stoa(const String& s) {
  char* const copy = new char[s.size() + 1];
  std::memcpy(copy, s.c_str(), s.size() + 1);
  return copy;
}
