#include "maquettes_graphiques/mock_up/scene_window.h"

void scene_window::flush() {
  Fl_Double_Window::flush();
  if (!paint_scene) return;
  make_current();
  paint_scene();
}
