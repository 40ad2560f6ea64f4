#include "bibliocpp/grafcet_file/layout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "bibliocpp/grafcet_file/heads.h"
#include "bibliocpp/grafcet_file/outline.h"

namespace grafcet_file {

namespace {

constexpr double between_branches = 22, between_sequences = 40, lane = 14;
constexpr double above_branches = 10, below_line = 6, overhang = 8;
constexpr double entry_height = 18, reference_height = 28, arrow_height = 18;
// As far down as a transition takes that goes on in words, beside what stands there.
constexpr double shoulder_height = 70;
// A way back that is longer before it meets the others is told in words.
constexpr double longest_way_back = 360;

// A line that still goes down, to an element that is not placed yet, or is above.
struct way {
  int from = none;
  std::vector<spot> points;
  double x() const { return points.back().x; }
};

// An element with all that stands under it, about its axis x = 0. Nothing else comes between -left and right
// above the bottom; ways leave below, from left to right.
struct block {
  spot at;  // within the block that it stands in
  double left = 0, right = 0, bottom = 0;
  double entry = 0;            // where a line from above ends
  std::vector<spot> shoulder;  // what begins above shoulder_height: its top, and how far right it goes
  std::vector<way> ways;
  drawing shapes;
  bool in_words = false;  // its link
};

// What part of a block takes.
struct band {
  double from, to, bottom;
};

double lowest(const std::vector<band>& bands, double from, double to, double least) {
  for (const band& b : bands)
    if (b.from < to && b.to > from) least = std::max(least, b.bottom);
  return least;
}

class chart_layout {
 public:
  chart_layout(const program& a_program, const chart& drawn, const measure_text& measure)
      : charts(a_program),
        width_of(measure),
        tree(outline_of(a_program, drawn)),
        blocks(tree.elements.size()) {
    numbers.assign(charts.transitions.size(), "");
    int number = 0;
    for (const int t : drawn.transitions)
      numbers[static_cast<std::size_t>(t)] = "(" + std::to_string(++number) + ")";
    for (int e = static_cast<int>(blocks.size()) - 1; e >= 0; --e) compose(e);
    for (const way& left_over : block_at(0).ways) block_at(left_over.from).in_words = true;
  }

  // All shapes, about the axis of the first sequence.
  drawing shapes() {
    drawing all;
    std::vector<bool> named(charts.transitions.size(), false);  // by words somewhere
    for (std::size_t e = 0; e < blocks.size(); ++e)
      if (const int t = tree.elements[e].to_transition; blocks[e].in_words && t != none)
        named[static_cast<std::size_t>(t)] = true;
    std::vector<spot> origins(blocks.size());
    std::vector<int> to_do{0};
    while (!to_do.empty()) {
      const int e = to_do.back();
      to_do.pop_back();
      block& it = block_at(e);
      if (it.in_words) put_reference(e);
      if (const int t = element_at(e).transition; t != none && !named[static_cast<std::size_t>(t)])
        std::erase_if(it.shapes.texts, [t](const drawn_text& text) {
          return text.transition == t && text.style == text_style::reference;
        });
      put(all, it.shapes, origins[static_cast<std::size_t>(e)]);
      for (const std::vector<int>* children : {&element_at(e).branches, &element_at(e).joins})
        for (const int child : *children) {
          const spot at = block_at(child).at, from = origins[static_cast<std::size_t>(e)];
          origins[static_cast<std::size_t>(child)] = {from.x + at.x, from.y + at.y};
          to_do.push_back(child);
        }
    }
    return all;
  }
  double left() { return block_at(0).left; }
  double right() { return block_at(0).right; }
  double bottom() { return block_at(0).bottom; }

 private:
  const element& element_at(int e) const { return tree.elements[static_cast<std::size_t>(e)]; }
  block& block_at(int e) { return blocks[static_cast<std::size_t>(e)]; }

  std::string reference_of(const element& it) const {
    return it.to_step != none ? charts.steps[static_cast<std::size_t>(it.to_step)].label
                              : numbers[static_cast<std::size_t>(it.to_transition)];
  }

  // The block under construction: what has been placed in it, and the ways that are still open.
  struct place {
    block& made;
    std::vector<band> bands;
    std::vector<way> open;

