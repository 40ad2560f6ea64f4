#include "outils/examen/harmless.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

struct character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;  // 0: no UTF-8 begins here
};

character first_of(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1};
  const std::size_t bytes = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
  if (lead < 0xc2 || lead > 0xf4 || text.size() < bytes) return {};
  std::uint32_t code = lead & (0x7fU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if ((byte(i) & 0xc0) != 0x80) return {};
    code = code << 6 | (byte(i) & 0x3fU);
  }
  constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
  const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
  if (code < least[bytes] || code > 0x10ffff || is_surrogate) return {};
  return {code, bytes};
}

// Characters that act on a terminal or a reader instead of being seen, and those that XML may not hold.
bool is_dangerous(std::uint32_t code) {
  struct range {
    std::uint32_t first, last;
  };
  constexpr range ranges[] = {{0, 0x1f},        {0x7f, 0x9f},     {0x200b, 0x200f}, {0x2028, 0x202e},
                              {0x2060, 0x206f}, {0xfeff, 0xfeff}, {0xfff9, 0xffff}, {0xe0000, 0xe007f}};
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [&](const range& r) { return r.first <= code && code <= r.last; });
}

std::string escaped(std::uint32_t code) {
  if (code == '\n') return "\\n";
  if (code == '\t') return "\\t";
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), code < 0x100 ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(code));
  return text.data();
}

}  // namespace

std::string harmless(const std::string& text, std::size_t most) {
  std::string safe;
  std::size_t room = most;
  for (std::string_view rest = text; !rest.empty();) {
    const auto [code, bytes] = first_of(rest);
    std::string next(rest.substr(0, bytes));
    if (bytes == 0)
      next = escaped(static_cast<unsigned char>(rest[0]));
    else if (is_dangerous(code))
      next = escaped(code);
    rest.remove_prefix(std::max<std::size_t>(bytes, 1));
    const std::size_t needed = characters_in(next);
    if (needed > room || (needed == room && !rest.empty())) return safe + "…";
    safe += next;
    room -= needed;
  }
  return safe;
}

std::string as_markup(const std::string& text, std::size_t most) {
  std::string marked;
  for (const char c : harmless(text, most)) switch (c) {
      case '&':
        marked += "&amp;";
        break;
      case '<':
        marked += "&lt;";
        break;
      case '>':
        marked += "&gt;";
        break;
      case '"':
        marked += "&quot;";
        break;
      default:
        marked += c;
    }
  return marked;
}

std::size_t characters_in(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](unsigned char c) { return (c & 0xc0) != 0x80; }));
}
