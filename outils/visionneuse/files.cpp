#include "outils/visionneuse/files.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>
#include <ext/stdio_filebuf.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <utility>

#include "outils/visionneuse/failure.h"

namespace fs = std::filesystem;

std::vector<std::string> read_lines(const std::string& path) {
  const std::string what = tr("impossible de lire {}", {path});
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) throw failure(bad_input, what, EISDIR);
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) throw failure(bad_input, what, errno);
  file.exceptions(std::ios::badbit);  // or the stream would keep to itself that there is no memory left
  std::vector<std::string> lines;
  try {
    for (std::string line; std::getline(file, line);) {
      if (line.ends_with('\r')) line.pop_back();
      if (lines.empty() && line.starts_with("\xef\xbb\xbf")) line.erase(0, 3);
      lines.push_back(line);
    }
  } catch (const std::ios::failure&) {
    throw failure(bad_input, what, errno);
  }
  return lines;
}

// In what follows false and -1 mean a failure of which errno tells more.
namespace {

class open_file {
 public:
  explicit open_file(int descriptor) : number(descriptor) {}
  ~open_file() { close(); }
  open_file(const open_file&) = delete;
  open_file& operator=(const open_file&) = delete;

  bool open() const { return number >= 0; }
  operator int() const { return number; }
  void take(int descriptor) { number = descriptor; }
  bool close() { return number < 0 || ::close(std::exchange(number, -1)) == 0; }

 private:
  int number;
};

// Signals wait as long as this lives.
class no_signals {
 public:
  no_signals() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
  }
  ~no_signals() { sigprocmask(SIG_SETMASK, &before, nullptr); }
  no_signals(const no_signals&) = delete;
  no_signals& operator=(const no_signals&) = delete;

 private:
  sigset_t before{};
};

bool is_plain(int file) {
  struct stat seen {};
  return fstat(file, &seen) == 0 && S_ISREG(seen.st_mode);
}

// On the disk of the path if its folder takes new files, else where temporary ones are. It has no name, so
// nothing is left of it however the program ends.
int unnamed_file(const fs::path& path) {
  const auto in = [](const fs::path& folder) {
    return open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
  };
  const int beside = in(path.has_parent_path() ? path.parent_path() : ".");
  std::error_code ignored;
  return beside >= 0 ? beside : in(fs::temp_directory_path(ignored));
}

bool write_to(int file, const std::function<void(std::ostream&)>& write) {
  errno = 0;
  __gnu_cxx::stdio_filebuf<char> buffer(dup(file), std::ios::out | std::ios::binary);
  std::ostream stream(&buffer);
  write(stream);
  return stream.flush() && buffer.close() != nullptr;
}

bool give_name(int file, const std::string& path) {
  const std::string as_link = "/proc/self/fd/" + std::to_string(file);
  return linkat(AT_FDCWD, as_link.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool replace_contents(open_file& to, int by) {
  struct stat old {
  }, wanted{};
  if (fstat(to, &old) != 0 || fstat(by, &wanted) != 0) return false;
  const auto size = static_cast<std::size_t>(wanted.st_size);
  // A full disk must be noticed before the first byte is replaced.
  if (size > 0 && fallocate(to, FALLOC_FL_KEEP_SIZE, 0, wanted.st_size) != 0 && errno != EOPNOTSUPP) {
    const int error = errno;
    [[maybe_unused]] const int freed = ftruncate(to, old.st_size);
    errno = error;
    return false;
  }
  for (off_t done = 0; done < wanted.st_size;)
    if (sendfile(to, by, &done, size - static_cast<std::size_t>(done)) <= 0) return false;
  return ftruncate(to, wanted.st_size) == 0 && to.close();
}

}  // namespace

void write_whole_file(const std::string& path, const std::function<void(std::ostream&)>& write) {
  const auto check = [&](bool done) {
    const int error = errno;
    if (!done) throw failure(cannot_write, tr("impossible d'écrire {}", {path}), error);
  };
  const bool standard_output = path == "/dev/stdout";  // others write there too, also if it is a plain file
  open_file there(standard_output ? dup(STDOUT_FILENO) : open(path.c_str(), O_WRONLY | O_CLOEXEC));
  check(there.open() || errno == ENOENT);
  if (there.open() && (standard_output || !is_plain(there))) return check(write_to(there, write));

  const open_file draft(unnamed_file(path));
  check(draft.open() && write_to(draft, write));
  const no_signals between_old_and_new;
  const bool is_new = !there.open();
  if (is_new) {
    if (give_name(draft, path)) return;
    there.take(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    check(there.open());
  }
  if (replace_contents(there, draft)) return;
  const int error = errno;
  std::error_code ignored;
  if (is_new) fs::remove(fs::canonical(path, ignored), ignored);
  errno = error;
  check(false);
}
