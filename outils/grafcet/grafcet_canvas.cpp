#include "outils/grafcet/grafcet_canvas.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <FL/x.H>
#include <cairo-xlib.h>

#include <algorithm>
#include <cmath>

#include "outils/grafcet/painting.h"

namespace {

constexpr double zoom_step = 1.15, least_scale = 0.1, most_scale = 4;

}  // namespace

grafcet_canvas::grafcet_canvas(int x, int y, int w, int h, const grafcet_file::program& some_charts,
                               const grafcet_file::situation& a_situation)
    : Fl_Widget(x, y, w, h), charts(some_charts), now(a_situation) {
  show_all();
}

void grafcet_canvas::show_all() {
  drawn = lay_out(charts, painted_widths(), static_cast<double>(w()) / h());
  scale = std::clamp(std::min(w() / drawn.width, h() / drawn.height), least_scale, 1.0);
  left = std::max((w() - scale * drawn.width) / 2, 0.0);
  top = 0;
  whole = true;
  drop_unlit();
}

void grafcet_canvas::zoom(double factor, int about_x, int about_y) {
  const double before = scale;
  scale = std::clamp(scale * factor, least_scale, most_scale);
  left = about_x - (about_x - left) * scale / before;
  top = about_y - (about_y - top) * scale / before;
  move(0, 0);
}

// A part of the drawing stays in view.
void grafcet_canvas::move(double by_x, double by_y) {
  constexpr double kept = 40;
  left = std::clamp(left + by_x, kept - scale * drawn.width, w() - kept);
  top = std::clamp(top + by_y, kept - scale * drawn.height, h() - kept);
  whole = false;
  drop_unlit();
  redraw();
}

void grafcet_canvas::resize(int new_x, int new_y, int new_w, int new_h) {
  Fl_Widget::resize(new_x, new_y, new_w, new_h);
  drop_unlit();
  if (whole) show_all();
}

void grafcet_canvas::draw() {
  cairo_surface_t* const window =
      cairo_xlib_surface_create(fl_display, fl_window, fl_visual->visual, x() + w(), y() + h());
  cairo_t* const to = cairo_create(window);
  if (!unlit) {
    unlit.reset(cairo_surface_create_similar(window, CAIRO_CONTENT_COLOR, w(), h()));
    cairo_t* const once = cairo_create(unlit.get());
    cairo_set_source_rgb(once, 1, 1, 1);
    cairo_paint(once);
    cairo_translate(once, std::round(left), std::round(top));
    cairo_scale(once, scale, scale);
    paint(once, charts, drawn);
    cairo_destroy(once);
  }
  cairo_rectangle(to, x(), y(), w(), h());
  cairo_clip(to);
  cairo_set_source_surface(to, unlit.get(), x(), y());
  cairo_paint(to);
  cairo_translate(to, x() + std::round(left), y() + std::round(top));
  cairo_scale(to, scale, scale);
  paint_lit(to, charts, drawn, now);
  cairo_destroy(to);
  cairo_surface_destroy(window);
}

int grafcet_canvas::handle(int event) {
  switch (event) {
    case FL_MOUSEWHEEL:
      zoom(std::pow(zoom_step, -Fl::event_dy()), Fl::event_x() - x(), Fl::event_y() - y());
      return 1;
    case FL_PUSH:
      held_x = Fl::event_x();
      held_y = Fl::event_y();
      if (Fl::event_clicks() > 0) {
        show_all();
        redraw();
      }
      return 1;
    case FL_DRAG:
      move(Fl::event_x() - held_x, Fl::event_y() - held_y);
      held_x = Fl::event_x();
      held_y = Fl::event_y();
      return 1;
    case FL_RELEASE:
      return 1;
    default:
      return Fl_Widget::handle(event);
  }
}
