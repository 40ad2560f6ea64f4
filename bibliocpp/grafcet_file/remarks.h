#pragma once
// What is told about a text.

#include <string>
#include <utility>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/language.h"

namespace grafcet_file {

// Something wrong with a text, or, as a warning, probably so. The sentence is in the language of the locale.
struct remark {
  position where;
  bool warning = false;
  std::string sentence;
};

class remarks {
 public:
  void error(position where, std::string sentence) { all.push_back({where, false, std::move(sentence)}); }
  void warn(position where, std::string sentence) { all.push_back({where, true, std::move(sentence)}); }

  bool no_error() const;
  // In the order of the text, none twice.
  std::vector<remark> sorted() const;

 private:
  std::vector<remark> all;
};

}  // namespace grafcet_file
