#pragma once
// A scene that is painted anew in each cycle: what objects erase, or leave behind, does not matter then.

#include <FL/Fl_Box.H>

#include <functional>
#include <utility>

// A rectangle of a double-buffered window: the scene is painted there by the toolkit itself, so nothing
// flickers and nothing is lost behind a modal box.
class scene_view : public Fl_Box {
 public:
  // `paint` paints the whole scene as it stands, in window coordinates, and moves nothing; it is clipped.
  scene_view(int x, int y, int w, int h, std::function<void()> paint)
      : Fl_Box(FL_FLAT_BOX, x, y, w, h, nullptr), paint_scene(std::move(paint)) {}

  // One step of everything that moves, by react() and draw() as ever, but nothing is drawn by it: the scene
  // is painted when the toolkit looks for events next.
  void animate(const std::function<void()>& move);

 protected:
  void draw() override;

 private:
  std::function<void()> paint_scene;
};
