#include "bibliocpp/grafcet_file/parser.h"

#include <algorithm>
#include <utility>

#include "bibliocpp/grafcet_file/reading.h"

namespace grafcet_file {

namespace {

std::string text_of(const token& t) { return std::string(t.text); }

label read_label(reading& from) {
  const token& next = from.peek();
  if (next.kind != token_kind::number && next.kind != token_kind::name)
    from.expected(tr("le numéro ou le nom d'une étape"));
  from.next();
  return {text_of(next), next.where};
}

std::vector<label> read_labels(reading& from) {
  std::vector<label> labels{read_label(from)};
  while (from.take(token_kind::comma)) labels.push_back(read_label(from));
  return labels;
}

// It may stand before the colon or at the end.
void read_comment(reading& from, std::string& comment) {
  if (from.peek().kind != token_kind::comment) return;
  if (!comment.empty()) from.refuse(from.peek().where, tr("un second commentaire"));
  comment = text_of(from.next());
}

// --- Actions ---

// F/mode{1, 3}
void read_forcing(reading& from, action& made) {
  made.kind = action_kind::forcing;
  from.next();
  from.next();
  const token& name = from.expect(token_kind::name, tr("le nom d'un grafcet"));
  forcing_labels labels{static_cast<int>(from.charts.steps.size()) - 1,
                        from.charts.steps.back().actions.size(),
                        {text_of(name), name.where},
                        {}};
  from.expect(token_kind::open_brace, tr("« { » et une situation : {1, 3}, {*}, {INIT} ou {}"));
  if (from.peek().kind == token_kind::close_brace)
    made.order = forced_to::empty;
  else if (from.take(token_kind::star))
    made.order = forced_to::present;
  else if (from.take_word("INIT", "INIT"))
    made.order = forced_to::initial;
  else {
    made.order = forced_to::situation;
    labels.steps = read_labels(from);
  }
  from.expect(token_kind::close_brace, tr("« } »"));
  from.forcings.push_back(std::move(labels));
}

// C := C + 1 sur activation
void read_stored(reading& from, action& made) {
  made.kind = action_kind::stored;
  made.value = read_number_expression(from);
  if (!from.take_word("sur", "on"))
    from.expected(tr("« sur activation », « sur désactivation » ou « sur » et un évènement (sur fm a)"));
  if (from.take_word("activation", "activation")) {
    made.when = moment::activation;
  } else if (from.take_word("desactivation", "deactivation")) {
    made.when = moment::deactivation;
  } else {
    made.when = moment::event;
    made.event = read_condition(from);
  }
}

int both(reading& from, int left, int right, position where) {
  return left == none ? right : from.add({operation::conjunction, left, right, none, 0, where});
}

// A si c, A après 3s, A pendant 5s; the times are counted from the step's activation.
void read_continuous(reading& from, action& made) {
  bool conditional = false, timed = false;
  for (;;) {
    const position where = from.peek().where;
    if (!conditional && from.take_word("si", "if")) {
      conditional = true;
      made.condition = both(from, made.condition, read_condition(from), where);
    } else if (const bool limited = from.is_word("pendant", "for");
               !timed && (limited || from.is_word("apres", "after"))) {
      timed = true;
      from.next();
      const int time = read_duration(from);
      const int step = from.add(
          {operation::step, none, none, none, static_cast<int>(from.charts.steps.size()) - 1, where});
      int passed = from.add({operation::delay, step, time, none, 0, where});
      if (limited) passed = from.add({operation::negation, passed, none, none, 0, where});
      made.condition = both(from, made.condition, passed, where);
    } else {
      return;
    }
  }
}

void read_action(reading& from) {
  const std::size_t begin = from.mark();
  const token name = from.peek();
  if (name.kind != token_kind::name)
    from.expected(tr("une action : une sortie, « C := ... » ou un forçage F/nom{...}"));
  action made;
  made.where = name.where;
  if (!name.quoted && name.text == "F" && from.peek(1).kind == token_kind::slash) {
    read_forcing(from, made);
  } else {
    from.next();
    const int v = name.quoted ? none : index_of(from.charts.variables, name.text);
    made.on_signal = v == none;
    if (from.take(token_kind::assign))
      read_stored(from, made);
    else if (v != none)
      from.refuse(from.peek().where,
                  tr("{} est une variable : « {} := ... sur activation »", {text_of(name), text_of(name)}));
    else
      read_continuous(from, made);
    made.target = v != none ? v : signal_index(from.charts.outputs, name.text, name.where);
  }
  made.text = from.written_since(begin);
  from.charts.steps.back().actions.push_back(std::move(made));
}

// --- Statements ---

// Where steps and transitions stand; made up when the text has forgotten it.
void require_chart(reading& from) {
  if (from.chart != none) return;
  const token& here = from.peek();
  from.told.error(here.where, tr("d'abord « grafcet » et son nom"));
  from.chart = from.grafcet = static_cast<int>(from.charts.charts.size());
  chart& made = from.charts.charts.emplace_back();
  made.root = from.chart;
  made.where = here.where;
}

chart& current_chart(reading& from) { return from.charts.charts[static_cast<std::size_t>(from.chart)]; }

void begin_chart(reading& from, chart_kind kind, std::string name, position where) {
  from.chart = static_cast<int>(from.charts.charts.size());
  if (kind == chart_kind::grafcet) from.grafcet = from.chart;
  chart& made = from.charts.charts.emplace_back();
  made.kind = kind;
  made.name = std::move(name);
  made.root = from.grafcet;
  made.where = where;
  read_comment(from, made.comment);
}

void read_grafcet(reading& from) {
  const token& name = from.expect(token_kind::name, tr("le nom du grafcet"));
  if (const int other = index_of(from.charts.charts, name.text); other != none)
    from.told.error(
        name.where,
        tr("un grafcet « {} » est déjà à la ligne {}",
           {text_of(name), std::to_string(from.charts.charts[static_cast<std::size_t>(other)].where.line)}));
  begin_chart(from, chart_kind::grafcet, text_of(name), name.where);
}

void read_part(reading& from, chart_kind kind) {
  require_chart(from);
  const label owner = read_label(from);
  begin_chart(from, kind, owner.text, owner.where);
}

step& begin_step(reading& from, const label& named) {
  current_chart(from).steps.push_back(static_cast<int>(from.charts.steps.size()));
  step& made = from.charts.steps.emplace_back();
  made.label = named.text;
  made.where = named.where;
  made.chart = from.chart;
  return made;
}

void read_macro(reading& from) {
  require_chart(from);
  step& made = begin_step(from, read_label(from));
  made.macro = true;
  read_comment(from, made.comment);
  if (from.peek().kind == token_kind::colon)
    from.refuse(from.peek().where, tr("une macro-étape n'a pas d'action : ses étapes en ont"));
}

// "Encapsulante" is the standard's word, "englobante" what many say.
bool is_enclosing(const reading& from) {
  return from.is_word("encapsulante", "enclosing") || from.is_word("englobante", "enclosing");
}

bool is_step_adjective(const reading& from) {
  return from.is_word("initiale", "initial") || is_enclosing(from);
}

void read_step(reading& from) {
  require_chart(from);
  const position where = from.peek().where;
  bool initial = false, enclosing = false, linked = false;
  for (bool named = false;;) {
    if (from.take_word("initiale", "initial"))
      initial = true;
    else if (is_enclosing(from))
      from.next(), enclosing = true;
    else if (named && from.take(token_kind::star))
      linked = true;
    else if (!named)
      named = from.expect(token_kind::step, tr("« étape »")).kind == token_kind::step;
    else
      break;
  }
  step& made = begin_step(from, read_label(from));
  made.initial = initial;
  made.enclosing = enclosing;
  made.linked = linked;
  if (linked && current_chart(from).kind != chart_kind::encapsulation)
    from.told.error(where, tr("* n'a de sens que dans une encapsulation"));
  std::string comment;
  read_comment(from, comment);
  if (from.take(token_kind::colon)) {
    do read_action(from);
    while (from.take(token_kind::semicolon));
  }
  read_comment(from, comment);
  from.charts.steps.back().comment = std::move(comment);
}

std::vector<label> read_end(reading& from, bool before) {
  if (before && from.take_word("source", "source")) return {};
  if (!before && from.take_word("puits", "sink")) return {};
  const token_kind kind = from.peek().kind;
  if (kind == token_kind::number || kind == token_kind::name) return read_labels(from);
  if (before) from.expected(tr("avant « -> » une étape, ou « source » s'il n'y en a pas"));
  from.expected(tr("après « -> » une étape, ou « puits » s'il n'y en a pas"));
}

void read_transition(reading& from) {
  require_chart(from);
  transition made;
  made.where = from.peek().where;
  made.chart = from.chart;
  transition_labels labels;
  labels.from = read_end(from, true);
  from.expect(token_kind::arrow, tr("« -> »"));
  labels.to = read_end(from, false);
  read_comment(from, made.comment);
  from.expect(token_kind::colon, tr("« : » et une réceptivité"));
  const std::size_t begin = from.mark();
  made.receptivity = read_condition(from);
  made.text = from.written_since(begin);
  read_comment(from, made.comment);
  current_chart(from).transitions.push_back(static_cast<int>(from.charts.transitions.size()));
  from.charts.transitions.push_back(std::move(made));
  from.transitions.push_back(std::move(labels));
}

void read_variable(reading& from) {
  const token name = from.expect(token_kind::name, tr("le nom de la variable"));
  from.refuse_taken(name);
  from.expect(token_kind::equal, tr("« = » et la valeur initiale"));
  const bool negative = from.take(token_kind::minus);
  const token& value = from.peek();
  if (value.kind != token_kind::number && value.kind != token_kind::duration)
    from.expected(tr("un nombre ou une durée"));
  from.next();
  from.charts.variables[static_cast<std::size_t>(index_of(from.charts.variables, name.text))].initial =
      negative ? -value.value : value.value;
}

// Wherever a definition stands it belongs to no GRAFCET.
class outside_of_grafcets {
 public:
  explicit outside_of_grafcets(reading& from) : within(from.grafcet), kept(from.grafcet) { within = none; }
  ~outside_of_grafcets() { within = kept; }
  outside_of_grafcets(const outside_of_grafcets&) = delete;
  outside_of_grafcets& operator=(const outside_of_grafcets&) = delete;

