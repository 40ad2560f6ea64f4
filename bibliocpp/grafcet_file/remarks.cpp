#include "bibliocpp/grafcet_file/remarks.h"

#include <algorithm>
#include <tuple>

namespace grafcet_file {

namespace {

std::string filled(std::string_view pattern, const remarks::words& some) {
  std::string text;
  auto word = some.begin();
  for (const char c : pattern)
    if (c == '%' && word != some.end())
      text += *word++;
    else
      text += c;
  return text;
}

auto order(const remark& r) { return std::tie(r.where.line, r.where.column, r.warning, r.sentence); }

}  // namespace

void remarks::error(position where, const char* french, const char* english, const words& some) {
  all.push_back({where, false, filled(in_language(french, english), some)});
}

void remarks::warn(position where, const char* french, const char* english, const words& some) {
  all.push_back({where, true, filled(in_language(french, english), some)});
}

bool remarks::no_error() const {
  return std::all_of(all.begin(), all.end(), [](const remark& r) { return r.warning; });
}

std::vector<remark> remarks::sorted() const {
  std::vector<remark> list = all;
  std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) { return order(a) < order(b); });
  list.erase(std::unique(list.begin(), list.end(),
                         [](const auto& a, const auto& b) { return order(a) == order(b); }),
             list.end());
  return list;
}

}  // namespace grafcet_file
