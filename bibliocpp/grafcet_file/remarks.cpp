#include "bibliocpp/grafcet_file/remarks.h"

#include <algorithm>
#include <tuple>

namespace grafcet_file {

namespace {

auto order(const remark& r) { return std::tie(r.where.line, r.where.column, r.warning, r.sentence); }

}  // namespace

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
