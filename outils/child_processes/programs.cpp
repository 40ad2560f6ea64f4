#include "outils/child_processes/programs.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <system_error>

namespace {

bool is_program(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> find_program(const std::string& name) {
  if (name.find('/') != std::string::npos) return is_program(name) ? std::optional(name) : std::nullopt;
  std::error_code ignored;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ignored);
  if (std::string beside = self.parent_path() / name; is_program(beside)) return beside;
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');)
    if (std::string there = std::filesystem::path(folder.empty() ? "." : folder) / name; is_program(there))
      return there;
  return std::nullopt;
}

std::string quoted_for_shell(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}
