#include "outils/answers/answers.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "bibliocpp/language.h"

namespace {

[[noreturn]] void answer(const std::string& text) {
  if (std::cout << text << std::flush) std::exit(0);
  std::cerr << program_invocation_short_name << ": " << std::strerror(errno) << std::endl;
  std::exit(1);
}

}  // namespace

void answer_help(const std::string& usage) {
  answer(usage + tr("--help donne cet usage, --version la version.\n"));
}

void answer_version() { answer(program_invocation_short_name + std::string(" " WAGONS_VERSION "\n")); }