 private:
  int& within;
  int kept;
};

void read_definition(reading& from) {
  const token name = from.expect(token_kind::name, tr("le nom de la définition"));
  from.refuse_taken(name);
  from.expect(token_kind::equal, tr("« = » et une condition"));
  const std::size_t begin = from.mark();
  const int value = [&] {
    const outside_of_grafcets no_own_steps(from);
    return read_condition(from);
  }();
  definition& made =
      from.charts.definitions[static_cast<std::size_t>(index_of(from.charts.definitions, name.text))];
  made.value = value;
  made.text = from.written_since(begin);
}

void read_statement(reading& from) {
  if (is_step_adjective(from)) return read_step(from);
  if (from.peek().kind == token_kind::step) return read_step(from);
  if (from.take(token_kind::grafcet)) return read_grafcet(from);
  if (from.take(token_kind::macro)) return read_macro(from);
  if (from.take(token_kind::expansion)) return read_part(from, chart_kind::expansion);
  if (from.take(token_kind::encapsulation)) return read_part(from, chart_kind::encapsulation);
  if (from.take(token_kind::transition)) return read_transition(from);
  if (from.take(token_kind::variable)) return read_variable(from);
  if (from.take(token_kind::definition)) return read_definition(from);
  from.expected(tr("grafcet, étape, transition, macro, expansion, encapsulation, variable ou soit"));
}

void read_all(reading& from) {
  while (from.peek().kind != token_kind::end_of_text) try {
      read_statement(from);
    } catch (const unreadable_statement&) {
      while (from.peek().kind != token_kind::end_of_text && !from.peek().begins_statement() &&
             !(from.peek().first_of_line && is_step_adjective(from)))
        from.next();
    }
}

}  // namespace

bool parsed::ok() const {
  return std::all_of(remarks.begin(), remarks.end(), [](const remark& r) { return r.warning; });
}

parsed read_charts(std::string_view text, const plant_signals* plant) {
  reading from(text, plant);
  read_all(from);
  link(from);
  if (from.told.no_error()) check(from.charts, from.told);
  if (from.told.no_error()) warn_of_selections(from.charts, from.told);
  return {std::move(from.charts), from.told.sorted()};
}

}  // namespace grafcet_file
