#pragma once
// A window with a scene that is painted outside any draw().

#include <FL/Fl_Double_Window.H>

#include <functional>
#include <utility>

// Every repaint of a window (a button pressed, an exposure) wipes what was painted outside draw().
// This one has the scene painted again at once, also while a modal window keeps the cycle from running,
// so that a cycle needs to draw only what moves.
class scene_window : public Fl_Double_Window {
 public:
  using Fl_Double_Window::Fl_Double_Window;

  // `paint` draws the whole scene as it stands, in window coordinates, into whatever is current; it must
  // neither make a window current nor move anything. Without one the scene is left wiped.
  void scene(std::function<void()> paint) { paint_scene = std::move(paint); }

  bool has_scene() const { return static_cast<bool>(paint_scene); }

  void flush() override;

 private:
  std::function<void()> paint_scene;
};
