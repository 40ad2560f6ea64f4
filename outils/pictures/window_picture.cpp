#include "outils/pictures/window_picture.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <memory>

namespace {

struct rectangle {
  int x = 0, y = 0, w = 0, h = 0;
};

rectangle largest_shown(Display* display) {
  const Window root = DefaultRootWindow(display);
  Window ignored = 0, *children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, root, &ignored, &ignored, &children, &count) == 0) return {};
  rectangle largest;
  for (unsigned n = 0; n < count; ++n) {
    XWindowAttributes its{};
    if (XGetWindowAttributes(display, children[n], &its) == 0 || its.map_state != IsViewable) continue;
    if (its.width * its.height > largest.w * largest.h) largest = {its.x, its.y, its.width, its.height};
  }
  if (children != nullptr) XFree(children);
  return largest;
}

// An image can be taken of the screen only.
rectangle on_screen(rectangle r, Display* display) {
  const int right = std::min(r.x + r.w, DisplayWidth(display, 0));
  const int bottom = std::min(r.y + r.h, DisplayHeight(display, 0));
  const int x = std::max(r.x, 0), y = std::max(r.y, 0);
  return {x, y, right - x, bottom - y};
}

unsigned char level(unsigned long pixel, unsigned long mask) {
  return mask == 0 ? 0 : static_cast<unsigned char>((pixel & mask) * 255 / mask);
}

}  // namespace

window_picture picture_of_largest_window(const std::string& name) {
  const std::unique_ptr<Display, int (*)(Display*)> display(XOpenDisplay(name.c_str()), XCloseDisplay);
  if (!display) return {};
  const rectangle place = on_screen(largest_shown(display.get()), display.get());
  if (place.w <= 0 || place.h <= 0) return {};
  XImage* const image =
      XGetImage(display.get(), DefaultRootWindow(display.get()), place.x, place.y,
                static_cast<unsigned>(place.w), static_cast<unsigned>(place.h), AllPlanes, ZPixmap);
  if (image == nullptr) return {};
  window_picture seen{{}, place.w, place.h};
  seen.pixels.reserve(static_cast<std::size_t>(place.w) * static_cast<std::size_t>(place.h) * 3);
  for (int y = 0; y < place.h; ++y)
    for (int x = 0; x < place.w; ++x) {
      const unsigned long pixel = XGetPixel(image, x, y);
      for (const unsigned long mask : {image->red_mask, image->green_mask, image->blue_mask})
        seen.pixels.push_back(level(pixel, mask));
    }
  XDestroyImage(image);
  return seen;
}
