// draw_objects FOLDER: a picture of each object into the folder, painted by the object itself; run by
// script/pictures. A magenta cross marks the origin that the constructor takes, a green arrow the way that
// the object moves or carries, a red one the way that a jack pushes its part, a dotted line what is erased.

#include <FL/Fl.H>
#include <FL/Fl_Double_Window.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/mock_up/sensors.h"
#include "maquettes_graphiques/objgraphiques.h"
#include "outils/pictures/png_file.h"

namespace {

constexpr int width = 220, height = 130;

void origin(int x, int y) {
  fl_line(x - 6, y, x + 6, y, FL_MAGENTA);
  fl_line(x, y - 6, x, y + 6, FL_MAGENTA);
}

void arrow(int x1, int y1, int x2, int y2, Fl_Color colour = FL_DARK_GREEN) {
  const double angle = std::atan2(y2 - y1, x2 - x1);
  fl_line_style(FL_SOLID, 2);
  fl_line(x1, y1, x2, y2, colour);
  for (const double side : {angle + 2.5, angle - 2.5})
    fl_line(x2, y2, x2 + static_cast<int>(std::lround(8 * std::cos(side))),
            y2 + static_cast<int>(std::lround(8 * std::sin(side))), colour);
  fl_line_style(FL_SOLID);
}

void erased(int x, int y, int w, int h) {
  fl_line_style(FL_DOT);
  fl_rect(x, y, w, h, FL_DARK_MAGENTA);
  fl_line_style(FL_SOLID);
}

constexpr int part_size = 12;
constexpr Fl_Color part_colour = FL_DARK_GREEN;

// A straight jack 18 pixels out of 50, with its anchor at (x, y), and a part on the point of being pushed.
template <typename Jack>
void jack(int x, int y, int part_x, int part_y, int push_x, int push_y) {
  movepart_manager registry;
  movepart part(registry, nullptr, FL_BACKGROUND_COLOR);
  part.add(part_x, part_y, part_size, part_size, part_colour);
  constexpr int lbox = 50, hbox = 24, lfinger = 60, hfinger = 6;
  const auto paint = [&](Jack its) {
    its.activate_out();
    its.react();
    its.paint();
  };
  if constexpr (std::is_base_of_v<djack, Jack> || std::is_same_v<Jack, bsjack>)
    paint(Jack(nullptr, x, y, lbox, hbox, lfinger, hfinger, 18, 18, &part, 0.0));
  else
    paint(Jack(nullptr, x, y, lbox, hbox, lfinger, hfinger, 18, 18, &part));
  part.paint();
  const int from_x = part_x + part_size / 2 + 10 * push_x, from_y = part_y + part_size / 2 + 10 * push_y;
  arrow(from_x, from_y, from_x + 28 * push_x, from_y + 28 * push_y, FL_DARK_RED);
  origin(x, y);
}

struct object {
  const char* name;
  void (*paint)();
};

const object objects[] = {
    {"movepart",
     [] {
       movepart_manager registry;
       movepart part(registry, nullptr, FL_BACKGROUND_COLOR);
       part.add(70, 40, 60, 30, FL_BLUE);
       part.add(85, 25, 20, 15, FL_DARK_GREEN);
       part.paint();
       erased(60, 40, 10, 30);
       erased(75, 25, 10, 15);
       arrow(140, 55, 180, 55);
       origin(70, 40);
     }},
    {"cookwagon",
     [] {
       movepart_manager registry;
       movepart tray(registry, nullptr, FL_BACKGROUND_COLOR);
       tray.add(90, 75, 40, 5, FL_BLUE);
       tray.add(130, 60, 5, 20, FL_BLUE);
       tray.add(85, 60, 5, 20, FL_BLUE);
       cookwagon its(nullptr, 110, 70, 40, 20, 1.5, 20, 200, &tray, FL_BACKGROUND_COLOR);
       its.load();
       its.paint();
       tray.paint();
       erased(70, 50, 14, 40);
       arrow(145, 70, 185, 70);
       origin(110, 70);
     }},
    {"hbelt",
     [] {
       hbelt its(nullptr, 30, 50, 150, 30, 40);
       its.activate();
       its.react();
       its.paint();
       arrow(80, 100, 140, 100);
       origin(30, 50);
     }},
    {"rbelt",
     [] {
       rbelt its(nullptr, 110, 40, 60, 15, 30);
       its.activate();
       its.react();
       its.paint();
       arrow(168, 95, 150, 113);
       origin(110, 40);
     }},
    {"rbelt_on_axle",
     [] {
       rbelt its(nullptr, 110, 65, 50, 15, 30);
       its.disc_on_axle();
       its.activate();
       its.react();
       its.paint();
       arrow(180, 75, 165, 105);
       origin(110, 65);
     }},
    {"rdjack", [] { jack<rdjack>(30, 50, 108, 56, 1, 0); }},
    {"rsjack", [] { jack<rsjack>(30, 50, 108, 56, 1, 0); }},
    {"ldjack", [] { jack<ldjack>(170, 50, 80, 56, -1, 0); }},
    {"lsjack", [] { jack<lsjack>(120, 50, 142, 56, 1, 0); }},
    {"bdjack",
     [] {
       jack<bdjack>(95, 8, 101, 86, 0, 1);
       erased(95, 8, 25, 51);
       erased(104, 26, 6, 60);
     }},
    {"bsjack",
     [] {
       jack<bsjack>(95, 8, 101, 86, 0, 1);
       erased(95, 8, 25, 51);
       erased(104, 26, 6, 60);
     }},
    {"tdjack", [] { jack<tdjack>(95, 122, 101, 32, 1, 0); }},
    {"tsjack", [] { jack<tsjack>(95, 122, 101, 32, 0, -1); }},
    {"hrdjack",
     [] {
       movepart_manager registry;
       movepart part(registry, nullptr, FL_BACKGROUND_COLOR);
       hrdjack its(nullptr, 90, 40, 18, 0, 60, 30, 30, &part, 0);
       its.activate_out();
       its.react();
       its.paint();
       part.add(141, 69, part_size, part_size, part_colour);
       part.paint();
       arrow(158, 88, 138, 110);
       origin(90, 40);
     }},
    {"cuve",
     [] {
       cuve its(nullptr, 70, 115, 80, 100, 15, 85, 55, 1.0, 0);
       its.change_foreground(FL_CYAN);
       its.paint();
       erased(70, 15, 80, 100);
       origin(70, 115);
     }},
    {"vanne",
     [] {
       for (const int open : {1, 0}) {
         vanne its(nullptr, open ? 60 : 160, 65, 80, 10, 30, open, 1);
         its.change_foreground(FL_BLACK);
         its.paint();
         erased((open ? 60 : 160) - 15, 50, 30, 30);
       }
       origin(60, 65);
     }},
    {"melangeur",
     [] {
       melangeur its(nullptr, 110, 65, 80);
       its.change_foreground(FL_BLACK);
       its.paint();
       arrow(165, 50, 165, 85);
       origin(110, 65);
     }},
    {"resistor",
     [] {
       resistor its(nullptr, 110, 65, 100, 50);
       its.heat();
       its.paint();
       origin(110, 65);
     }},
    {"trappe",
     [] {
       trappe closed(nullptr, 60, 60, 60, -1.0, 0, 1), open(nullptr, 60, 60, 60, -1.0, 1, 1);
       closed.change_foreground(FL_DARK3);
       open.change_foreground(FL_BLACK);
       closed.paint();
       open.paint();
       arrow(125, 65, 110, 95);
       origin(60, 60);
     }},
    {"sensors",
     [] {
       movepart_manager registry;
       movepart part(registry, nullptr, FL_BACKGROUND_COLOR);
       part.add(95, 60, 30, 20, part_colour);
       part.paint();
       sensor_set its;
       bool beam = false, free_beam = false, zone = false;
       its.light_gate(beam, registry, 115, 40, 100);
       its.light_gate(free_beam, registry, 165, 40, 100);
       its.part_in_zone(zone, registry, 30, 60, 20, 20);
       its.read();
       its.paint();
       origin(115, 40);
       erased(30, 60, 20, 20);
       origin(30, 60);
     }},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: draw_objects FOLDER" << std::endl;
    return 2;
  }
  fl_open_display();
  Fl_Double_Window window(width, height);
  window.end();
  window.show();
  const Fl_Offscreen picture = fl_create_offscreen(width, height);
  for (const object& its : objects) {
    fl_begin_offscreen(picture);
    fl_rectf(0, 0, width, height, FL_BACKGROUND_COLOR);
    its.paint();
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * height * 3);
    fl_read_image(pixels.data(), 0, 0, width, height);
    fl_end_offscreen();
    write_png(std::string(argv[1]) + "/" + its.name + ".png", pixels, width, height);
  }
  fl_delete_offscreen(picture);
}
