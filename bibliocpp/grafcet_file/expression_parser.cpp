// Conditions, and the arithmetic of comparisons and assignments.

#include <array>
#include <utility>

#include "bibliocpp/grafcet_file/reading.h"

namespace grafcet_file {

namespace {

constexpr int deepest = 200;  // operands in operands: enough for everybody, and for the stack

class expression_reader {
 public:
  explicit expression_reader(reading& a_reading) : from(a_reading) {}

  int condition() {
    int left = conjunction();
    for (position where; here(token_kind::disjunction, where);)
      left = from.add({operation::disjunction, left, conjunction(), none, 0, where});
    return left;
  }

  int sum() {
    int left = product();
    for (;;) {
      const position where = from.peek().where;
      if (from.peek().text == "+") {
        from.next();
        left = from.add({operation::sum, left, product(), none, 0, where});
      } else if (from.take(token_kind::minus)) {
        left = from.add({operation::difference, left, product(), none, 0, where});
      } else {
        return left;
      }
    }
  }

  int duration() {
    const token& first = from.peek();
    if (first.kind == token_kind::duration) return constant(from.next());
    if (first.kind == token_kind::name && index_of(from.charts.variables, first.text) != none)
      return named(from.next());
    from.expected(tr("une durée (5s, 500ms) ou une variable qui en contient une"));
  }

 private:
  // One level deeper, for as long as it lives.
  class level {
   public:
    explicit level(expression_reader& a_reader) : reader(a_reader) {
      if (++reader.depth > deepest)
        reader.from.refuse(reader.from.peek().where, tr("expression trop profonde"));
    }
    ~level() { --reader.depth; }
    level(const level&) = delete;
    level& operator=(const level&) = delete;

   private:
    expression_reader& reader;
  };

  bool here(token_kind kind, position& where) {
    where = from.peek().where;
    return from.take(kind);
  }

  int conjunction() {
    int left = operand();
    for (position where; here(token_kind::conjunction, where);)
      left = from.add({operation::conjunction, left, operand(), none, 0, where});
    return left;
  }

  int operand() {
    const level deeper(*this);
    const token first = from.peek();
    switch (first.kind) {
      case token_kind::negation:
        from.next();
        return from.add({operation::negation, operand(), none, none, 0, first.where});
      case token_kind::rising:
      case token_kind::falling:
        from.next();
        return from.add({first.kind == token_kind::rising ? operation::rising : operation::falling,
                         simple_operand(), none, none, 0, first.where});
      case token_kind::open_bracket:
        return comparison();
      case token_kind::number:
        return truth(from.next());
      case token_kind::duration:
        return delay();
      case token_kind::name:
        if (from.peek(1).kind == token_kind::slash) return delay();
        return simple_operand();
      default:
        return simple_operand();
    }
  }

  // What an edge and a delay may be of.
  int simple_operand() {
    if (from.peek().kind == token_kind::name) {
      const int found = named(from.next());
      refuse_bare_comparison();
      return found;
    }
    if (!from.take(token_kind::open)) from.expected(tr("une condition"));
    const int inside = condition();
    from.expect(token_kind::close, tr("« ) »"));
    return inside;
  }

  void refuse_bare_comparison() {
    const token_kind kind = from.peek().kind;
    if (kind >= token_kind::equal && kind <= token_kind::minus)
      from.refuse(from.peek().where, tr("une comparaison s'écrit entre crochets : [C > 3]"));
  }

  int truth(const token& number) {
    if (from.peek().kind == token_kind::slash)
      from.refuse(number.where, tr("une durée a une unité : {}s/..., {}ms/...",
                                   {std::string(number.text), std::string(number.text)}));
    if (number.value > 1)
      from.refuse(number.where, tr("comme condition, seuls 0 et 1 ; une comparaison s'écrit [C > 3]"));
    return constant(number);
  }

  // t1/operand, t1/operand/t2.
  int delay() {
    const position where = from.peek().where;
    const int on = duration();
    from.expect(token_kind::slash, tr("« / » et ce qui est attendu : 5s/X1"));
    const int operand = simple_operand();
    const int off = from.take(token_kind::slash) ? duration() : none;
    return from.add({operation::delay, operand, on, off, 0, where});
  }

