#include "outils/visionneuse/files.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "outils/visionneuse/failure.h"

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(int status, const std::string& what, int error) {
  throw failure(status, what + ": " + std::strerror(error != 0 ? error : EIO));
}

}  // namespace

std::vector<std::string> read_lines(const std::string& path) {
  const std::string what = "cannot read " + path;
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) fail(bad_input, what, EISDIR);
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) fail(bad_input, what, errno);
  std::vector<std::string> lines;
  std::string line;
  while (std::getline(file, line)) {
    if (line.ends_with('\r')) line.pop_back();
    if (lines.empty() && line.starts_with("\xef\xbb\xbf")) line.erase(0, 3);
    lines.push_back(line);
  }
  if (file.bad()) fail(bad_input, what, errno);
  return lines;
}

void write_whole_file(const std::string& path, const std::function<void(std::ostream&)>& write) {
  std::error_code ignored;
  const fs::file_status there = fs::status(path, ignored);
  // /dev/stdout may lead to a plain file that others go on writing to.
  const bool in_steps = !path.starts_with("/dev/") && (!fs::exists(there) || fs::is_regular_file(there));
  fs::path target = path, written = path;
  if (in_steps) {
    if (fs::exists(there)) target = fs::canonical(path, ignored);  // what a link points to, not the link
    written = target.string() + ".part-" + std::to_string(getpid());
  }
  errno = 0;
  std::ofstream file(written, std::ios::binary);
  if (file) write(file);
  file.close();
  if (file && (!in_steps || std::rename(written.c_str(), target.c_str()) == 0)) return;
  const int error = errno;
  if (in_steps) fs::remove(written, ignored);
  fail(cannot_write, "cannot write " + path, error);
}
