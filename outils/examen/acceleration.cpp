#include "outils/examen/acceleration.h"

#include <elf.h>
#include <glob.h>
#include <semaphore.h>
#include <sys/mman.h>
#include <sys/prctl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
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

void forget_acceleration(pid_t controller) {
  const std::string pid = std::to_string(controller);
  shm_unlink(("/faketime_shm_" + pid).c_str());
  sem_unlink(("/faketime_sem_" + pid).c_str());
}