    void take(double from, double to, double bottom) {
      bands.push_back({from, to, bottom});
      made.left = std::max(made.left, -from);
      made.right = std::max(made.right, to);
      made.bottom = std::max(made.bottom, bottom);
    }
    // Something on the right that begins at that height.
    void reach(double right, double top) {
      made.right = std::max(made.right, right);
      if (top < shoulder_height) made.shoulder.push_back({right, top});
    }
    void insert(block& child, spot at) {
      child.at = at;
      take(at.x - child.left, at.x + child.right, at.y + child.bottom);
      for (const spot& s : child.shoulder) reach(at.x + s.x, at.y + s.y);
      child.shoulder = {};
      for (way& it : child.ways) {
        for (spot& p : it.points) p = {p.x + at.x, p.y + at.y};
        open.push_back(std::move(it));
      }
      child.ways.clear();
      std::stable_sort(open.begin(), open.end(), [](const way& a, const way& b) { return a.x() < b.x(); });
    }
  };

  void compose(int e) {
    const element& it = element_at(e);
    block& made = block_at(e);
    place here{made, {}, {}};
    put_head(e, here);
    std::vector<int> branches = ordered_branches(e);
    put_branches(e, branches, here);
    put_turning_branches(e, branches, here);
    for (const int join : it.joins) put_join(join, here);
    put_ways_back(e, here);
    made.ways = std::move(here.open);
  }

  void put_head(int e, place& here) {
    const element& it = element_at(e);
    block& made = here.made;
    made.entry = it.looped ? entry_height : 0;
    head shown;
    if (it.step != none) shown = step_head(charts, it.step, width_of);
    if (it.transition != none) {
      const bool waits = charts.transitions[static_cast<std::size_t>(it.transition)].from.size() > 1;
      shown = transition_head(charts, it.transition,
                              waits ? numbers[static_cast<std::size_t>(it.transition)] : "", width_of);
    }
    put(made.shapes, shown.shapes, {0, made.entry});
    made.left = shown.left;
    here.reach(shown.right, 0);
    made.bottom = made.entry + shown.bottom;
    here.bands.push_back({-made.left, made.right, made.bottom});
    if (!it.has_link()) return;
    const double words = width_of(reference_of(it), text_style::reference);
    here.reach(std::max(below_line + 2 + words, overhang), 0);
    made.left = std::max(made.left, overhang);
    const way link{e, {{0, made.bottom}}};
    made.bottom += reference_height;
    if (it.leads_to == none)
      made.in_words = true;
    else
      here.open.push_back(link);
  }

  void put_reference(int e) {
    block& it = block_at(e);
    const double top = it.bottom - reference_height;
    put_line(it.shapes, {{0, top}, {0, top + arrow_height}}, false, true);
    drawn_text words{.where = {},
                     .words = reference_of(element_at(e)),
                     .style = text_style::reference,
                     .step = element_at(e).to_step,
                     .transition = element_at(e).to_transition};
    put_text(it.shapes, std::move(words), {below_line + 2, top + 6}, width_of);
  }

  bool only_goes_back(int branch, int to) {
    const std::vector<way>& ways = block_at(branch).ways;
    return !ways.empty() && std::all_of(ways.begin(), ways.end(),
                                        [&](const way& w) { return element_at(w.from).leads_to == to; });
  }

  // A line or a transition, and then words.
  bool only_refers(int branch) {
    return element_at(branch).has_link() && element_at(branch).leads_to == none;
  }

