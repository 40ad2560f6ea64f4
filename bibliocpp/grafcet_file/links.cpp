// Names become indexes, once everything has been read.

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "bibliocpp/grafcet_file/reading.h"
#include "bibliocpp/nearest_name.h"

namespace grafcet_file {

namespace {

class linker {
 public:
  explicit linker(reading& everything) : done(everything), charts(everything.charts), told(everything.told) {}

  void link() {
    find_steps();
    give_parts_their_owners();
    for (step& s : charts.steps) look_into(s);
    refuse_circles_of_owners();
    for (std::size_t k = 0; k < charts.transitions.size(); ++k) link_transition(k);
    for (const step_reference& r : done.step_references) link_reference(r);
    for (const forcing_labels& f : done.forcings) link_forcing(f);
    check_signals();
  }

 private:
  step& step_at(int s) { return charts.steps[static_cast<std::size_t>(s)]; }
  chart& chart_at(int c) { return charts.charts[static_cast<std::size_t>(c)]; }
  std::string line_of(int s) { return std::to_string(step_at(s).where.line); }

  // A label is a step's alone within its GRAFCET, expansions and encapsulations included.
  void find_steps() {
    for (int s = 0; s < std::ssize(charts.steps); ++s) {
      const step& here = step_at(s);
      const auto [other, is_new] = steps.try_emplace({chart_at(here.chart).root, here.label}, s);
      if (!is_new)
        told.error(here.where, tr("l'étape {} est déjà à la ligne {}", {here.label, line_of(other->second)}));
    }
  }

  int find(int grafcet, const std::string& label) const {
    const auto found = steps.find({grafcet, label});
    return found == steps.end() ? none : found->second;
  }

  void give_parts_their_owners() {
    for (int c = 0; c < std::ssize(charts.charts); ++c) {
      chart& part = chart_at(c);
      if (part.kind == chart_kind::grafcet) continue;
      const bool is_expansion = part.kind == chart_kind::expansion;
      part.owner = find(part.root, part.name);
      if (part.owner == none || !(is_expansion ? step_at(part.owner).macro : step_at(part.owner).enclosing)) {
        part.owner = none;
        if (is_expansion)
          told.error(part.where, tr("aucune macro-étape {} dans ce grafcet", {part.name}));
        else
          told.error(part.where, tr("aucune étape encapsulante {} dans ce grafcet", {part.name}));
      } else if (!is_expansion) {
        step_at(part.owner).encapsulations.push_back(c);
      } else if (int& expansion = step_at(part.owner).expansion; expansion == none) {
        expansion = c;
      } else {
        told.error(part.where, tr("l'expansion de {} est déjà à la ligne {}",
                                  {part.name, std::to_string(chart_at(expansion).where.line)}));
      }
    }
  }

  void look_into(step& s) {
    if (s.enclosing && s.encapsulations.empty())
      told.error(s.where, tr("il manque « encapsulation {} » et ses étapes", {s.label}));
    if (!s.macro) return;
    if (!s.label.starts_with('M'))
      return told.error(s.where, tr("une macro-étape s'appelle M et un numéro : M{}", {s.label}));
    if (s.expansion == none)
      return told.error(s.where, tr("il manque « expansion {} » et ses étapes", {s.label}));
    s.entry = step_of_expansion(s, 'E');
    s.exit = step_of_expansion(s, 'S');
  }

  int step_of_expansion(const step& macro, char letter) {
    const chart& expansion = chart_at(macro.expansion);
    const std::string label = letter + macro.label.substr(1);
    const int found = find(expansion.root, label);
    if (found != none && step_at(found).chart == macro.expansion && !step_at(found).macro) return found;
    told.error(expansion.where, tr("il manque dans l'expansion l'étape {}", {label}));
    return none;
  }

  // An expansion inside itself.
  void refuse_circles_of_owners() {
    for (const chart& c : charts.charts) {
      int owner = c.owner;
      for (std::size_t n = 0; owner != none; ++n) {
        if (n > charts.charts.size()) {
          told.error(c.where, tr("{} se contient soi-même", {c.name}));
          break;
        }
        owner = chart_at(step_at(owner).chart).owner;
      }
    }
  }

  void link_transition(std::size_t k) {
    transition& made = charts.transitions[k];
    const auto find_all = [&](const std::vector<label>& labels, std::vector<int>& found) {
      for (const label& l : labels) {
        const int s = find(chart_at(made.chart).root, l.text);
        if (s == none)
          told.error(l.where, tr("aucune étape {} dans ce grafcet", {l.text}));
        else if (step_at(s).chart != made.chart)
          told.error(l.where,
                     tr("l'étape {} n'est pas de ce dessin : elle est à la ligne {}", {l.text, line_of(s)}));
        else
          found.push_back(s);
      }
    };
    find_all(done.transitions[k].from, made.from);
    find_all(done.transitions[k].to, made.to);
    if (done.transitions[k].from.empty() && done.transitions[k].to.empty())
      told.error(made.where, tr("une transition a au moins une étape"));
  }

