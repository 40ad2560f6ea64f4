#pragma once
// What the parts of the parser share while a text is read.

#include <string>
#include <string_view>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "bibliocpp/grafcet_file/remarks.h"
#include "bibliocpp/grafcet_file/tokens.h"

namespace grafcet_file {

// Thrown when a statement makes no sense from here on, after it has been told; the next one is read.
struct unreadable_statement {};

struct label {
  std::string text;
  position where;
};

// Steps are known only once everything has been read; what names them waits here.
struct step_reference {
  int node;
  int from;             // the GRAFCET in which it stands, none in a definition
  std::string grafcet;  // in "mode.X3"; else empty
  label step;
};
struct transition_labels {
  std::vector<label> from, to;
};
struct forcing_labels {
  int step;
  std::size_t action;
  label grafcet;
  std::vector<label> steps;
};

struct reading {
  reading(std::string_view text, const plant_signals* a_plant);

  program charts;
  remarks told;
  const plant_signals* plant;
  int grafcet = none, chart = none;  // where statements stand at the moment
  std::vector<std::string> grafcet_names;
  std::vector<step_reference> step_references;
  std::vector<transition_labels> transitions;
  std::vector<forcing_labels> forcings;

  // The token that is next, or one behind it.
  const token& peek(std::size_t ahead = 0) const;
  const token& next();
  bool take(token_kind kind);
  // Whether the next token is a word that counts only where it stands, in either language.
  bool is_word(std::string_view french, std::string_view english) const;
  bool take_word(std::string_view french, std::string_view english);
  // Takes a token of the kind, or tells what was expected and ends the statement.
  const token& expect(token_kind kind, const char* what);
  [[noreturn]] void expected(const char* what);
  [[noreturn]] void refuse(position where, std::string sentence);

  // What has been written from a token on (see mark()), on one line.
  std::size_t mark() const { return at; }
  std::string written_since(std::size_t marked) const;

  int add(node made);

  // Tells of a name that a declaration may not take.
  void refuse_taken(const token& name);

 private:
  void declare_names();
  std::vector<token> tokens;
  std::size_t at = 0;
};

template <typename Thing>
int index_of(const std::vector<Thing>& things, std::string_view name) {
  for (std::size_t k = 0; k < things.size(); ++k)
    if (things[k].name == name) return static_cast<int>(k);
  return none;
}

// Adds the signal unless it is there; its index.
int signal_index(std::vector<signal>& signals, std::string_view name, position where);

// Expressions: each gives the node of what it has read.
int read_condition(reading& from);
int read_number_expression(reading& from);
// "5s", or a variable that holds a duration.
int read_duration(reading& from);

// The rest of the work, once everything has been read.
void link(reading& done);
void check(const program& charts, remarks& told);
void warn_of_selections(const program& charts, remarks& told);

}  // namespace grafcet_file