  // What meets first stands side by side, what goes on in words on the right of all that is drawn, and last
  // what goes back to the element.
  std::vector<int> ordered_branches(int e) {
    const std::vector<int>& joins = element_at(e).joins;
    std::vector<std::pair<std::size_t, int>> keyed;
    for (const int branch : element_at(e).branches) {
      std::size_t first = joins.size();
      for (const way& w : block_at(branch).ways) {
        const auto join = std::find(joins.begin(), joins.end(), element_at(w.from).leads_to);
        first = std::min(first, static_cast<std::size_t>(join - joins.begin()));
      }
      const std::size_t last = only_goes_back(branch, e) ? 2 : only_refers(branch) ? 1 : 0;
      keyed.emplace_back(last == 0 ? first : joins.size() + last, branch);
    }
    if (e != 0)
      std::stable_sort(keyed.begin(), keyed.end(),
                       [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<int> ordered;
    for (const auto& [key, branch] : keyed) ordered.push_back(branch);
    return ordered;
  }

  void put_branches(int e, const std::vector<int>& branches, place& here) {
    if (branches.empty()) return;
    block& made = here.made;
    const double from = made.bottom;
    const bool side_by_side = branches.size() > 1 && e != 0;
    const bool is_double = side_by_side && element_at(e).transition != none;
    const double line = from + above_branches;
    const double under_line = line + (is_double ? double_gap : 0);
    const double top = e == 0 ? 0 : side_by_side ? under_line + below_line : from + below_line;
    double x = 0, taken = 0, shoulder = 0, farthest = 0;
    for (const int branch : branches) {
      block& child = block_at(branch);
      if (branch != branches.front()) {
        const bool on_shoulder = only_refers(branch) && child.bottom <= shoulder_height && e != 0;
        x = (on_shoulder ? shoulder : taken) + (e == 0 ? between_sequences : between_branches) + child.left;
      }
      taken = std::max(taken, x + child.right);
      for (const spot& s : child.shoulder) shoulder = std::max(shoulder, x + s.x);
      farthest = std::max(farthest, x);
      here.insert(child, {x, top});
      if (e != 0) put_line(made.shapes, {{x, side_by_side ? under_line : from}, {x, top + child.entry}});
    }
    if (!side_by_side) return;
    put_line(made.shapes, {{0, from}, {0, line}});
    const double beyond = is_double ? overhang : 0;
    put_line(made.shapes, {{-beyond, line}, {farthest + beyond, line}}, is_double);
  }

  // Draws the ways down to a line across, which also reaches `to`; takes them from the open ones.
  void gather(place& here, std::size_t first, std::size_t last, double y, double to, bool is_double) {
    double from = to, until = to;
    for (std::size_t k = first; k < last; ++k) {
      way& it = here.open[k];
      from = std::min(from, it.x());
      until = std::max(until, it.x());
      it.points.push_back({it.x(), y});
      put_line(here.made.shapes, std::move(it.points));
    }
    const double beyond = is_double ? overhang : 0;
    if (is_double || until > from)
      put_line(here.made.shapes, {{from - beyond, y}, {until + beyond, y}}, is_double);
    here.open.erase(here.open.begin() + static_cast<std::ptrdiff_t>(first),
                    here.open.begin() + static_cast<std::ptrdiff_t>(last));
  }

  // From the end of a line across up to the top of the element, and to its axis.
  void go_up(place& here, double x, double y) {
    block& made = here.made;
    const double turn = made.entry / 2, half_way = (y + turn) / 2;
    put_line(made.shapes, {{x, y}, {x, half_way}}, false, true);
    put_line(made.shapes, {{x, half_way}, {x, turn}, {0, turn}, {0, made.entry}});
    made.left = std::max(made.left, overhang - x);
    here.reach(overhang + x, 0);
    made.bottom = std::max(made.bottom, y + overhang);
  }

  // Branches on the right that do nothing but lead back here: a line on their right takes them up.
  void put_turning_branches(int e, const std::vector<int>& branches, place& here) {
    if (e == 0 || !element_at(e).looped) return;
    // Their ways have been handed over: they are those that come down within a branch.
    std::size_t first = branches.size(), turning = 0;
    double left_edge = 0, lowest_end = 0;
    for (; first > 0; --first) {
      const block& branch = block_at(branches[first - 1]);
      const double from = branch.at.x - branch.left, to = branch.at.x + branch.right;
      std::size_t inside = 0, back = 0;
      for (const way& w : here.open)
        if (w.x() >= from && w.x() <= to) {
          ++inside;
          back += element_at(w.from).leads_to == e ? 1U : 0U;
        }
      if (inside == 0 || inside != back) break;
      turning += back;
      left_edge = from;
      lowest_end = std::max(lowest_end, branch.at.y + branch.bottom);
    }
    if (first == branches.size() || first == 0) return;
    const double x = here.made.right + lane, y = lowest_end + below_line;
    gather(here, here.open.size() - turning, here.open.size(), y, x, false);
    here.bands.push_back({left_edge, x + overhang, y + overhang});
    go_up(here, x, y);
  }

  void put_in_words(place& here, std::size_t k) {
    block_at(here.open[k].from).in_words = true;
    here.open.erase(here.open.begin() + static_cast<std::ptrdiff_t>(k));
  }

  void put_join(int join, place& here) {
    block& child = block_at(join);
    block& made = here.made;
    std::vector<way>& open = here.open;
    const auto leads_here = [&](const way& w) { return element_at(w.from).leads_to == join; };
    const auto found = std::find_if(open.begin(), open.end(), leads_here);
    if (found == open.end()) return put_unreached(child, here);

    // Nothing may come down between the ways that meet.
    auto first = static_cast<std::size_t>(found - open.begin());
    std::size_t last = open.size();
    while (!leads_here(open[last - 1])) --last;
    for (std::size_t k = last; k-- > first;)
      if (!leads_here(open[k])) {
        put_in_words(here, k);
        --last;
      }

    // The axis is under the first, unless what comes down on its left is in the way.
    double axis = open[first].x();
    if (first > 0) axis = std::max(axis, open[first - 1].x() + lane + child.left);
    // What comes down on the right makes room.
    const bool is_double = element_at(join).transition != none;
    double edge = std::max({axis + child.right, axis, open[last - 1].x()}) + lane;
    std::size_t moving = last;
    std::vector<double> goals;
    for (; moving < open.size() && open[moving].x() < edge; ++moving) {
      goals.push_back(edge);
      edge += lane;
    }
    const double from = std::min(axis - child.left, open[first].x()) - overhang;
    double y = lowest(here.bands, from, edge, 0) + below_line;
    for (std::size_t k = goals.size(); k-- > 0;) {
      way& it = open[last + k];
      const double x = it.x();
      it.points.push_back({x, y});
      it.points.push_back({goals[k], y});
      y += below_line;
      here.reach(goals[k] + overhang, it.points.front().y);
    }
    const bool straight = last - first == 1 && axis == open[first].x() && !is_double;
    if (!straight) y += below_line;
    gather(here, first, last, y, axis, is_double);
    const double under_line = y + (is_double ? double_gap : 0), top = straight ? y : under_line + below_line;
    here.insert(child, {axis, top});
    here.bands.push_back({from, edge - lane, top});
    here.reach(edge - lane + overhang, y);
    made.left = std::max(made.left, -from);
    put_line(made.shapes, {{axis, under_line}, {axis, top + child.entry}});
  }

  // All links to it have been put into words: it begins a sequence of its own, on the right.
  void put_unreached(block& child, place& here) {
    const double x = here.made.right + between_sequences + child.left;
    here.insert(child, {x, 0});
  }

  // Links that go up to the element itself: on its left or on its right, where no other way is crossed.
  void put_ways_back(int e, place& here) {
    if (e == 0 || !element_at(e).looped) return;
    std::vector<way>& open = here.open;
    const auto goes_back = [&](const way& w) { return element_at(w.from).leads_to == e; };
    double bottom = 0;
    for (const way& w : open)
      if (goes_back(w)) bottom = std::max(bottom, w.points.back().y);
    for (std::size_t k = open.size(); k-- > 0;)
      if (goes_back(open[k]) && open[k].points.back().y < bottom - longest_way_back) put_in_words(here, k);
    std::size_t on_left = 0, on_right = open.size();
    while (on_left < open.size() && goes_back(open[on_left])) ++on_left;
    while (on_left == 0 && on_right > 0 && goes_back(open[on_right - 1])) --on_right;
    for (std::size_t k = on_right; k-- > on_left;)
      if (goes_back(open[k])) {
        put_in_words(here, k);
        --on_right;
      }
    block& made = here.made;
    if (on_left > 0) {
      const double x = -made.left - lane;
      const double y = lowest(here.bands, x, open[on_left - 1].x() + overhang, made.entry) + below_line;
      gather(here, 0, on_left, y, x, false);
      go_up(here, x, y);
    } else if (on_right < open.size()) {
      const double x = made.right + lane;
      const double y = lowest(here.bands, open[on_right].x() - overhang, x, made.entry) + below_line;
      gather(here, on_right, open.size(), y, x, false);
      go_up(here, x, y);
    }
  }

  const program& charts;
  const measure_text& width_of;
  outline tree;
  std::vector<block> blocks;
  std::vector<std::string> numbers;
};

constexpr double margin = 16, title_gap = 12, frame_gap = 12, between_charts = 36;

// "mode", "wagon.M2", "wagon.X3": what it is, or stands for, or is held by.
std::string title_of(const program& charts, const chart& drawn) {
  if (drawn.kind == chart_kind::grafcet || drawn.root == none) return drawn.name;
  const std::string owner = drawn.kind == chart_kind::encapsulation ? "X" + drawn.name : drawn.name;
  return charts.charts[static_cast<std::size_t>(drawn.root)].name + "." + owner;
}

// With its title, from the upper left corner.
drawing chart_drawing(const program& charts, int index, const measure_text& width_of) {
  const chart& drawn = charts.charts[static_cast<std::size_t>(index)];
  chart_layout laid(charts, drawn, width_of);
  drawing made;
  drawn_chart whole{
      .chart = index, .where = {}, .framed = drawn.kind == chart_kind::encapsulation, .frame = {}};
  const double frame = whole.framed ? frame_gap : 0;
  double right = put_text(made, {.where = {}, .words = title_of(charts, drawn), .style = text_style::title},
                          {0, 0}, width_of);
  if (!drawn.comment.empty()) {
    const std::string comment = "\"" + drawn.comment + "\"";
    const double x = right == 0 ? 0 : right + 10;
    right =
        x + put_text(made, {.where = {}, .words = comment, .style = text_style::comment}, {x, 0}, width_of);
  }
  const double top = line_height + title_gap;
  put(made, laid.shapes(), {frame + laid.left(), top + frame});
  const double width = laid.left() + laid.right() + 2 * frame, height = laid.bottom() + 2 * frame;
  if (whole.framed) whole.frame = {0, top, width, height};
  whole.where = {0, 0, std::max(right, width), top + height};
  made.charts.push_back(whole);
  return made;
}

struct sheet {
  std::vector<spot> places;
  double width = 0, height = 0;
};

// In the order of the text, in columns of that height at most or rows of that width.
sheet packed(const std::vector<drawing>& parts, bool in_columns, double limit) {
  sheet made;
  double along = margin, across = margin, thickness = 0;
  for (const drawing& part : parts) {
    const zone& size = part.charts[0].where;
    const double length = in_columns ? size.h : size.w;
    if (along > margin && along + length > limit) {
      across += thickness + between_charts;
      along = margin;
      thickness = 0;
    }
    made.places.push_back(in_columns ? spot{across, along} : spot{along, across});
    made.width = std::max(made.width, made.places.back().x + size.w + margin);
    made.height = std::max(made.height, made.places.back().y + size.h + margin);
    thickness = std::max(thickness, in_columns ? size.w : size.h);
    along += length + between_charts;
  }
  return made;
}

}  // namespace

drawing lay_out(const program& charts, const measure_text& width_of, double aspect,
                const std::vector<int>& only) {
  std::vector<drawing> parts;
  for (int index = 0; index < static_cast<int>(charts.charts.size()); ++index)
    if (only.empty() || std::find(only.begin(), only.end(), index) != only.end())
      parts.push_back(chart_drawing(charts, index, width_of));

  // As much as the first charts take, one more each time: the sheet that can be shown the largest.
  sheet best;
  double best_size = std::numeric_limits<double>::infinity();
  for (const bool in_columns : {false, true}) {
    double limit = margin;
    for (const drawing& part : parts) {
      const zone& size = part.charts[0].where;
      limit += (in_columns ? size.h : size.w) + between_charts;
      sheet tried = packed(parts, in_columns, limit);
      const double needed = std::max(tried.width, tried.height * aspect);
      if (needed < best_size) {
        best_size = needed;
        best = std::move(tried);
      }
    }
  }
  drawing all;
  for (std::size_t k = 0; k < parts.size(); ++k) put(all, parts[k], best.places[k]);
  all.width = best.width;
  all.height = best.height;
  return all;
}

}  // namespace grafcet_file
