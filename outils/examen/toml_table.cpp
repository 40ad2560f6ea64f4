#include "outils/examen/toml_table.h"

#include <algorithm>
#include <cmath>

#include "bibliocpp/language.h"
#include "bibliocpp/nearest_name.h"
#include "outils/examen/number_text.h"

toml_table::~toml_table() {
  for (const auto& [key, value] : table) {
    const std::string name(key.str());
    if (std::find(known.begin(), known.end(), name) != known.end()) continue;
    wrong.add(static_cast<int>(key.source().begin.line),
              tr("clé inconnue « {} » ; la plus proche est « {} »",
                 {name, known[static_cast<std::size_t>(nearest_name(name, known))]}));
  }
}

int toml_table::line_of(const char* key) const {
  const toml::node* const found = table.get(key);
  return found == nullptr ? line() : static_cast<int>(found->source().begin.line);
}

void toml_table::require(const char* key) const {
  if (!has(key)) refuse(tr("il manque « {} »", {key}));
}

void toml_table::refuse(const char* key, const std::string& text) const {
  wrong.add(line_of(key), tr("« {} » : {}", {key, text}));
}

const toml::node* toml_table::node(const char* key) {
  known.emplace_back(key);
  return table.get(key);
}

std::string toml_table::text(const char* key) {
  const toml::node* const found = node(key);
  if (found == nullptr) return {};
  std::string value = found->value_exact<std::string>().value_or("");
  if (value.empty()) refuse(key, tr("il faut un texte entre guillemets"));
  return value;
}

double toml_table::number(const char* key, double least, double most, double otherwise) {
  const toml::node* const found = node(key);
  if (found == nullptr) return otherwise;
  const auto value = found->is_number() ? found->value<double>() : std::nullopt;
  if (value && *value >= least && *value <= most) return *value;
  refuse(key, tr("il faut un nombre de {} à {}", {in_short(least), in_short(most)}));
  return otherwise;
}

std::int64_t toml_table::whole_number(const char* key, std::int64_t least, std::int64_t most,
                                      std::int64_t otherwise) {
  const double value =
      number(key, static_cast<double>(least), static_cast<double>(most), static_cast<double>(otherwise));
  if (value != std::floor(value)) refuse(key, tr("il faut un nombre entier"));
  return static_cast<std::int64_t>(value);
}

void toml_table::texts(const char* key, const std::function<void(const std::string&, int)>& take) {
  const toml::node* const found = node(key);
  if (found == nullptr) return;
  const toml::array* const list = found->as_array();
  const auto is_text = [](const toml::node& one) {
    return one.is_string() && !one.value<std::string>()->empty();
  };
  if (list == nullptr || list->empty() || !std::all_of(list->begin(), list->end(), is_text))
    return refuse(key, tr(R"(il faut une liste de textes : ["un", "deux"])"));
  for (const toml::node& one : *list)
    take(*one.value<std::string>(), static_cast<int>(one.source().begin.line));
}

void toml_table::tables(const char* key, const std::function<void(toml_table&)>& read) {
  const toml::node* const found = node(key);
  if (found == nullptr) return;
  const auto read_one = [&](const toml::node& one) {
    if (!one.is_table())
      return wrong.add(static_cast<int>(one.source().begin.line),
                       tr("il faut [[{}]], et ses clés en dessous", {key}));
    toml_table reader(*one.as_table(), wrong);
    read(reader);
  };
  if (found->is_array_of_tables())
    for (const toml::node& one : *found->as_array()) read_one(one);
  else
    read_one(*found);
}
