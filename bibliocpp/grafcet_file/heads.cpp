#include "bibliocpp/grafcet_file/heads.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace grafcet_file {

namespace {

constexpr double step_size = 34, padding = 8, text_width = 230;
constexpr double bar_half = 12, bar_thickness = 3, beside_bar = 18, least_transition = 26;
constexpr double to_actions = 22, bus = 11, between_actions = 5, mark_width = 14, stalk = 7;

template <typename T>
const T& at(const std::vector<T>& list, int index) {
  return list[static_cast<std::size_t>(index)];
}

// What a box says, and what is written above it: the condition or the event.
struct action_words {
  std::string inside, above;
};

// "A si c" is A, with c above; "C := 0 sur fm a" is C := 0, with fm a above.
action_words words_of(const action& it) {
  const std::string& text = it.text;
  if (it.kind == action_kind::stored) {
    for (const std::string_view word : {" sur ", " on "})
      if (const std::size_t found = text.rfind(word); found != std::string::npos)
        return {text.substr(0, found), it.when == moment::event ? text.substr(found + word.size()) : ""};
  } else if (it.kind == action_kind::continuous && it.condition != none) {
    const std::size_t name_end = text.starts_with("'") ? text.find('\'', 1) : 0;
    const std::size_t found = name_end == std::string::npos ? name_end : text.find(' ', name_end);
    if (found != std::string::npos) {
      std::string above = text.substr(found + 1);
      for (const std::string_view word : {"si ", "if "})
        if (above.starts_with(word)) above.erase(0, word.size());
      return {text.substr(0, found), std::move(above)};
    }
  }
  return {text, ""};
}

action_mark mark_of(const action& it, const action_words& words) {
  if (it.kind == action_kind::forcing) return action_mark::forcing;
  if (it.kind == action_kind::continuous)
    return words.above.empty() ? action_mark::plain : action_mark::condition;
  if (it.when == moment::event) return action_mark::event;
  return it.when == moment::activation ? action_mark::activation : action_mark::deactivation;
}

bool has_arrow(action_mark mark) {
  return mark == action_mark::activation || mark == action_mark::deactivation;
}

double lines_height(const std::vector<std::string>& lines) {
  return line_height * static_cast<double>(lines.size());
}

// The widest line's width.
double put_lines(drawing& into, const std::vector<std::string>& lines, drawn_text pattern, spot from,
                 const measure_text& width_of) {
  double widest = 0;
  for (const std::string& line : lines) {
    pattern.words = line;
    widest = std::max(widest, put_text(into, pattern, from, width_of));
    from.y += line_height;
  }
  return widest;
}

struct laid_action {
  action_mark mark;
  std::vector<std::string> inside, above;
  double width, box_height;
  double above_height() const { return above.empty() ? 0 : lines_height(above) + 2; }
};

laid_action laid(const action& it, const measure_text& width_of) {
  const action_words words = words_of(it);
  laid_action made{mark_of(it, words), wrapped(words.inside, text_style::body, text_width, width_of),
                   words.above.empty() ? std::vector<std::string>{}
                                       : wrapped(words.above, text_style::body, text_width, width_of),
                   0, 0};
  for (const std::string& line : made.inside)
    made.width = std::max(made.width, width_of(line, text_style::body));
  made.width += 2 * padding + (has_arrow(made.mark) ? mark_width : 0);
  made.box_height = lines_height(made.inside) + padding;
  return made;
}

std::string quoted(const std::string& comment) { return "\"" + comment + "\""; }

}  // namespace

void put(drawing& into, const drawing& shapes, spot by) {
  const auto moved = [by](zone z) { return zone{z.x + by.x, z.y + by.y, z.w, z.h}; };
  for (drawn_step it : shapes.steps) it.where = moved(it.where), into.steps.push_back(it);
  for (drawn_transition it : shapes.transitions) it.bar = moved(it.bar), into.transitions.push_back(it);
  for (drawn_action it : shapes.actions) it.where = moved(it.where), into.actions.push_back(it);
  for (drawn_text it : shapes.texts) it.where = moved(it.where), into.texts.push_back(std::move(it));
  for (drawn_line it : shapes.lines) {
    for (spot& p : it.points) p = {p.x + by.x, p.y + by.y};
    into.lines.push_back(std::move(it));
  }
  for (drawn_chart it : shapes.charts) {
    it.where = moved(it.where);
    it.frame = moved(it.frame);
    into.charts.push_back(it);
  }
}

void put_line(drawing& into, std::vector<spot> points, bool is_double, bool arrow) {
  into.lines.push_back({std::move(points), is_double, arrow});
}

double put_text(drawing& into, drawn_text text, spot from, const measure_text& width_of) {
  const double width = width_of(text.words, text.style);
  text.where = {from.x, from.y, width, line_height};
  into.texts.push_back(std::move(text));
  return width;
}

std::vector<std::string> wrapped(std::string_view text, text_style style, double width,
                                 const measure_text& width_of) {
  std::vector<std::string> lines{""};
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string word(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    std::string& line = lines.back();
    if (line.empty())
      line = word;
    else if (const std::string longer = std::string(line).append(" ").append(word);
             width_of(longer, style) <= width)
      line = longer;
    else
      lines.push_back(word);
  }
  return lines;
}

