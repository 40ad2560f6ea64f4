#pragma once
// The words and marks of a text of charts.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/remarks.h"

namespace grafcet_file {

enum class token_kind {
  end_of_text,
  name,      // text is the name, in the quotes of 'a name' too
  number,    // value
  duration,  // value, in microseconds
  comment,   // text is what stands between the quotes
  // Words that begin a statement: no signal can be called so without quotes.
  grafcet,
  step,
  macro,
  expansion,
  encapsulation,
  transition,
  variable,
  definition,
  // Operators, as a word or as a mark.
  conjunction,
  disjunction,
  negation,
  rising,
  falling,
  // Marks.
  arrow,
  assign,
  equal,
  different,
  less,
  less_or_equal,
  greater,
  greater_or_equal,
  minus,
  star,
  slash,
  colon,
  semicolon,
  comma,
  open,
  close,
  open_bracket,
  close_bracket,
  open_brace,
  close_brace
};

struct token {
  token_kind kind = token_kind::end_of_text;
  std::string_view text;    // of the source
  std::string_view source;  // the same with quotes
  std::int64_t value = 0;
  position where;
  bool quoted = false;
  bool first_of_line = false;

  bool begins_statement() const { return kind >= token_kind::grafcet && kind <= token_kind::definition; }
};

// All tokens of the text, the last one end_of_text. What is none is told and left out. Views are into `text`.
std::vector<token> read_tokens(std::string_view text, remarks& told);

// The word in lower case, without accents, as words of the language are compared; one that is all in capitals
// stays as it is.
std::string folded(std::string_view word);

}  // namespace grafcet_file
