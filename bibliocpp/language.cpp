#include "bibliocpp/language.h"

#include <cstdlib>
#include <string_view>

bool in_french() {
  static const bool french = [] {
    for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
      const char* const value = std::getenv(name);
      if (value != nullptr && *value != '\0') return !std::string_view(value).starts_with("en");
    }
    return true;
  }();
  return french;
}

const char* in_language(const char* french, const char* english) { return in_french() ? french : english; }
