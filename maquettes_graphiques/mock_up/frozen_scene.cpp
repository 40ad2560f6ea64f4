#include "maquettes_graphiques/mock_up/frozen_scene.h"

#include <utility>

frozen_scene::picture::picture(const Fl_Box& area, std::function<void()> a_paint)
    : Fl_Image(area.w(), area.h(), 1), paint(std::move(a_paint)) {}

void frozen_scene::picture::draw(int, int, int, int, int, int) { paint(); }

frozen_scene::frozen_scene(Fl_Window& a_window, Fl_Box& an_area, std::function<void()> paint)
    : window(a_window), area(an_area), scene(an_area, std::move(paint)) {
  area.image(&scene);
  window.redraw();
}

frozen_scene::~frozen_scene() {
  area.image(nullptr);
  window.redraw();
}
