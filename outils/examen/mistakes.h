#pragma once
#include <map>
#include <string>
#include <utility>

// What is wrong in a file, by its lines: all of it is told, not only the first.
class mistakes {
 public:
  explicit mistakes(std::string a_file) : file(std::move(a_file)) {}
  void add(int line, const std::string& text) { by_line.emplace(line, text); }
  bool any() const { return !by_line.empty(); }
  // "FILE:LINE: what is wrong", a line each, in the order of the file.
  std::string text() const {
    std::string all;
    for (const auto& [line, what] : by_line)
      all += (all.empty() ? "" : "\n") + file + ":" + std::to_string(line) + ": " + what;
    return all;
  }

 private:
  std::string file;
  std::multimap<int, std::string> by_line;
};
