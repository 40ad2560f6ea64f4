#include "bibliocpp/automemlink.h"

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <system_error>

int automemlink(int argc, char** argv) {
  if (own_arguments(argc, argv) < argc) {
    const std::string_view text = argv[argc - 1];
    int ident = -1;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), ident);
    if (error == std::errc{} && end == text.end() && text.front() != '-') return ident;
  }
  std::cerr << "usage: " << argv[0] << " [...] -automemlink <ident>" << std::endl;
  std::exit(2);
}

int own_arguments(int argc, char** argv) {
  return argc >= 3 && argv[argc - 2] == std::string_view("-automemlink") ? argc - 2 : argc;
}
