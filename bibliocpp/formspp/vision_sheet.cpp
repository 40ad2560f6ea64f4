#include "bibliocpp/formspp/vision_sheet.h"

#include <FL/fl_draw.H>

#include <cmath>
#include <numbers>

namespace {

constexpr double head_half_opening = 20 * std::numbers::pi / 180;

void draw_triangle(double tip_x, double tip_y, double base_x, double base_y) {
  const double half_width = std::tan(head_half_opening);
  const double across_x = (tip_y - base_y) * half_width;
  const double across_y = (base_x - tip_x) * half_width;
  fl_begin_polygon();
  fl_vertex(tip_x, tip_y);
  fl_vertex(base_x + across_x, base_y + across_y);
  fl_vertex(base_x - across_x, base_y - across_y);
  fl_end_polygon();
}

}  // namespace

template <typename Draw>
void OFL_vision_sheet::draw_clipped(Fl_Color colour_of_call, Draw draw) const {
  const bool clips = right > left && bottom > top;
  if (clips) fl_push_clip(left, top, right - left, bottom - top);
  fl_color(colour_of_call);
  draw();
  if (clips) fl_pop_clip();
}

void OFL_vision_sheet::define(int x, int y, int w, int h, Fl_Color colour) {
  resize(x, y, w, h);
  sheet_colour = colour;
}

void OFL_vision_sheet::resize(int x, int y, int w, int h) {
  left = x;
  top = y;
  right = x + w;
  bottom = y + h;
}

void OFL_vision_sheet::ofl_line(int x1, int y1, int x2, int y2, Fl_Color colour) {
  draw_clipped(colour, [=] { fl_line(x1, y1, x2, y2); });
}

void OFL_vision_sheet::ofl_dash_line(int x1, int y1, int x2, int y2, Fl_Color colour) {
  draw_clipped(colour, [=] {
    fl_line_style(FL_DASH);
    fl_line(x1, y1, x2, y2);
    fl_line_style(FL_SOLID);
  });
}

void OFL_vision_sheet::ofl_break_line(int x1, int y1, int x2, int y2, Fl_Color colour) {
  const int first_x = (x2 + 2 * (y1 - y2) + 3 * x1) / 4;
  const int first_y = (y2 + 2 * (x2 - x1) + 3 * y1) / 4;
  const int second_x = (x1 + 2 * (y2 - y1) + 3 * x2) / 4;
  const int second_y = (y1 + 2 * (x1 - x2) + 3 * y2) / 4;
  draw_clipped(colour, [=] {
    fl_line(x1, y1, first_x, first_y);
    fl_line(first_x, first_y, second_x, second_y);
    fl_line(second_x, second_y, x2, y2);
  });
}

void OFL_vision_sheet::ofl_rect(int x, int y, int w, int h, Fl_Color colour) {
  draw_clipped(colour, [=] { fl_rect(x, y, w, h); });
}

void OFL_vision_sheet::ofl_rectf(int x, int y, int w, int h, Fl_Color colour) {
  draw_clipped(colour, [=] { fl_rectf(x, y, w, h); });
}

void OFL_vision_sheet::ofl_rectbound(int x, int y, int w, int h, Fl_Color colour) {
  draw_clipped(colour, [=] {
    fl_rectf(x, y, w, h);
    fl_color(FL_BLACK);
    fl_rect(x, y, w, h);
  });
}

void OFL_vision_sheet::ofl_circ(int x, int y, int d, Fl_Color colour) {
  draw_clipped(colour, [=] { fl_arc(x, y, d, d, 0, 360); });
}

void OFL_vision_sheet::ofl_circf(int x, int y, int d, Fl_Color colour) {
  draw_clipped(colour, [=] { fl_pie(x, y, d, d, 0, 360); });
}

void OFL_vision_sheet::ofl_circbound(int x, int y, int d, Fl_Color colour) {
  draw_clipped(colour, [=] {
    fl_pie(x, y, d, d, 0, 360);
    fl_color(FL_BLACK);
    fl_arc(x, y, d, d, 0, 360);
  });
}

void OFL_vision_sheet::ofl_arrowbound(int x1, int y1, int x2, int y2, Fl_Color colour) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  const int size = static_cast<int>(2 * std::sqrt(dx * dx + dy * dy));
  const auto angle = static_cast<float>(std::atan2(dy, dx) * 180 / std::numbers::pi);
  draw_clipped(colour, [=] {
    fl_pie(x2, y2, size, size, 160 - angle, 200 - angle);
    fl_color(FL_BLACK);
  });
}

void OFL_vision_sheet::ofl_drw_arrow_line(int x1, int y1, int x2, int y2, Fl_Color colour, double head_length,
                                          int line_width) {
  const double direction = std::atan2(y2 - y1, x2 - x1);
  const double base_x = x2 - head_length * std::cos(direction);
  const double base_y = y2 - head_length * std::sin(direction);
  const bool has_shaft = std::hypot(x2 - x1, y2 - y1) > head_length;
  draw_clipped(colour, [=] {
    if (has_shaft) {
      fl_line_style(FL_SOLID | FL_CAP_FLAT, line_width);
      fl_line(x1, y1, static_cast<int>(std::lround(base_x)), static_cast<int>(std::lround(base_y)));
      fl_line_style(FL_SOLID);
    }
    draw_triangle(x2, y2, base_x, base_y);
  });
}

void OFL_vision_sheet::ofl_drw_text(Fl_Align align, int x, int y, int w, int h, Fl_Color colour, int size,
                                    Fl_Font font, const char* text) {
  draw_clipped(colour, [=] {
    fl_font(font, size);
    fl_draw(text, x, y, w, h, align, nullptr, 1);
  });
}

void OFL_vision_sheet::ofl_drw_String(Fl_Align align, int x, int y, int w, int h, Fl_Color colour,
                                      Fl_Font font, int size, const String& text) {
  ofl_drw_text(align, x, y, w, h, colour, size, font, text.c_str());
}
