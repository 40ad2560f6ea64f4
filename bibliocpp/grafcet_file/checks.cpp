// What is wrong with charts that could be read.

#include <map>

#include "bibliocpp/grafcet_file/reading.h"

namespace grafcet_file {

namespace {

class checker {
 public:
  checker(const program& everything, remarks& to_tell)
      : charts(everything), told(to_tell), with_edge(edges()), reached(charts.steps.size()) {}

  void check() {
    for (int s = 0; s < std::ssize(charts.steps); ++s)
      for (const action& a : step_at(s).actions) check_action(a, chart_at(step_at(s).chart).root);
    refuse_circles_of_forcing();
    for (int s = 0; s < std::ssize(charts.steps); ++s) check_start(s);
    spread();
    for (int c = 0; c < std::ssize(charts.charts); ++c) tell_unreachable(c);
  }

 private:
  const step& step_at(int s) const { return charts.steps[static_cast<std::size_t>(s)]; }
  const chart& chart_at(int c) const { return charts.charts[static_cast<std::size_t>(c)]; }

  // Nodes in which something rises or falls.
  std::vector<bool> edges() const {
    std::vector<bool> found(charts.nodes.size());
    for (std::size_t k = 0; k < charts.nodes.size(); ++k) {
      const node& n = charts.nodes[k];
      bool here = n.what == operation::rising || n.what == operation::falling;
      for (const int part : {n.left, n.right})
        if (part != none && found[static_cast<std::size_t>(part)] && n.what != operation::delay) here = true;
      found[k] = here;
    }
    return found;
  }
  bool has_edge(int n) const { return with_edge[static_cast<std::size_t>(n)]; }

  // --- Actions ---

  void check_action(const action& a, int grafcet) {
    if (a.kind == action_kind::continuous && a.condition != none && has_edge(a.condition))
      told.error(a.where, tr("la condition d'une action continue dure : ni fm ni fd"));
    if (a.kind == action_kind::stored && a.when == moment::event && !has_edge(a.event))
      told.error(a.where, tr("un évènement contient un front : sur fm a, sur fd a"));
    if (a.kind == action_kind::forcing)
      forces.push_back({grafcet, a.target, a.where});
    else if (a.on_signal)
      check_output(a, grafcet);
  }

  // An output belongs to one GRAFCET, and is either held while a step is active or stored.
  void check_output(const action& a, int grafcet) {
    const auto [driven, is_new] = drivers.try_emplace(a.target, driver{grafcet, a.kind, a.where});
    if (is_new) return;
    const std::string name = charts.outputs[static_cast<std::size_t>(a.target)].name;
    const std::string line = std::to_string(driven->second.where.line);
    if (driven->second.grafcet != grafcet)
      told.error(a.where, tr("« {} » est déjà commandé par le grafcet {} (ligne {})",
                             {name, chart_at(driven->second.grafcet).name, line}));
    else if (driven->second.kind != a.kind)
      told.error(
          a.where,
          tr("« {} » est déjà une action d'une autre sorte (ligne {}) : continue ou mémorisée, pas les deux",
             {name, line}));
  }

  // A forced GRAFCET stands below those that force it.
  void refuse_circles_of_forcing() {
    for (const order& first : forces) {
      std::vector<bool> below(charts.charts.size());
      below[static_cast<std::size_t>(first.to)] = true;
      for (bool more = true; more;) {
        more = false;
        for (const order& o : forces)
          if (below[static_cast<std::size_t>(o.from)] && !below[static_cast<std::size_t>(o.to)])
            below[static_cast<std::size_t>(o.to)] = more = true;
      }
      if (below[static_cast<std::size_t>(first.from)])
        told.error(first.where, tr("le grafcet {} se force lui-même, directement ou par un autre",
                                   {chart_at(first.from).name}));
    }
  }

  // --- Steps that can become active ---

  // The initial situation is one that could have come about: no step is active in an encapsulation whose own
  // step is not.
  void check_start(int s) {
    const chart& here = chart_at(step_at(s).chart);
    if (step_at(s).initial && here.kind == chart_kind::encapsulation && !step_at(here.owner).initial)
      told.error(step_at(s).where, tr("l'étape encapsulante {} n'est pas initiale : {} ne peut pas l'être",
                                      {here.name, step_at(s).label}));
  }

  bool is_reached(int s) const { return reached[static_cast<std::size_t>(s)]; }
  void reach(int s) {
    if (is_reached(s)) return;
    reached[static_cast<std::size_t>(s)] = true;
    spreading = true;
    if (step_at(s).macro) reach(step_at(s).entry);
    for (const int c : step_at(s).encapsulations)
      for (const int inside : chart_at(c).steps)
        if (step_at(inside).linked) reach(inside);
  }

  // From the initial steps on, as far as it goes.
  void spread() {
    for (int s = 0; s < std::ssize(charts.steps); ++s) {
      if (step_at(s).initial) reach(s);
      for (const action& a : step_at(s).actions)
        for (const int forced : a.situation) reach(forced);
    }
    do {
      spreading = false;
      for (const transition& t : charts.transitions) {
        bool enabled = true;
        for (const int s : t.from) enabled = enabled && is_reached(step_at(s).macro ? step_at(s).exit : s);
        if (enabled)
          for (const int s : t.to) reach(s);
      }
    } while (spreading);
  }

  void tell_unreachable(int c) {
    const chart& here = chart_at(c);
    if (here.steps.empty()) return told.error(here.where, tr("aucune étape dans {}", {here.name}));
    bool any = false;
    for (const int s : here.steps) any = any || is_reached(s);
    if (!any && here.kind == chart_kind::grafcet)
      return told.error(here.where,
                        tr("aucune étape initiale : le grafcet {} ne démarre jamais", {here.name}));
    if (!any && here.kind == chart_kind::encapsulation && is_reached(here.owner))
      return told.error(here.where,
                        tr("aucune étape activée avec l'étape {} : « étape * ... »", {here.name}));
    for (const int s : here.steps)
      if (!is_reached(s) && (here.owner == none || is_reached(here.owner)))
        told.error(step_at(s).where, tr("l'étape {} n'est jamais atteinte", {step_at(s).label}));
  }

  struct driver {
    int grafcet;
    action_kind kind;
    position where;
  };
  struct order {
    int from, to;
    position where;
  };

  const program& charts;
  remarks& told;
  std::vector<bool> with_edge, reached;
  std::map<int, driver> drivers;
  std::vector<order> forces;
  bool spreading = false;
};

}  // namespace

void check(const program& charts, remarks& told) { checker(charts, told).check(); }

}  // namespace grafcet_file
