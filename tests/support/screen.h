#pragma once
// What can be seen on the display, and the hands that work on it, through a connection of their own:
// they serve for windows of the test program as for those of another process.

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

struct rgb {
  int r, g, b;
  bool operator==(const rgb&) const = default;
};
std::ostream& operator<<(std::ostream& out, const rgb& colour);

constexpr rgb black{0, 0, 0}, white{255, 255, 255}, blue{0, 0, 255}, red{255, 0, 0}, grey{192, 192, 192};

struct point {
  int x, y;
};

class picture {
 public:
  // pixel(x, y) tells the colour of each place.
  template <typename Pixel>
  picture(int a_width, int a_height, Pixel pixel) : w(a_width), h(a_height) {
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) pixels.push_back(pixel(x, y));
  }
  int width() const { return w; }
  int height() const { return h; }
  const rgb& at(int x, int y) const {
    return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(w) + static_cast<std::size_t>(x));
  }
  // Pixels of that colour in a rectangle, by default in the whole picture.
  int count(const rgb& colour, int x = 0, int y = 0, int width = -1, int height = -1) const;
  // Dark pixels of a rectangle: what black text leaves there, smoothed by its font or not.
  int dark(int x, int y, int width, int height) const;
  picture part(int x, int y, int width, int height) const;
  bool operator==(const picture&) const = default;
  // Leaves it as a PPM file, to be looked at.
  void save(const std::string& path) const;

 private:
  int w, h;
  std::vector<rgb> pixels;
};

using window_id = unsigned long;

// The shown top-level window of that title; 0 when there is none. Never waits.
window_id window_titled(const std::string& title);
// Any shown top-level window but these; 0 when there is none.
window_id other_window_than(const std::vector<window_id>& known);
// Waits for it; throws when it does not appear.
window_id wait_for_window(const std::string& title);
struct place {
  int x, y, w, h;
};
// Where a window lies on the screen.
place place_of(window_id window);
// Waits until it is there: a program that has just shown a window may still place it itself.
void move_window(window_id window, int x, int y);
// What the screen shows there, other windows that cover it included.
picture screen_at(const place& where);
picture picture_of(window_id window);

namespace hands {
// Positions are those of the screen.
void move_to(int x, int y);
// Buttons count from 1, the left one; 4 and 5 are the wheel, up and down.
void press(int button = 1);
void release(int button = 1);
void click(int x, int y, int button = 1);
// Keys by their X names: "Return", "Escape", "a", "Control+a".
void key(const std::string& name);
void type(const std::string& ascii);
// What a window manager does: gives a window the keyboard, asks it to close.
void focus(window_id window);
void close(window_id window);
}  // namespace hands
