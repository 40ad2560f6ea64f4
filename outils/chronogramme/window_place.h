#pragma once

// Where a window lies; without a position the window manager chooses.
struct window_place {
  int w = 1000, h = 640, x = 0, y = 0;
  bool has_position = false;
};