  // "X3": a step of the same GRAFCET, or the only one of that label in the others.
  void link_reference(const step_reference& r) {
    node& made = charts.nodes[static_cast<std::size_t>(r.node)];
    const int grafcet = r.grafcet.empty() ? r.from : index_of(charts.charts, r.grafcet);
    int found = find(grafcet, r.step.text);
    if (found == none && r.grafcet.empty()) found = only_one(r.step);
    if (found != none) {
      made.value = found;
    } else if (r.grafcet.empty() && !(r.step.text[0] >= '0' && r.step.text[0] <= '9')) {
      made.what = operation::input;  // after all
      made.value = signal_index(charts.inputs, "X" + r.step.text, r.step.where);
    } else {
      told.error(r.step.where, tr("aucune étape {}", {r.step.text}));
    }
  }

  int only_one(const label& wanted) {
    int found = none;
    for (int c = 0; c < std::ssize(charts.charts); ++c) {
      const int here = find(c, wanted.text);
      if (here != none && found != none) {
        told.error(wanted.where,
                   tr("plusieurs grafcets ont une étape {} : écrivez {}.X{}",
                      {wanted.text, chart_at(chart_at(step_at(found).chart).root).name, wanted.text}));
        return found;
      }
      if (here != none) found = here;
    }
    return found;
  }

  void link_forcing(const forcing_labels& f) {
    action& made = step_at(f.step).actions[f.action];
    made.target = index_of(charts.charts, f.grafcet.text);
    if (made.target == none || chart_at(made.target).kind != chart_kind::grafcet) {
      told.error(f.grafcet.where, tr("aucun grafcet ne s'appelle « {} »", {f.grafcet.text}));
      made.target = none;
      return;
    }
    for (const label& l : f.steps) {
      const int s = find(made.target, l.text);
      if (s == none)
        told.error(l.where, tr("aucune étape {} dans le grafcet {}", {l.text, f.grafcet.text}));
      else
        made.situation.push_back(step_at(s).macro ? step_at(s).entry : s);
    }
  }

  void check_signals() {
    for (const signal& out : charts.outputs)
      if (const int read = index_of(charts.inputs, out.name); read != none && done.plant == nullptr)
        told.error(charts.inputs[static_cast<std::size_t>(read)].where,
                   tr("« {} » est une sortie (ligne {}) : une condition lit des entrées, des étapes et des "
                      "variables",
                      {out.name, std::to_string(out.where.line)}));
    if (done.plant == nullptr) return;
    for (const signal& in : charts.inputs) check_signal(in, true);
    for (const signal& out : charts.outputs) check_signal(out, false);
    for (const variable& v : charts.variables) refuse_signal_name(v.name, v.where);
    for (const definition& d : charts.definitions) refuse_signal_name(d.name, d.where);
  }

  static bool has(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  void check_signal(const signal& used, bool as_input) {
    const auto& own = as_input ? done.plant->inputs : done.plant->outputs;
    const auto& others = as_input ? done.plant->outputs : done.plant->inputs;
    if (has(own, used.name)) return;
    if (has(others, used.name)) {
      if (as_input)
        told.error(used.where,
                   tr("« {} » est une sortie : une condition lit des entrées, des étapes et des variables",
                      {used.name}));
      else
        told.error(used.where,
                   tr("« {} » est une entrée : une action commande une sortie ou une variable", {used.name}));
      return;
    }
    const int nearest = nearest_name(used.name, own);
    const std::string meant = nearest < 0 ? "" : own[static_cast<std::size_t>(nearest)];
    if (as_input)
      told.error(used.where, tr("aucune entrée ne s'appelle « {} » ; le nom le plus proche est « {} »",
                                {used.name, meant}));
    else
      told.error(used.where, tr("aucune sortie ne s'appelle « {} » ; le nom le plus proche est « {} »",
                                {used.name, meant}));
  }

  void refuse_signal_name(const std::string& name, position where) {
    if (has(done.plant->inputs, name) || has(done.plant->outputs, name))
      told.error(where, tr("« {} » est déjà un signal de la maquette", {name}));
  }

  reading& done;
  program& charts;
  remarks& told;
  std::map<std::pair<int, std::string>, int> steps;  // by GRAFCET and label
};

}  // namespace

void link(reading& done) { linker(done).link(); }

}  // namespace grafcet_file
