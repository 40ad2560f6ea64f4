#include "outils/examen/acceleration.h"

#include <elf.h>
#include <glob.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

bool can_be_accelerated() {
  glob_t found{};
  const bool there = glob("/usr/lib/*/faketime/libfaketime.so.1", 0, nullptr, &found) == 0;
  globfree(&found);
  return there;
}

bool is_statically_linked(const std::string& program) {
  std::ifstream file(program, std::ios::binary);
  Elf64_Ehdr header{};
  file.read(reinterpret_cast<char*>(&header), sizeof header);
  if (!file || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64)
    return false;
  file.seekg(static_cast<std::streamoff>(header.e_phoff));
  for (int n = 0; n < header.e_phnum; ++n) {
    Elf64_Phdr part{};
    file.read(reinterpret_cast<char*>(&part), sizeof part);
    if (!file || part.p_type == PT_INTERP) return false;
  }
  return true;
}

void accelerate_pauses(int times) {
  if (times <= 1) return;
  prctl(PR_SET_TIMERSLACK, 1);  // nanosecond, else the kernel adds more to a pause than is left of it
  // A program built with the address sanitizer wants to be before every other library.
  const char* const its_options = std::getenv("ASAN_OPTIONS");
  const std::string options = its_options == nullptr ? "" : std::string(its_options) + ":";
  setenv("ASAN_OPTIONS", (options + "verify_asan_link_order=0").c_str(), 1);
  setenv("LD_PRELOAD", "/usr/$LIB/faketime/libfaketime.so.1", 1);  // $LIB: of the program's own kind
  setenv("FAKETIME", ("+0 x" + std::to_string(times)).c_str(), 1);
}

// Named after their process: "faketime_shm_N" and "sem.faketime_sem_N".
void remove_traces_of_acceleration() {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/dev/shm", ignored)) {
    const std::string name = entry.path().filename();
    if (!name.starts_with("faketime_shm_") && !name.starts_with("sem.faketime_sem_")) continue;
    const std::string process = "/proc/" + name.substr(name.rfind('_') + 1);
    if (access(process.c_str(), F_OK) != 0) std::filesystem::remove(entry.path(), ignored);
  }
}
