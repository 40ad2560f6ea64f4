#pragma once
// What the windows of another program show.

#include <string>
#include <vector>

struct window_picture {
  std::vector<unsigned char> pixels;  // from the top left, three bytes each: red, green, blue
  int width = 0, height = 0;          // 0: there is none
  bool operator==(const window_picture&) const = default;
};

// The largest window that is shown on the display (":7"), frames of window managers included; the parts of it
// that other windows cover show these. None when there is no such display, or no window on it.
window_picture picture_of_largest_window(const std::string& display);
