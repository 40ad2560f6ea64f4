#include "outils/grafcet/painting.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

using namespace grafcet_file;

namespace {

constexpr double base_line = 10.5;  // of a line of text, from its top
constexpr colour black{0, 0, 0}, grey{0.35, 0.35, 0.35}, white{1, 1, 1};

struct letters {
  cairo_font_slant_t slant;
  cairo_font_weight_t weight;
  double size;
};

letters letters_of(text_style style) {
  switch (style) {
    case text_style::title:
      return {CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD, 12};
    case text_style::comment:
      return {CAIRO_FONT_SLANT_ITALIC, CAIRO_FONT_WEIGHT_NORMAL, 10};
    case text_style::reference:
      return {CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL, 10};
    default:
      return {CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL, 11};
  }
}

template <typename T>
bool is_set(const std::vector<T>& list, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.size() &&
         list[static_cast<std::size_t>(index)] != 0;
}

void set_colour(cairo_t* to, const colour& c) { cairo_set_source_rgb(to, c.r, c.g, c.b); }

void outline(cairo_t* to, const zone& z, double inset = 0) {
  cairo_rectangle(to, z.x + inset, z.y + inset, z.w - 2 * inset, z.h - 2 * inset);
}

void stroke_between(cairo_t* to, spot a, spot b) {
  cairo_move_to(to, a.x, a.y);
  cairo_line_to(to, b.x, b.y);
  cairo_stroke(to);
}

// What is lit at the moment; nothing on paper.
class lights {
 public:
  lights(const program& some_charts, const situation& a_situation) : charts(some_charts), now(a_situation) {}

  bool step(int s) const { return is_set(now.active, s); }
  bool transition(int t) const { return is_set(now.receptive, t); }
  bool action(int s, int a) const {
    if (!step(s)) return false;
    const auto& what = charts.steps[static_cast<std::size_t>(s)].actions[static_cast<std::size_t>(a)];
    if (what.kind != action_kind::continuous) return true;
    return is_set(now.outputs, what.target) && (what.condition == none || is_set(now.values, what.condition));
  }
  bool text(const drawn_text& it) const {
    if (it.style == text_style::reference || it.style == text_style::comment) return false;
    if (it.action != none) return action(it.step, it.action);
    return it.step != none ? step(it.step) : transition(it.transition);
  }

 private:
  const program& charts;
  const situation& now;
};

// What cairo takes for text: UTF-8, of characters that are some.
bool is_text(std::string_view bytes) {
  constexpr char32_t least[] = {0, 0x80, 0x800, 0x10000};
  for (std::size_t k = 0, more = 0; k < bytes.size(); k += more + 1) {
    const auto lead = static_cast<unsigned char>(bytes[k]);
    more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    if ((lead >= 0x80 && lead < 0xC0) || lead >= 0xF8 || k + more >= bytes.size()) return false;
    char32_t character = more == 0 ? lead : lead & (0x3FU >> more);
    for (std::size_t next = k + 1; next <= k + more; ++next) {
      const auto byte = static_cast<unsigned char>(bytes[next]);
      if ((byte & 0xC0U) != 0x80) return false;
      character = character << 6U | (byte & 0x3FU);
    }
    const bool is_surrogate = character >= 0xD800 && character < 0xE000;
    const bool is_none = (character >= 0xFDD0 && character <= 0xFDEF) || (character & 0xFFFEU) == 0xFFFE;
    if (character < least[more] || character > 0x10FFFF || is_surrogate || is_none) return false;
  }
  return true;
}

// Anything else would end all painting: its foreign bytes are replaced.
std::string paintable(std::string text) {
  if (!is_text(text))
    for (char& c : text)
      if (static_cast<unsigned char>(c) >= 0x80) c = '?';
  return text;
}

class painter {
 public:
  painter(cairo_t* surface, const program& a_program, bool is_lit)
      : to(surface), charts(a_program), lit(is_lit) {
    cairo_set_line_cap(to, CAIRO_LINE_CAP_SQUARE);
  }

  void step(const drawn_step& it) const {
    const auto& what = charts.steps[static_cast<std::size_t>(it.step)];
    outline(to, it.where);
    set_colour(to, lit ? active_step : white);
    cairo_fill(to);
    set_colour(to, black);
    cairo_set_line_width(to, 1.2);
    outline(to, it.where);
    cairo_stroke(to);
    constexpr double inset = 3.5;
    if (what.initial) {
      outline(to, it.where, inset);
      cairo_stroke(to);
    }
    const auto& [x, y, w, h] = it.where;
    if (what.macro)
      for (const double line : {y + inset, y + h - inset}) stroke_between(to, {x, line}, {x + w, line});
    if (what.enclosing) {
      constexpr double corner = 8;
      stroke_between(to, {x, y + corner}, {x + corner, y});
      stroke_between(to, {x + w - corner, y}, {x + w, y + corner});
      stroke_between(to, {x, y + h - corner}, {x + corner, y + h});
      stroke_between(to, {x + w - corner, y + h}, {x + w, y + h - corner});
    }
  }

