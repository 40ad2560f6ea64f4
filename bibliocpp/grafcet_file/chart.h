#pragma once
// Charts as a text describes them (doc/grafcet-files.md): the parser makes them, the evolution runs them, a
// drawing shows them. Everything stands in one `program`, in the order of the text; what belongs together is
// told by indexes into its lists, -1 for none.

#include <cstdint>
#include <string>
#include <vector>

namespace grafcet_file {

constexpr int none = -1;

// In the text, both from 1. Columns count characters, not bytes.
struct position {
  int line = 0, column = 0;
};

enum class operation {
  constant,  // value; a duration is in microseconds
  input,     // value: index into program::inputs
  variable,  // value: index into program::variables
  step,      // value: index into program::steps; 1 while the step is active
  negation,
  conjunction,
  disjunction,
  rising,
  falling,
  delay,  // t1/operand/t2: left is the operand, right t1, third t2 or none
  equal,
  different,
  less,
  less_or_equal,
  greater,
  greater_or_equal,
  opposite,
  sum,
  difference,
  product
};

// A place in an expression. What it is made of stands before it in program::nodes.
struct node {
  operation what = operation::constant;
  int left = none, right = none, third = none;
  std::int64_t value = 0;
  position where;
};

enum class action_kind { continuous, stored, forcing };
enum class moment { activation, deactivation, event };
enum class forced_to { situation, present, initial, empty };

struct action {
  action_kind kind = action_kind::continuous;
  std::string text;       // as written, on one line: "A_GAUCHE si non pcA"
  bool on_signal = true;  // what it acts on: an output of the plant, or a variable
  int target = none;      // index into outputs or variables; for a forcing order into charts

  int condition = none;  // of a continuous action: a node, with its delay and limit put into it

  moment when = moment::activation;  // of a stored action
  int event = none;                  // the node that tells it
  int value = none;                  // the node of what is assigned

  forced_to order = forced_to::present;  // of a forcing order
  std::vector<int> situation;            // the steps, as written

  position where;
};

struct step {
  std::string label;    // a number or a name; the step's variable is X and the label
  std::string comment;  // without its quotes
  bool initial = false;
  bool macro = false;      // stands for a chart of kind expansion
  bool enclosing = false;  // holds charts of kind encapsulation
  bool linked = false;     // in an encapsulation: activated with the step that encloses it (*)
  int chart = none;        // where it stands
  int expansion = none;    // of a macro-step: the chart, ...
  int entry = none;        // ... its step E and
  int exit = none;         // its step S
  std::vector<int> encapsulations;
  std::vector<action> actions;
  position where;
};

struct transition {
  std::vector<int> from, to;  // steps, as written: a macro-step itself, not its entry or exit
  int receptivity = none;     // a node
  std::string text;           // the receptivity as written, on one line
  std::string comment;
  int chart = none;
  position where;
};

// A drawing of its own: a GRAFCET, what a macro-step stands for, or what an enclosing step holds.
enum class chart_kind { grafcet, expansion, encapsulation };

struct chart {
  chart_kind kind = chart_kind::grafcet;
  std::string name;  // of a GRAFCET; else the label of the owner
  std::string comment;
  int owner = none;  // the macro-step or enclosing step
  int root = none;   // the GRAFCET it belongs to, itself for a GRAFCET: what forcing orders name
  std::vector<int> steps, transitions;
  position where;
};

struct variable {
  std::string name;
  std::int64_t initial = 0;
  position where;
};

// A signal that the text names, in the order of first use.
struct signal {
  std::string name;
  position where;
};

// An expression with a name ("soit"), which stands for it wherever it is used.
struct definition {
  std::string name;
  std::string text;
  int value = none;  // a node
  position where;
};

struct program {
  std::vector<chart> charts;
  std::vector<step> steps;
  std::vector<transition> transitions;
  std::vector<variable> variables;
  std::vector<definition> definitions;
  std::vector<signal> inputs, outputs;
  std::vector<node> nodes;
};

}  // namespace grafcet_file