  int comparison() {
    constexpr std::array<std::pair<token_kind, operation>, 6> comparisons{
        {{token_kind::equal, operation::equal},
         {token_kind::different, operation::different},
         {token_kind::less, operation::less},
         {token_kind::less_or_equal, operation::less_or_equal},
         {token_kind::greater, operation::greater},
         {token_kind::greater_or_equal, operation::greater_or_equal}}};
    from.next();
    const int left = sum();
    const position where = from.peek().where;
    for (const auto& [kind, what] : comparisons)
      if (from.take(kind)) {
        const int right = sum();
        from.expect(token_kind::close_bracket, tr("« ] »"));
        return from.add({what, left, right, none, 0, where});
      }
    from.expected(tr("une comparaison (= <> < <= > >=)"));
  }

  int product() {
    int left = factor();
    for (position where; here(token_kind::star, where);)
      left = from.add({operation::product, left, factor(), none, 0, where});
    return left;
  }

  int factor() {
    const level deeper(*this);
    const token first = from.peek();
    switch (first.kind) {
      case token_kind::number:
      case token_kind::duration:
        return constant(from.next());
      case token_kind::name:
        return named(from.next());
      case token_kind::minus:
        from.next();
        return from.add({operation::opposite, factor(), none, none, 0, first.where});
      case token_kind::open: {
        from.next();
        const int inside = sum();
        from.expect(token_kind::close, tr("« ) »"));
        return inside;
      }
      default:
        from.expected(tr("un nombre, une variable ou une entrée"));
    }
  }

  int constant(const token& written) {
    return from.add({operation::constant, none, none, none, written.value, written.where});
  }

  // A variable, a definition, a step's variable, or else an input of the plant.
  int named(const token name) {
    if (name.quoted) return input(name);
    if (const int v = index_of(from.charts.variables, name.text); v != none)
      return from.add({operation::variable, none, none, none, v, name.where});
    if (const int d = index_of(from.charts.definitions, name.text); d != none) return defined(d, name);
    if (const token* const step = step_of_other(name)) return step_variable(std::string(name.text), *step);
    if (name.text.size() > 1 && name.text[0] == 'X') return step_variable("", name);
    return input(name);
  }

  int defined(int d, const token& name) {
    const int value = from.charts.definitions[static_cast<std::size_t>(d)].value;
    if (value == none)
      from.refuse(name.where, tr("« {} » est défini plus bas : une définition précède son emploi",
                                 {std::string(name.text)}));
    return value;
  }

  // In "mode.X3", without blanks, where there is a GRAFCET "mode": the token "X3", taken.
  const token* step_of_other(const token& name) {
    const token &point = from.peek(), &step = from.peek(1);
    bool is_grafcet = false;
    for (const std::string& known : from.grafcet_names) is_grafcet = is_grafcet || known == name.text;
    const bool adjacent = point.text.data() == name.text.data() + name.text.size() &&
                          step.text.data() == point.text.data() + point.text.size();
    if (!is_grafcet || !adjacent || point.text != "." || !step.text.starts_with('X')) return nullptr;
    from.next();
    return &from.next();
  }

  int step_variable(std::string grafcet, const token& name) {
    const int made = from.add({operation::step, none, none, none, none, name.where});
    from.step_references.push_back(
        {made, from.grafcet, std::move(grafcet), {std::string(name.text.substr(1)), name.where}});
    return made;
  }

  int input(const token& name) {
    return from.add({operation::input, none, none, none,
                     signal_index(from.charts.inputs, name.text, name.where), name.where});
  }

  reading& from;
  int depth = 0;
};

}  // namespace

int read_condition(reading& from) { return expression_reader(from).condition(); }
int read_number_expression(reading& from) { return expression_reader(from).sum(); }
int read_duration(reading& from) { return expression_reader(from).duration(); }

}  // namespace grafcet_file
