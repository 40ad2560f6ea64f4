#include "bibliocpp/grafcet_file/reading.h"

#include <algorithm>
#include <utility>

namespace grafcet_file {

reading::reading(std::string_view text, const plant_signals* a_plant)
    : plant(a_plant), tokens(read_tokens(text, told)) {
  declare_names();
}

// Names are known before the text is read, so that charts may stand in any order.
void reading::declare_names() {
  for (std::size_t k = 0; k + 1 < tokens.size(); ++k) {
    const token& name = tokens[k + 1];
    if (name.kind != token_kind::name) continue;
    if (tokens[k].kind == token_kind::grafcet) grafcet_names.emplace_back(name.text);
    const bool is_variable = tokens[k].kind == token_kind::variable;
    if (!is_variable && tokens[k].kind != token_kind::definition) continue;
    if (index_of(charts.variables, name.text) != none || index_of(charts.definitions, name.text) != none)
      continue;
    if (is_variable)
      charts.variables.push_back({std::string(name.text), 0, name.where});
    else
      charts.definitions.push_back({std::string(name.text), "", none, name.where});
  }
}

void reading::refuse_taken(const token& name) {
  const auto here = [&](position where) {
    return where.line == name.where.line && where.column == name.where.column;
  };
  for (const variable& v : charts.variables)
    if (v.name == name.text && !here(v.where))
      refuse(name.where, tr("« {} » est déjà à la ligne {}", {v.name, std::to_string(v.where.line)}));
  for (const definition& d : charts.definitions)
    if (d.name == name.text && !here(d.where))
      refuse(name.where, tr("« {} » est déjà à la ligne {}", {d.name, std::to_string(d.where.line)}));
}

const token& reading::peek(std::size_t ahead) const {
  return tokens[std::min(at + ahead, tokens.size() - 1)];
}

const token& reading::next() {
  const token& taken = peek();
  if (at + 1 < tokens.size()) ++at;
  return taken;
}

bool reading::take(token_kind kind) {
  if (peek().kind != kind) return false;
  next();
  return true;
}

bool reading::is_word(std::string_view french, std::string_view english) const {
  if (peek().kind != token_kind::name || peek().quoted) return false;
  const std::string word = folded(peek().text);
  return word == french || word == english;
}

bool reading::take_word(std::string_view french, std::string_view english) {
  if (!is_word(french, english)) return false;
  next();
  return true;
}

const token& reading::expect(token_kind kind, const char* what) {
  if (peek().kind != kind) expected(what);
  return next();
}

void reading::expected(const char* what) {
  const token& found = peek();
  const std::string instead = found.kind == token_kind::end_of_text
                                  ? tr("la fin du texte")
                                  : tr("« {} »", {std::string(found.source)});
  refuse(found.where, tr("attendu : {} ; trouvé : {}", {what, instead}));
}

void reading::refuse(position where, std::string sentence) {
  told.error(where, std::move(sentence));
  throw unreadable_statement{};
}

std::string reading::written_since(std::size_t marked) const {
  std::string text;
  for (std::size_t k = marked; k < at; ++k) {
    const token& word = tokens[k];
    if (k > marked && tokens[k - 1].source.data() + tokens[k - 1].source.size() != word.source.data())
      text += ' ';
    text += word.source;
  }
  return text;
}

int reading::add(node made) {
  charts.nodes.push_back(made);
  return static_cast<int>(charts.nodes.size()) - 1;
}

int signal_index(std::vector<signal>& signals, std::string_view name, position where) {
  const int found = index_of(signals, name);
  if (found != none) return found;
  signals.push_back({std::string(name), where});
  return static_cast<int>(signals.size()) - 1;
}

}  // namespace grafcet_file
