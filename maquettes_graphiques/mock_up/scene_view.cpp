#include "maquettes_graphiques/mock_up/scene_view.h"

#include <FL/Fl_Device.H>
#include <FL/fl_draw.H>

namespace {

// As long as it lives, drawing calls do nothing.
class nothing_drawn : public Fl_Graphics_Driver {
 public:
  nothing_drawn() { fl_graphics_driver = this; }
  ~nothing_drawn() override { fl_graphics_driver = before; }
  nothing_drawn(const nothing_drawn&) = delete;
  nothing_drawn& operator=(const nothing_drawn&) = delete;

 private:
  void line_style(int, int, char*) override {}
  void rect(int, int, int, int) override {}
  void rectf(int, int, int, int) override {}
  void line(int, int, int, int) override {}
  void line(int, int, int, int, int, int) override {}
  void arc(int, int, int, int, double, double) override {}
  void pie(int, int, int, int, double, double) override {}
  void end_line() override {}
  void end_loop() override {}
  void end_polygon() override {}

  Fl_Graphics_Driver* const before = fl_graphics_driver;
};

}  // namespace

void scene_view::animate(const std::function<void()>& move) {
  {
    const nothing_drawn hidden;
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