  void transition(const drawn_transition& it) const {
    set_colour(to, lit ? true_receptivity : black);
    outline(to, it.bar);
    cairo_fill(to);
  }

  void action(const drawn_action& it) const {
    outline(to, it.where);
    set_colour(to, lit ? done_action : white);
    cairo_fill_preserve(to);
    set_colour(to, black);
    cairo_set_line_width(to, 1);
    cairo_stroke(to);
    const auto& [x, y, w, h] = it.where;
    if (it.mark == action_mark::forcing) {
      outline(to, it.where, 2.5);
      cairo_stroke(to);
    }
    if (it.mark == action_mark::activation || it.mark == action_mark::deactivation) {
      const bool up = it.mark == action_mark::activation;
      const double middle = x + 9, reach = 7 * (up ? -1 : 1), centre = y + h / 2;
      stroke_between(to, {middle, centre - reach}, {middle, centre + reach});
      arrow_head({middle, centre + reach}, up ? -1 : 1);
    }
    if (it.mark == action_mark::event) {  // a flag
      const double foot = x + 7, top = y - line_height;
      cairo_move_to(to, foot, top);
      cairo_line_to(to, foot + 9, top + 4);
      cairo_line_to(to, foot, top + 8);
      cairo_stroke(to);
    }
  }

  void line(const drawn_line& it) const {
    set_colour(to, black);
    cairo_set_line_width(to, 1);
    for (const double lower : {0.0, double_gap}) {
      if (lower > 0 && !it.is_double) break;
      for (const spot& p : it.points) cairo_line_to(to, p.x, p.y + lower);
      cairo_stroke(to);
    }
    if (!it.arrow) return;
    const spot& tip = it.points.back();
    arrow_head(tip, tip.y < it.points[it.points.size() - 2].y ? -1 : 1);
  }

  void text(const drawn_text& it) const {
    const bool is_true = lit && it.transition != none;
    if (is_true) {  // or the rims of the black letters below would show
      outline(to, it.where);
      set_colour(to, white);
      cairo_fill(to);
    }
    set_colour(to, is_true ? true_receptivity : it.style == text_style::comment ? grey : black);
    choose_letters(to, it.style);
    cairo_move_to(to, it.where.x, it.where.y + base_line);
    cairo_show_text(to, paintable(it.words).c_str());
  }

 private:
  void arrow_head(spot tip, double down) const {
    cairo_move_to(to, tip.x, tip.y);
    cairo_line_to(to, tip.x - 3.5, tip.y - 7 * down);
    cairo_line_to(to, tip.x + 3.5, tip.y - 7 * down);
    cairo_close_path(to);
    cairo_fill(to);
  }

  cairo_t* to;
  const program& charts;
  bool lit;
};

}  // namespace

void choose_letters(cairo_t* surface, text_style style) {
  const letters chosen = letters_of(style);
  cairo_select_font_face(surface, "Liberation Sans", chosen.slant, chosen.weight);
  cairo_set_font_size(surface, chosen.size);
  // Letters that take the same room at every size.
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_set_font_options(surface, options);
  cairo_font_options_destroy(options);
}

measure_text painted_widths() {
  cairo_surface_t* const nothing = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
  const std::shared_ptr<cairo_t> pen(cairo_create(nothing), cairo_destroy);
  cairo_surface_destroy(nothing);
  return [pen](std::string_view text, text_style style) {
    choose_letters(pen.get(), style);
    cairo_text_extents_t extents;
    cairo_text_extents(pen.get(), paintable(std::string(text)).c_str(), &extents);
    return std::ceil(extents.x_advance);
  };
}

void paint(cairo_t* surface, const program& charts, const drawing& drawn) {
  const painter brush(surface, charts, false);
  cairo_set_line_width(surface, 1);
  set_colour(surface, black);
  for (const drawn_chart& it : drawn.charts)
    if (it.framed) {
      outline(surface, it.frame);
      cairo_stroke(surface);
    }
  for (const drawn_line& it : drawn.lines) brush.line(it);
  for (const drawn_step& it : drawn.steps) brush.step(it);
  for (const drawn_action& it : drawn.actions) brush.action(it);
  for (const drawn_transition& it : drawn.transitions) brush.transition(it);
  for (const drawn_text& it : drawn.texts) brush.text(it);
}

void paint_lit(cairo_t* surface, const program& charts, const drawing& drawn, const situation& now) {
  const painter brush(surface, charts, true);
  const lights lit(charts, now);
  for (const drawn_step& it : drawn.steps)
    if (lit.step(it.step)) brush.step(it);
  for (const drawn_action& it : drawn.actions)
    if (lit.action(it.step, it.action)) brush.action(it);
  for (const drawn_transition& it : drawn.transitions)
    if (lit.transition(it.transition)) brush.transition(it);
  for (const drawn_text& it : drawn.texts)
    if (lit.text(it)) brush.text(it);
}
