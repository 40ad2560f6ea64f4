#pragma once
// Reading TOML that people write: whatever is wrong is told by its line, all of it at once.

#include <toml++/toml.h>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "outils/examen/mistakes.h"

// A table of the file. Each key that is asked for is known from then on; one that nobody has asked for is
// told as a mistake, with the nearest known one, when the reader goes. What is not of the expected kind is a
// mistake too, and then read as if it were not there.
class toml_table {
 public:
  toml_table(const toml::table& a_table, mistakes& some) : table(a_table), wrong(some) {}
  ~toml_table();
  toml_table(const toml_table&) = delete;
  toml_table& operator=(const toml_table&) = delete;

  int line() const { return static_cast<int>(table.source().begin.line); }
  int line_of(const char* key) const;  // the table's where there is no such key
  bool has(const char* key) const { return table.contains(key); }
  void require(const char* key) const;
  void refuse(const std::string& text) const { wrong.add(line(), text); }
  void refuse(const char* key, const std::string& text) const;

  const toml::node* node(const char* key);  // null where there is none
  std::string text(const char* key);
  double number(const char* key, double least, double most, double otherwise);
  std::int64_t whole_number(const char* key, std::int64_t least, std::int64_t most, std::int64_t otherwise);
  // Each text of a list, with its line.
  void texts(const char* key, const std::function<void(const std::string&, int)>& take);
  // Every [[key]]; a [key] alone counts as one of them.
  void tables(const char* key, const std::function<void(toml_table&)>& read);

 private:
  const toml::table& table;
  mistakes& wrong;
  std::vector<std::string> known;
};
