// Charts laid out: whatever the program, a reader who follows the lines finds exactly its links.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>

#include "bibliocpp/grafcet_file/layout.h"

using namespace grafcet_file;

namespace {

double width_of(std::string_view text, text_style) { return 6.3 * static_cast<double>(text.size()); }

// Programs of every kind, by a number: some made of sequences within sequences, as a person writes them,
// others with any links at all.
class some_program {
 public:
  explicit some_program(unsigned number) : random(number) {
    for (int k = one_of(3); k >= 0; --k) {
      charts.charts.emplace_back().name = words(2);
      const int first = step(), last = step();
      charts.steps[static_cast<std::size_t>(first)].initial = true;
      between(first, last, number % 2 == 0 ? 4 : 1);
      link({last}, {first});
      for (int any = number % 2 == 0 ? one_of(3) : one_of(20); any > 0; --any)
        link(some_steps(), some_steps());
    }
  }
  program charts;

 private:
  int one_of(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
  std::string words(int most) {
    std::string text;
    for (int k = one_of(most + 1); k > 0; --k)
      text += (text.empty() ? "" : " ") + std::string(1 + random() % 20, 'm');
    return text;
  }
  int step() {
    const int made = static_cast<int>(charts.steps.size());
    charts.charts.back().steps.push_back(made);
    auto& it = charts.steps.emplace_back();
    it.label = std::to_string(made) + words(1);
    it.comment = words(one_of(20));
    for (int k = one_of(4) - 1; k > 0; --k) {
      it.actions.emplace_back().text = "A si " + words(9);
      it.actions.back().condition = one_of(2) - 1;
    }
    return made;
  }
  void link(std::vector<int> from, std::vector<int> to) {
    charts.charts.back().transitions.push_back(static_cast<int>(charts.transitions.size()));
    transition& it = charts.transitions.emplace_back();
    it.from = std::move(from);
    it.to = std::move(to);
    it.text = words(12);
    it.comment = words(3);
  }
  std::vector<int> some_steps() {
    std::set<int> chosen;
    const std::vector<int>& steps = charts.charts.back().steps;
    for (int k = one_of(10) / 3; k > 0; --k) chosen.insert(steps[random() % steps.size()]);
    return {chosen.begin(), chosen.end()};
  }
  void between(int first, int last, int depth) {
    const int kind = depth == 0 ? 0 : one_of(5);
    if (kind == 0) return link({first}, {last});
    if (kind == 1) {
      const int middle = step();
      between(first, middle, depth - 1);
      if (one_of(3) == 0) link({middle}, {first});
      return between(middle, last, depth - 1);
    }
    if (kind == 2) {
      for (int k = 2 + one_of(2); k > 0; --k) between(first, last, depth - 1);
      return;
    }
    std::vector<int> begins, ends;
    for (int k = 2 + one_of(2); k > 0; --k) {
      begins.push_back(step());
      ends.push_back(step());
      between(begins.back(), ends.back(), depth - 1);
    }
    link({first}, begins);
    link(ends, {last});
  }
  std::mt19937 random;
};

using place = std::pair<long, long>;  // hundredths
place of(spot p) { return {std::lround(p.x * 100), std::lround(p.y * 100)}; }

// Up to what numbers are rounded by. Lines are as thin as can be: they meet nothing where they end.
constexpr double rounding = 0.005;
bool meet(const zone& a, const zone& b) {
  return a.x + rounding < b.x + b.w && b.x + rounding < a.x + a.w && a.y + rounding < b.y + b.h &&
         b.y + rounding < a.y + a.h;
}
bool holds(const zone& z, spot p) {
  return p.x > z.x - rounding && p.x < z.x + z.w + rounding && p.y > z.y - rounding &&
         p.y < z.y + z.h + rounding;
}

struct piece {
  spot from, to;
  zone where() const {
    return {std::min(from.x, to.x), std::min(from.y, to.y), std::abs(from.x - to.x), std::abs(from.y - to.y)};
  }
};

std::vector<piece> pieces_of(const drawing& drawn) {
  std::vector<piece> all;
  for (const drawn_line& line : drawn.lines)
    for (std::size_t k = 1; k < line.points.size(); ++k) {
      const spot a = line.points[k - 1], b = line.points[k];
      all.push_back({a, b});
      if (!line.is_double) continue;
      const spot under{a.x, a.y + double_gap};
      all.insert(all.end(), {{under, {b.x, b.y + double_gap}}, {a, under}});  // from the upper to the lower
    }
  return all;
}

// What is reached along the lines from everywhere: down, or as drawn up, and to both sides.
std::map<place, std::set<place>> ways_of(const std::vector<piece>& pieces) {
  std::map<place, std::set<place>> next;
  for (const piece& p : pieces) {
    std::set<place> on;
    for (const piece& q : pieces)
      for (const spot& end : {q.from, q.to})
        if (holds(p.where(), end)) on.insert(of(end));
    for (auto it = on.begin(); std::next(it) != on.end(); ++it) {
      const bool across = of(p.from).second == of(p.to).second, forward = p.from.y < p.to.y;
      if (across || forward) next[*it].insert(*std::next(it));
      if (across || !forward) next[*std::next(it)].insert(*it);
    }
  }
  return next;
}

// Who reads the lines: steps are told by their index, transitions by -1 minus theirs.
std::map<int, std::set<int>> links_read(const drawing& drawn) {
  std::map<place, int> ends;
  std::map<int, place> starts;
  const auto element = [&](int what, const zone& where) {
    ends[of({where.x + where.w / 2, where.y})] = what;
    starts[what] = of({where.x + where.w / 2, where.y + where.h});
  };
  for (const auto& it : drawn.steps) element(it.step, it.where);
  for (const auto& it : drawn.transitions) element(-1 - it.transition, it.bar);
  for (const auto& it : drawn.lines)
    for (const auto& text : drawn.texts)
      if (const spot tip = it.points.back();
          it.arrow && text.style == text_style::reference && holds(text.where, {tip.x + 9, tip.y}))
        ends[of(tip)] = text.step != none ? text.step : -1 - text.transition;
  const auto ways = ways_of(pieces_of(drawn));
  std::map<int, std::set<int>> read;
  for (const auto& [what, start] : starts) {
    std::set<place> seen{start}, fresh{start};
    while (!fresh.empty()) {
      const place here = fresh.extract(fresh.begin()).value();
      if (const auto end = ends.find(here); end != ends.end()) read[what].insert(end->second);
      if (const auto next = ways.find(here); next != ways.end())
        for (const place& p : next->second)
          if (seen.insert(p).second) fresh.insert(p);
    }
  }
  return read;
}

}  // namespace

TEST(Layout, nothing_overlaps_and_the_lines_tell_exactly_the_links) {
  for (unsigned number = 0; number < 60; ++number) {
    SCOPED_TRACE(number);
    const program charts = some_program(number).charts;
    const drawing drawn = lay_out(charts, width_of);

    std::vector<zone> all;
    for (const auto& it : drawn.steps) all.push_back(it.where);
    for (const auto& it : drawn.transitions) all.push_back(it.bar);
    for (const auto& it : drawn.actions) all.push_back(it.where);
    for (const auto& it : drawn.texts)
      if (std::none_of(all.begin(), all.end(), [&](const zone& z) {
            return holds(z, {it.where.x, it.where.y}) &&
                   holds(z, {it.where.x + it.where.w, it.where.y + it.where.h});
          }))
        all.push_back(it.where);
    for (const piece& it : pieces_of(drawn)) all.push_back(it.where());
    for (auto a = all.begin(); a != all.end(); ++a) {
      ASSERT_TRUE(a->x >= 0 && a->y >= 0 && a->x + a->w <= drawn.width && a->y + a->h <= drawn.height);
      for (auto b = all.begin(); b != a; ++b) ASSERT_FALSE(meet(*a, *b)) << a->x << " " << a->y;
    }

    std::map<int, std::set<int>> links;
    for (int t = 0; t < static_cast<int>(charts.transitions.size()); ++t) {
      for (const int s : charts.transitions[static_cast<std::size_t>(t)].from) links[s].insert(-1 - t);
      for (const int s : charts.transitions[static_cast<std::size_t>(t)].to) links[-1 - t].insert(s);
    }
    ASSERT_EQ(links_read(drawn), links);
  }
}
