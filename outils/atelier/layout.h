#pragma once
// Where the plant's window and the chart go. All in pixels of the screen.

struct rectangle {
  int x, y, w, h;
};

// What a window manager draws around a window.
struct frame {
  int left = 0, right = 0, top = 0, bottom = 0;
};

// Of the windows themselves, inside their frames.
struct layout {
  int plant_x, plant_y;
  rectangle chart;
};

// The plant at the top of the usable part of the screen, in the middle; the chart below it where there is
// room for it, else to the right of the plant, which moves to the left then. Where there is room for
// neither the chart gets the narrow strip below. `plant_w` and `plant_h` are those of the window itself;
// both windows are taken to get the same frame.
layout lay_out(const rectangle& usable, int plant_w, int plant_h, const frame& around);
