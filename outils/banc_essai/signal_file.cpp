#include "outils/banc_essai/signal_file.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

constexpr std::size_t most_names = 41;
constexpr std::size_t longest_name = 49;

[[noreturn]] void refuse(const String& where, const String& reason) {
  std::cerr << "ERREUR dans " << where << ": " << reason << std::endl;
  std::exit(2);
}

// What is wrong with the line; empty when nothing is.
String take(const String& line, signal_names& names) {
  std::istringstream words(line);
  String kind, name, rest;
  words >> kind >> name >> rest;
  if (kind.empty()) return "";
  if ((kind != "entree" && kind != "sortie") || name.empty() || !rest.empty())
    return "ni \"entree NOM\" ni \"sortie NOM\": " + line;
  list_String& list = kind == "entree" ? names.inputs : names.outputs;
  if (name.size() > longest_name) return "plus de " + std::to_string(longest_name) + " caracteres: " + name;
  if (item_where(list, name) != 0) return "deja donne: " + name;
  if (list.size() == most_names) return "plus de " + std::to_string(most_names) + " signaux de cette sorte";
  list.push_back(name);
  return "";
}

}  // namespace

signal_names read_signals(const String& path) {
  std::ifstream file(path);
  if (!file) refuse(path, "illisible");
  signal_names names;
  String line;
  for (int number = 1; std::getline(file, line); ++number) {
    const String wrong = take(line, names);
    if (!wrong.empty()) refuse(path + ", ligne " + std::to_string(number), wrong);
  }
  if (names.inputs.empty() && names.outputs.empty()) refuse(path, "aucun signal");
  return names;
}