head step_head(const program& charts, int step, const measure_text& width_of) {
  const auto& it = at(charts.steps, step);
  const double label_width = width_of(it.label, text_style::label);
  const double half = std::max(step_size, label_width + 2 * padding + 4) / 2;
  std::vector<laid_action> actions;
  double actions_width = 0;
  for (const action& a : it.actions) {
    actions.push_back(laid(a, width_of));
    actions_width = std::max(actions_width, actions.back().width);
  }
  const std::vector<std::string> comment =
      it.comment.empty() ? std::vector<std::string>{}
                         : wrapped(quoted(it.comment), text_style::comment, text_width, width_of);

  // The first action and the comment are level with the middle of the step.
  double middle = std::max(step_size / 2, lines_height(comment) / 2);
  if (!actions.empty()) middle = std::max(middle, actions[0].above_height() + actions[0].box_height / 2);

  head made;
  made.left = half;
  made.right = half;
  made.bottom = std::max(middle + step_size / 2, middle + lines_height(comment) / 2);
  drawing& shapes = made.shapes;
  shapes.steps.push_back({step, {-half, middle - step_size / 2, 2 * half, step_size}});
  put_text(shapes, {.where = {}, .words = it.label, .style = text_style::label, .step = step},
           {-label_width / 2, middle - line_height / 2}, width_of);
  if (middle > step_size / 2) put_line(shapes, {{0, 0}, {0, middle - step_size / 2}});
  if (it.linked) {
    const double width = width_of("*", text_style::label);
    put_text(shapes, {.where = {}, .words = "*", .style = text_style::label, .step = step},
             {-half - width - 4, middle - line_height / 2}, width_of);
    made.left += width + 4;
  }

  double y = middle;
  for (std::size_t k = 0; k < actions.size(); ++k) {
    const laid_action& a = actions[k];
    const double x = half + to_actions;
    y += k == 0 ? -a.box_height / 2 : between_actions + a.above_height();
    const double box_middle = y + a.box_height / 2;
    if (k == 0)
      put_line(shapes, {{half, middle}, {x, middle}});
    else
      put_line(shapes, {{half + bus, middle}, {half + bus, box_middle}, {x, box_middle}});
    shapes.actions.push_back({step, static_cast<int>(k), {x, y, actions_width, a.box_height}, a.mark});
    drawn_text pattern{.where = {}, .words = "", .step = step, .action = static_cast<int>(k)};
    put_lines(shapes, a.inside, pattern,
              {x + padding + (has_arrow(a.mark) ? mark_width : 0), y + padding / 2}, width_of);
    if (!a.above.empty()) {
      pattern.above = true;
      const double top = y - a.above_height();
      const double flag = a.mark == action_mark::event ? mark_width : 0;
      put_line(shapes, {{x + stalk, y}, {x + stalk, top + 2}});
      const double width = put_lines(shapes, a.above, pattern, {x + stalk + 4 + flag, top}, width_of);
      made.right = std::max(made.right, x + stalk + 4 + flag + width);
    }
    made.right = std::max(made.right, x + actions_width);
    y += a.box_height;
  }
  made.bottom = std::max(made.bottom, y);
  if (made.bottom > middle + step_size / 2 && !actions.empty() + !comment.empty() > 0)
    put_line(shapes, {{0, middle + step_size / 2}, {0, made.bottom}});
  if (!comment.empty()) {
    const double x = made.right + 10;
    made.right =
        x + put_lines(shapes, comment, {.where = {}, .words = "", .style = text_style::comment, .step = step},
                      {x, middle - lines_height(comment) / 2}, width_of);
  }
  return made;
}

head transition_head(const program& charts, int transition, const std::string& number,
                     const measure_text& width_of) {
  const auto& it = at(charts.transitions, transition);
  const auto lines_of = [&](const std::string& text, text_style style) {
    return text.empty() ? std::vector<std::string>{} : wrapped(text, style, text_width, width_of);
  };
  const std::vector<std::string> receptivity = lines_of(it.text, text_style::body);
  const std::vector<std::string> comment =
      lines_of(it.comment.empty() ? "" : quoted(it.comment), text_style::comment);
  const double texts = lines_height(receptivity) + lines_height(comment);

  head made;
  made.left = made.right = bar_half;
  made.bottom = std::max(least_transition, texts + 4);
  const double middle = made.bottom / 2;
  drawing& shapes = made.shapes;
  const zone bar{-bar_half, middle - bar_thickness / 2, 2 * bar_half, bar_thickness};
  shapes.transitions.push_back({transition, bar});
  if (!it.from.empty()) put_line(shapes, {{0, 0}, {0, bar.y}});
  if (!it.to.empty()) put_line(shapes, {{0, bar.y + bar.h}, {0, made.bottom}});
  const double top = middle - texts / 2;
  const drawn_text pattern{.where = {}, .words = "", .transition = transition};
  const double width = put_lines(shapes, receptivity, pattern, {beside_bar, top}, width_of);
  drawn_text beside = pattern;
  beside.style = text_style::comment;
  const double comment_width =
      put_lines(shapes, comment, beside, {beside_bar, top + lines_height(receptivity)}, width_of);
  if (texts > 0) made.right = beside_bar + std::max(width, comment_width);
  if (!number.empty()) {
    beside.style = text_style::reference;
    beside.words = number;
    const double number_width = width_of(number, text_style::reference);
    put_text(shapes, beside, {-bar_half - 5 - number_width, middle - line_height / 2}, width_of);
    made.left += 5 + number_width;
  }
  return made;
}

}  // namespace grafcet_file
