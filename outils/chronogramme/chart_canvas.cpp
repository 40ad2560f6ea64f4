#include "outils/chronogramme/chart_canvas.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "outils/chronogramme/state_line.h"

namespace {

constexpr double zoom_step = 1.25;
constexpr int still = 3;  // pixels that a hand may shake in a click

}  // namespace

chart_canvas::chart_canvas(int x, int y, int w, int h, const signal_record& a_record)
    : Fl_Group(x, y, w, h),
      view(view_of(a_record)),
      record(a_record),
      bar(x + w - bar_width, y, bar_width, h - state_height) {
  end();
  resizable(nullptr);  // the bar is put where it belongs when drawn
  bar.linesize(20);
  bar.callback([](Fl_Widget*, void* canvas) { static_cast<chart_canvas*>(canvas)->redraw(); }, this);
}

chart_layout chart_canvas::layout() const {
  return layout_of(record, view, x(), y(), w() - bar_width, h() - state_height, bar.value());
}

void chart_canvas::draw() {
  look_for_numbers(view, record);
  const chart_layout at = layout();
  bar.resize(x() + w() - bar_width, y(), bar_width, at.h);
  bar.value(at.scrolled, at.room(), 0, std::max(at.rows_height(), at.room()));
  drawn_column = right_edge_us(view, record) * at.columns.count / view.span_us;
  draw_chart(record, view, at);
  draw_state(state, cursor_line(view), x(), y() + at.h, w(), state_height);
  draw_child(bar);
}

// A chart that has moved by less than a pixel looks the same.
void chart_canvas::record_grew(bool changed) {
  const std::int64_t column = right_edge_us(view, record) * layout().columns.count / view.span_us;
  if (changed || column != drawn_column) redraw();
}

chart_canvas::pixels chart_canvas::picture() {
  window()->make_current();
  const Fl_Offscreen surface = fl_create_offscreen(x() + w(), y() + h());
  fl_begin_offscreen(surface);
  draw();
  pixels result{
      w(), h(),
      std::vector<unsigned char>(static_cast<std::size_t>(w()) * static_cast<std::size_t>(h()) * 3)};
  fl_read_image(result.rgb.data(), x(), y(), w(), h());
  fl_end_offscreen();
  fl_delete_offscreen(surface);
  return result;
}

void chart_canvas::operated() {
  redraw();
  if (when_operated) when_operated();
}

int chart_canvas::handle(int event) {
  const bool on_chart = Fl::event_inside(x(), y(), w() - bar_width, h() - state_height) != 0;
  switch (event) {
    case FL_MOUSEWHEEL:
      return turn_wheel() ? 1 : 0;
    case FL_PUSH: {
      if (!on_chart) break;
      const chart_layout at = layout();
      const bool on_names = Fl::event_x() < at.lines_x();
      held = {Fl::event_x(), Fl::event_x(), false, on_names ? at.signal_at(Fl::event_y()) : std::nullopt};
      if (on_names && !held->name) held.reset();
      Fl::focus(this);
      return 1;
    }
    case FL_DRAG:
      if (!held) break;
      drag();
      return 1;
    case FL_RELEASE:
      if (!held) break;
      let_go();
      return 1;
    case FL_FOCUS:
      return 1;
    default:
      break;
  }
  return Fl_Group::handle(event);
}

bool chart_canvas::turn_wheel() {
  const chart_layout at = layout();
  if (Fl::event_inside(at.lines_x(), at.y, at.w - at.names_width, at.h) != 0) {
    const std::int64_t about = std::min(at.time_at(Fl::event_x()), record.end_us());
    zoom(view, record, std::pow(zoom_step, Fl::event_dy()), about);
  } else if (Fl::event_inside(this) != 0) {
    const int most = std::max(at.rows_height() - at.room(), 0);
    bar.value(std::clamp(at.scrolled + Fl::event_dy() * 2 * at.row_height, 0, most));
  } else {
    return false;
  }
  operated();
  return true;
}

void chart_canvas::drag() {
  const chart_layout at = layout();
  held->moved = held->moved || std::abs(Fl::event_x() - held->x) > still;
  if (held->name) {
    if (const auto place = at.signal_at(Fl::event_y())) move_line(view, record, *held->name, *place);
  } else if (held->moved) {
    const std::int64_t back = held->last_x - Fl::event_x();
    pan(view, record, back * view.span_us / at.columns.count);
    held->last_x = Fl::event_x();
  }
  operated();
}

// The toolkit drops motion that the button's release overtakes: the way to here is dragged now.
void chart_canvas::let_go() {
  drag();
  const bool click = !held->moved && !held->name;
  held.reset();
  if (!click) return;
  const bool second = Fl::event_button() == FL_RIGHT_MOUSE || Fl::event_state(FL_SHIFT) != 0;
  view.cursors[second ? 1 : 0] =
      std::clamp<std::int64_t>(layout().time_at(Fl::event_x()), 0, record.end_us());
  operated();
}
