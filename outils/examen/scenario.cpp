#include "outils/examen/scenario.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "bibliocpp/language.h"
#include "outils/examen/built_in_scenarios.h"
#include "outils/examen/number_text.h"
#include "outils/examen/toml_table.h"

namespace {

using kind = operator_action::kind;

constexpr double longest_seconds = 7 * 24 * 3600;

std::optional<std::int64_t> time(toml_table& from, const char* key) {
  const double seconds = from.number(key, 0, longest_seconds, 0);
  return from.has(key) ? std::optional(cycles_of(seconds)) : std::nullopt;
}

std::optional<named_signal> signal(toml_table& from, const char* key) {
  const std::string name = from.text(key);
  return from.has(key) ? std::optional(named_signal{name, from.line_of(key)}) : std::nullopt;
}

named_signal needed_signal(toml_table& from, const char* key) {
  from.require(key);
  return signal(from, key).value_or(named_signal{});
}

std::vector<named_signal> signals(toml_table& from, const char* key) {
  std::vector<named_signal> all;
  from.texts(key, [&](const std::string& name, int line) { all.push_back({name, line}); });
  return all;
}

std::int32_t value(toml_table& from, const char* key, std::int32_t otherwise) {
  return static_cast<std::int32_t>(from.whole_number(key, INT32_MIN, INT32_MAX, otherwise));
}

// Keys that mean something beside another one only.
void expect_beside(const toml_table& from, std::initializer_list<const char*> keys, const char* other,
                   bool has_other) {
  for (const char* const key : keys)
    if (from.has(key) && !has_other) from.refuse(key, tr("n'a de sens qu'avec « {} »", {other}));
}

void read_verb(toml_table& from, operator_action& action) {
  constexpr std::pair<const char*, kind> verbs[] = {
      {"appuyer", kind::press}, {"tenir", kind::hold}, {"lacher", kind::release}, {"regler", kind::set}};
  int said = 0;
  for (const auto& [verb, what] : verbs) {
    const std::string label = from.text(verb);
    if (!from.has(verb)) continue;
    action.what = what;
    action.label = label;
    ++said;
  }
  if (said != 1)
    from.refuse(tr("une action est « appuyer », « tenir », « lacher » ou « regler », une seule chose"));
  if (from.has("regler")) from.require("valeur");
  expect_beside(from, {"valeur"}, "regler", from.has("regler"));
  expect_beside(from, {"pendant"}, "appuyer", from.has("appuyer"));
}

operator_action read_action(toml_table& from) {
  operator_action action{};
  action.line = from.line();
  read_verb(from, action);
  action.value = from.number("valeur", -1e6, 1e6, 0);
  action.during = std::max<std::int64_t>(1, time(from, "pendant").value_or(action.during));
  action.at = time(from, "a");
  action.after = time(from, "apres").value_or(0);
  action.on = signal(from, "quand");
  action.on_value = value(from, "vaut", 1);
  action.times = from.has("fois") ? from.whole_number("fois", 1, 1'000'000, 1) : 0;
  action.limit = time(from, "delai").value_or(-1);
  expect_beside(from, {"vaut", "fois", "delai"}, "quand", action.on.has_value());
  if (action.at && (action.on || from.has("apres")))
    from.refuse("a", tr("un moment fixe exclut « quand » et « apres »"));
  return action;
}

// The rollers' labels are the keys; they are set in the order of the file.
void read_speeds(toml_table& top, scenario& asked, mistakes& wrong) {
  const toml::node* const found = top.node("vitesses");
  if (found == nullptr) return;
  if (!found->is_table())
    return top.refuse("vitesses", tr("il faut [vitesses], et en dessous des lignes \"Vitesse A\" = 1.5"));
  std::vector<std::pair<toml::source_position, operator_action>> speeds;
  for (const auto& [key, node] : *found->as_table()) {
    operator_action action{};
    action.what = kind::set;
    action.label = std::string(key.str());
    action.line = static_cast<int>(key.source().begin.line);
    if (!node.is_number()) wrong.add(action.line, tr("il faut un nombre"));
    action.value = node.value<double>().value_or(0);
    speeds.emplace_back(key.source().begin, action);
  }
  std::sort(speeds.begin(), speeds.end(),
            [](const auto& one, const auto& other) { return one.first < other.first; });
  for (const auto& [position, action] : speeds) asked.actions.push_back(action);
}

void read_expectations(toml_table& top, scenario& asked) {
  top.tables("livraisons", [&](toml_table& from) {
    from.require("au_moins");
    asked.deliveries.push_back({needed_signal(from, "signal"),
                                from.whole_number("au_moins", 1, 1'000'000'000, 1),
                                time(from, "avant").value_or(asked.cycles)});
  });
  top.tables("repos", [&](toml_table& from) {
    from.require("signaux");
    from.require("delai");
    asked.rests.push_back({signals(from, "signaux"), needed_signal(from, "apres"),
                           time(from, "delai").value_or(0), signal(from, "jusqu_a")});
  });
  top.tables("arret", [&](toml_table& from) {
    from.require("delai");
    asked.stops.push_back({needed_signal(from, "signal"), time(from, "delai").value_or(0),
                           signal(from, "jusqu_a"), signals(from, "sauf")});
  });
  top.tables("jamais", [&](toml_table& from) {
    asked.nevers.push_back({needed_signal(from, "signal"), signal(from, "avec")});
  });
  top.tables("defaut", [&](toml_table& from) {
    from.require("attendu");
    if (!asked.fault.empty()) from.refuse(tr("un seul défaut peut venir"));
    asked.fault = from.text("attendu");
  });
  const auto kinds = {"livraisons", "repos", "arret", "jamais", "defaut"};
  if (std::none_of(kinds.begin(), kinds.end(), [&](const char* key) { return top.has(key); }))
    top.refuse(
        tr("rien n'est attendu : il faut [[livraisons]], [[repos]], [[arret]], [[jamais]] ou [defaut]"));
}

// What makes no sense though every word of it does.
void check_times(const scenario& asked, mistakes& wrong) {
  const auto check_end = [&](int line, std::int64_t cycle) {
    if (cycle > asked.cycles)
      wrong.add(line, tr("{} : c'est après la fin, {}", {in_seconds(cycle), in_seconds(asked.cycles)}));
  };
  std::int64_t before = 0;
  for (const operator_action& action : asked.actions) {
    if (!action.at) continue;
    check_end(action.line, *action.at);
    if (*action.at < before)
      wrong.add(action.line, tr("l'action d'avant vient à {} : l'opérateur fait une chose après l'autre",
                                {in_seconds(before)}));
    before = *action.at;
  }
  for (const expected_edges& one : asked.deliveries) check_end(one.signal.line, one.before);
  for (const forcing& one : asked.forced) {
    check_end(one.signal.line, one.from);
    if (one.until <= one.from) wrong.add(one.signal.line, tr("« jusqu_a » doit venir après « de »"));
  }
}

scenario read(const toml::table& parsed, const std::string& file, mistakes& wrong) {
  toml_table top(parsed, wrong);
  scenario asked;
  asked.file = file;
  asked.title = top.text("titre");
  if (asked.title.empty()) asked.title = std::filesystem::path(file).stem();
  asked.plant = top.text("maquette");
  top.require("duree");
  asked.cycles = cycles_of(top.number("duree", 0.005, longest_seconds, longest_seconds));
  read_speeds(top, asked, wrong);
  top.tables("action", [&](toml_table& from) { asked.actions.push_back(read_action(from)); });
  top.tables("forcer", [&](toml_table& from) {
    from.require("valeur");
    asked.forced.push_back({needed_signal(from, "signal"), value(from, "valeur", 0),
                            time(from, "de").value_or(0), time(from, "jusqu_a").value_or(asked.cycles + 1)});
  });
  read_expectations(top, asked);
  check_times(asked, wrong);
  return asked;
}

}  // namespace

std::int64_t cycles_of(double seconds) { return std::llround(seconds * 1e6 / cycle_us); }

scenario parse_scenario(const std::string& text, const std::string& file) {
  mistakes wrong(file);
  scenario asked;
  try {
    asked = read(toml::parse(text, file), file, wrong);
  } catch (const toml::parse_error& why) {
    wrong.add(static_cast<int>(why.source().begin.line),
              tr("ce n'est pas du TOML : {}", {std::string(why.description())}));
  }
  if (wrong.any()) throw scenario_error(wrong.text());
  return asked;
}

scenario read_scenario(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path))
    throw scenario_error(tr("scénario illisible : {}", {path}));
  return parse_scenario({std::istreambuf_iterator<char>(file), {}}, path);
}

scenario default_scenario_for(const std::string& plant) {
  const std::string name = std::filesystem::path(plant).filename();
  for (const built_in_scenario& each : built_in_scenarios)
    if (name == each.plant) return parse_scenario(each.text, name + ".toml");
  throw scenario_error(tr("{} n'a pas de scénario livré : il faut --scenario", {plant}));
}
