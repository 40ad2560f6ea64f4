#include "bibliocpp/language.h"

#include <libintl.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace {

namespace files = std::filesystem;

constexpr const char* domain = "wagons";

bool english_is_asked_for() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != '\0') return std::string_view(value).starts_with("en");
  }
  return false;
}

files::path catalogues() {
  std::error_code none;
  const files::path programs = files::read_symlink("/proc/self/exe", none).parent_path();
  for (const files::path& place : {programs.parent_path() / "share/locale", files::path(BUILT_LOCALES)})
    if (files::exists(place / "en/LC_MESSAGES/wagons.mo", none)) return place;
  return INSTALLED_LOCALES;
}

// The locale of the look-up alone: that of the program, with its numbers and the system's error texts, stays
// as it is. English ones need not be installed, this one always is, and any but "C" heeds LANGUAGE. Null for
// French.
locale_t of_catalogue() {
  if (!english_is_asked_for()) return nullptr;
  setenv("LANGUAGE", "en", 1);
  bindtextdomain(domain, catalogues().c_str());
  bind_textdomain_codeset(domain, "UTF-8");
  return newlocale(LC_MESSAGES_MASK, "C.UTF-8", nullptr);
}

}  // namespace

const char* tr(const char* french) {
  static const locale_t english = of_catalogue();
  if (english == nullptr) return french;
  const locale_t programs_own = uselocale(english);
  const char* const text = dgettext(domain, french);
  uselocale(programs_own);
  return text;
}

std::string tr(const char* french, std::initializer_list<std::string> parts) {
  std::string text = tr(french);
  std::size_t at = 0;
  for (const std::string& part : parts) {
    at = text.find("{}", at);
    if (at == std::string::npos) break;
    text.replace(at, 2, part);
    at += part.size();
  }
  return text;
}
