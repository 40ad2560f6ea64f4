#include "maquettes_graphiques/mock_up/scene_view.h"

#include <FL/fl_draw.H>

#include "maquettes_graphiques/mock_up/unseen_drawing.h"

void scene_view::animate(const std::function<void()>& move) {
  {
    const unseen_drawing hidden;
    move();
  }
  redraw();
}

void scene_view::draw() {
  Fl_Box::draw();
  fl_push_clip(x(), y(), w(), h());
  paint_scene();
  fl_pop_clip();
}
