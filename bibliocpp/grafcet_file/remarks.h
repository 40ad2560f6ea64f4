#pragma once
// What is told about a text.

#include <string>
#include <string_view>
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

// Sentences are given in both languages; each % in them stands for the next of the words.
class remarks {
 public:
  using words = std::vector<std::string>;

  void error(position where, const char* french, const char* english, const words& some = {});
  void warn(position where, const char* french, const char* english, const words& some = {});

  bool no_error() const;
  // In the order of the text, none twice.
  std::vector<remark> sorted() const;

 private:
  std::vector<remark> all;
};

}  // namespace grafcet_file
