#pragma once
// Keeps a scene on screen while a modal window is open.

#include <FL/Fl_Box.H>
#include <FL/Fl_Image.H>
#include <FL/Fl_Window.H>

#include <functional>

// A scene that is painted outside any draw() vanishes at the first repaint of its window, and while
// a modal window is open no cycle paints it anew. As long as an object of this class lives, every
// repaint of `window` paints the scene as part of its box `area`.
class frozen_scene {
 public:
  // `paint` draws the scene as it stands, in window coordinates, into whatever is current; it must
  // neither make a window current nor move anything.
  frozen_scene(Fl_Window& window, Fl_Box& area, std::function<void()> paint);
  ~frozen_scene();
  frozen_scene(const frozen_scene&) = delete;
  frozen_scene& operator=(const frozen_scene&) = delete;

 private:
  // What the box takes for its image.
  class picture : public Fl_Image {
   public:
    picture(const Fl_Box& area, std::function<void()> a_paint);
    void draw(int x, int y, int w, int h, int cx, int cy) override;

   private:
    std::function<void()> paint;
  };

  Fl_Window& window;
  Fl_Box& area;
  picture scene;
};
