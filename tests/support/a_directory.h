#pragma once
// A directory of the test's own to work in, and what programs leave there. Include gtest first.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The current directory as long as it lives; removed with all that it holds.
class a_directory {
 public:
  a_directory() {
    std::string name = testing::TempDir() + "test-XXXXXX";
    path = mkdtemp(name.data());
    std::filesystem::current_path(path);
  }
  ~a_directory() {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(path);
  }
  a_directory(const a_directory&) = delete;
  a_directory& operator=(const a_directory&) = delete;

  std::filesystem::path path;
};

inline std::string contents(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}
