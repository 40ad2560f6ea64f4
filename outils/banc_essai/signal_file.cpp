#include "outils/banc_essai/signal_file.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include "bibliocpp/language.h"

namespace {

constexpr std::size_t most_names = 41;
constexpr std::size_t longest_name = 49;

[[noreturn]] void refuse(const String& where, const String& reason) {
  std::cerr << tr("ERREUR dans {}: {}\n", {where, reason});
  std::exit(2);
}

// What is wrong with the line; empty when nothing is.
String take(const String& line, signal_names& names) {
  std::istringstream words(line);
  String kind, name, rest;
  words >> kind >> name >> rest;
  if (kind.empty()) return "";
  if ((kind != "entree" && kind != "sortie") || name.empty() || !rest.empty())
    return tr("ni \"entree NOM\" ni \"sortie NOM\": {}", {line});
  list_String& list = kind == "entree" ? names.inputs : names.outputs;
  if (name.size() > longest_name)
    return tr("plus de {} caracteres: {}", {std::to_string(longest_name), name});
  if (item_where(list, name) != 0) return tr("deja donne: {}", {name});
  if (list.size() == most_names) return tr("plus de {} signaux de cette sorte", {std::to_string(most_names)});
  list.push_back(name);
  return "";
}

}  // namespace

signal_names read_signals(const String& path) {
  std::ifstream file(path);
  if (!file) refuse(path, tr("illisible"));
  signal_names names;
  String line;
  for (int number = 1; std::getline(file, line); ++number) {
    const String wrong = take(line, names);
    if (!wrong.empty()) refuse(tr("{}, ligne {}", {path, std::to_string(number)}), wrong);
  }
  if (names.inputs.empty() && names.outputs.empty()) refuse(path, tr("aucun signal"));
  return names;
}
