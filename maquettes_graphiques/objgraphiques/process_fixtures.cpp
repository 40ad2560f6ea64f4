#include "maquettes_graphiques/objgraphiques/process_fixtures.h"

#include <cmath>
#include <initializer_list>

#include "bibliocpp/formspp/colour_drawing.h"

namespace {

// A rim: the toolkit's circle is an outline only inside a line path.
void circle(int x, int y, int radius) {
  fl_begin_line();
  fl_circle(x, y, radius);
  fl_end_line();
}

}  // namespace

cuve::cuve(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lbox, FL_Coord my_hbox,
           FL_Coord my_min_hpos, FL_Coord my_max_hpos, FL_Coord initial_hpos, double my_convspeed,
           int my_opencuve)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      lbox(my_lbox),
      hbox(my_hbox),
      min_hpos(my_min_hpos),
      max_hpos(my_max_hpos),
      hpos(initial_hpos),
      convspeed(my_convspeed),
      opencuve(my_opencuve) {}

int cuve::react() {
  hpos += (inspeed - outspeed) / convspeed;
  if (hpos >= hbox) hpos = hbox - 1;
  if (hpos < 0) hpos = 0.0;
  return std::abs(outspeed - inspeed) > 0.001;
}

void cuve::draw() {
  associate_forms->make_current();
  paint();
}

void cuve::paint() const {
  const int level = static_cast<int>(hpos);
  const int top = ypos - hbox;
  const int right = xpos + lbox;
  fl_rectf(xpos, top, lbox, hbox - level, background_color);
  fl_rectf(xpos, ypos - level, lbox, level, foreground_color);
  if (opencuve) {
    fl_rect(xpos, top, lbox, hbox, FL_BLACK);
  } else {
    fl_line(xpos, top, xpos, ypos, FL_BLACK);
    fl_line(xpos, ypos, right, ypos, FL_BLACK);
    fl_line(right, top, right, ypos, FL_BLACK);
  }
}

vanne::vanne(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, FL_Coord my_pdiam,
             FL_Coord my_gdiam, int open, int my_horizontale)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      lg(my_lg),
      pdiam(my_pdiam),
      gdiam(my_gdiam),
      openvanne(open),
      last_draw_openvanne(!open),
      horizontale(my_horizontale) {}

void vanne::draw() {
  if (openvanne != last_draw_openvanne) {
    last_draw_openvanne = openvanne;
    fl_rectf(xpos - gdiam / 2, ypos - gdiam / 2, gdiam, gdiam, background_color);
  }
  paint();
}

void vanne::paint() const {
  fl_color(foreground_color);
  for (const int side : {-pdiam / 2, pdiam / 2}) {
    if (horizontale)
      fl_line(xpos - lg / 2, ypos + side, xpos + lg / 2, ypos + side);
    else
      fl_line(xpos + side, ypos - lg / 2, xpos + side, ypos + lg / 2);
  }
  const bool upright_bar = !horizontale == !!openvanne;
  const int w = upright_bar ? pdiam : gdiam;
  const int h = upright_bar ? gdiam : pdiam;
  fl_rectf(xpos - w / 2, ypos - h / 2, w, h);
  circle(xpos, ypos, gdiam / 2);
}

melangeur::melangeur(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_diam)
    : associate_forms(form), xpos(my_xpos), ypos(my_ypos), diam(my_diam) {}

void melangeur::react() {
  if (std::abs(speed) <= 0.001) return;
  angle_anc = angle;
  angle += speed;
}

void melangeur::cr_draw(double a) const {
  const int c = static_cast<int>(std::cos(a) * diam / 2.0);
  const int s = static_cast<int>(std::sin(a) * diam / 2.0);
  fl_line(xpos + c, ypos + s, xpos - c, ypos - s);
  fl_line(xpos - s, ypos + c, xpos + s, ypos - c);
}

void melangeur::draw() {
  if (std::abs(speed) > 0.001) {
    fl_color(background_color);
    cr_draw(angle_anc);
  }
  paint();
}

void melangeur::paint() const {
  fl_color(foreground_color);
  cr_draw(angle);
  circle(xpos, ypos, diam / 2);
}

resistor::resistor(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, FL_Coord my_h)
    : associate_forms(form), xpos(my_xpos), ypos(my_ypos), lg(my_lg), h(my_h) {}

void resistor::draw() { paint(); }

void resistor::paint() const {
  const int sixth = h / 6;
  const int bend = h / 3;
  const int left = xpos - lg / 2;
  const int right = xpos + lg / 2;
  fl_line_style(FL_SOLID, 5);
  fl_color(heating ? FL_RED : foreground_color);
  fl_arc(xpos - sixth, ypos - sixth, bend, bend, -90, 90);
  fl_line(xpos, ypos - sixth, sixth + left, ypos - sixth);
  fl_line(xpos, ypos + sixth, sixth + left, ypos + sixth);
  fl_arc(left, ypos - h / 2, bend, bend, 90, 270);
  fl_arc(left, ypos + sixth, bend, bend, 90, 270);
  fl_line(sixth + left, ypos - h / 2, right, ypos - h / 2);
  fl_line(sixth + left, ypos + h / 2, right, ypos + h / 2);
  fl_line_style(FL_SOLID, 0);
}

trappe::trappe(FL_FORM* form, FL_Coord my_xpos, FL_Coord my_ypos, FL_Coord my_lg, double my_angle, int open,
               int my_horizontale)
    : associate_forms(form),
      xpos(my_xpos),
      ypos(my_ypos),
      lg(my_lg),
      angle(my_angle),
      opentrappe(open),
      last_draw_opentrappe(!open),
      horizontale(my_horizontale) {}

void trappe::flap(int as_open, Fl_Color colour) const {
  const int ca = static_cast<int>(std::cos(angle) * lg);
  const int sa = static_cast<int>(std::sin(angle) * lg);
  if (horizontale)
    as_open ? fl_line(xpos, ypos, xpos + ca, ypos - sa, colour)
            : fl_line(xpos, ypos, xpos + lg, ypos, colour);
  else
    as_open ? fl_line(xpos, ypos, xpos + sa, ypos - ca, colour)
            : fl_line(xpos, ypos, xpos, ypos + lg, colour);
}

void trappe::draw() {
  if (opentrappe != last_draw_opentrappe) {
    last_draw_opentrappe = opentrappe;
    // The vertical flap erases where it is going to be, not where it was; scenes rely on what stays.
    const int erased = horizontale ? !opentrappe : opentrappe;
    flap(erased, background_color);
  }
  paint();
}

void trappe::paint() const { flap(opentrappe, foreground_color); }
