#include "tests/support/screen.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <fstream>
#include <ostream>
#include <stdexcept>

#include "tests/support/wait.h"

namespace {

// A window may vanish between being found and being looked at: that is no error.
int ignore_error(Display*, XErrorEvent*) { return 0; }

// Errors are ignored only while this lives, so that the toolkit keeps its own handler.
class connection {
 public:
  connection() : handler(XSetErrorHandler(ignore_error)) {
    static Display* const own = XOpenDisplay(nullptr);
    if (own == nullptr) throw std::runtime_error("no display");
    display = own;
  }
  ~connection() {
    XSync(display, 0);
    XSetErrorHandler(handler);
  }
  connection(const connection&) = delete;
  connection& operator=(const connection&) = delete;
  operator Display*() const { return display; }

 private:
  Display* display;
  XErrorHandler handler;
};

std::vector<window_id> shown_windows(Display* display) {
  Window root = 0, parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
  std::vector<window_id> shown;
  for (unsigned i = 0; i < count; ++i) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, children[i], &attributes) && attributes.map_state == IsViewable)
      shown.push_back(children[i]);
  }
  if (children != nullptr) XFree(children);
  return shown;
}

std::string title_of(Display* display, window_id window) {
  char* name = nullptr;
  if (!XFetchName(display, window, &name) || name == nullptr) return {};
  std::string title = name;
  XFree(name);
  return title;
}

picture grab(Display* display, window_id window, const place& where) {
  XImage* const image = XGetImage(display, window, where.x, where.y, static_cast<unsigned>(where.w),
                                  static_cast<unsigned>(where.h), AllPlanes, ZPixmap);
  if (image == nullptr) throw std::runtime_error("the screen cannot be read there");
  picture result(where.w, where.h);
  for (int y = 0; y < where.h; ++y)
    for (int x = 0; x < where.w; ++x)
      result.put(x, y, static_cast<std::uint32_t>(XGetPixel(image, x, y) & 0xffffff));
  XDestroyImage(image);
  return result;
}

void tap(Display* display, KeySym symbol) {
  const KeyCode code = XKeysymToKeycode(display, symbol);
  const bool shifted = XkbKeycodeToKeysym(display, code, 0, 0) != symbol;
  const KeyCode shift = XKeysymToKeycode(display, XK_Shift_L);
  if (shifted) XTestFakeKeyEvent(display, shift, 1, 0);
  XTestFakeKeyEvent(display, code, 1, 0);
  XTestFakeKeyEvent(display, code, 0, 0);
  if (shifted) XTestFakeKeyEvent(display, shift, 0, 0);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const rgb& colour) {
  return out << "rgb(" << colour.r << ", " << colour.g << ", " << colour.b << ")";
}

rgb picture::at(int x, int y) const {
  const std::uint32_t pixel = pixels.at(index(x, y));
  return {static_cast<int>(pixel >> 16), static_cast<int>(pixel >> 8 & 255), static_cast<int>(pixel & 255)};
}

int picture::count(const rgb& colour, int x, int y, int width, int height) const {
  const int right = width < 0 ? w : x + width;
  const int bottom = height < 0 ? h : y + height;
  int found = 0;
  for (int row = y; row < bottom; ++row)
    for (int column = x; column < right; ++column) found += at(column, row) == colour;
  return found;
}

int picture::dark(int x, int y, int width, int height) const {
  int found = 0;
  for (int row = y; row < y + height; ++row)
    for (int column = x; column < x + width; ++column) {
      const rgb seen = at(column, row);
      found += seen.r + seen.g + seen.b < 3 * 128;
    }
  return found;
}

picture picture::part(int x, int y, int width, int height) const {
  picture result(width, height);
  for (int row = 0; row < height; ++row)
    for (int column = 0; column < width; ++column)
      result.put(column, row, pixels.at(index(x + column, y + row)));
  return result;
}

void picture::save(const std::string& path) const {
  std::ofstream out(path, std::ios::binary);
  out << "P6\n" << w << " " << h << "\n255\n";
  for (const std::uint32_t pixel : pixels)
    out << static_cast<char>(pixel >> 16) << static_cast<char>(pixel >> 8) << static_cast<char>(pixel);
}

window_id window_titled(const std::string& title) {
  const connection display;
  for (const window_id window : shown_windows(display))
    if (title_of(display, window) == title) return window;
  return 0;
}

window_id other_window_than(const std::vector<window_id>& known) {
  const connection display;
  for (const window_id window : shown_windows(display))
    if (std::find(known.begin(), known.end(), window) == known.end()) return window;
  return 0;
}

window_id wait_for_window(const std::string& title) {
  window_id found = 0;
  if (!wait_until([&] { return (found = window_titled(title)) != 0; }))
    throw std::runtime_error("no window \"" + title + "\"");
  return found;
}

place place_of(window_id window) {
  const connection display;
  XWindowAttributes attributes{};
  XGetWindowAttributes(display, window, &attributes);
  int x = 0, y = 0;
  Window child = 0;
  XTranslateCoordinates(display, window, DefaultRootWindow(static_cast<Display*>(display)), 0, 0, &x, &y,
                        &child);
  return {x, y, attributes.width, attributes.height};
}

void move_window(window_id window, int x, int y) {
  wait_until([&] {
    {
      const connection display;
      XMoveWindow(display, window, x, y);
    }
    const place now = place_of(window);
    return now.x == x && now.y == y;
  });
}

picture screen_at(const place& where) {
  const connection display;
  return grab(display, DefaultRootWindow(static_cast<Display*>(display)), where);
}

picture picture_of(window_id window) { return screen_at(place_of(window)); }

void hands::move_to(int x, int y) {
  const connection display;
  XTestFakeMotionEvent(display, -1, x, y, 0);
}

void hands::press() {
  const connection display;
  XTestFakeButtonEvent(display, 1, 1, 0);
}

void hands::release() {
  const connection display;
  XTestFakeButtonEvent(display, 1, 0, 0);
}

void hands::click(int x, int y) {
  move_to(x, y);
  press();
  release();
}

void hands::key(const std::string& name) {
  const connection display;
  const std::string control = "Control+";
  if (!name.starts_with(control)) return tap(display, XStringToKeysym(name.c_str()));
  const KeyCode held = XKeysymToKeycode(display, XK_Control_L);
  XTestFakeKeyEvent(display, held, 1, 0);
  tap(display, XStringToKeysym(name.substr(control.size()).c_str()));
  XTestFakeKeyEvent(display, held, 0, 0);
}

void hands::type(const std::string& ascii) {
  const connection display;
  for (const char c : ascii) tap(display, static_cast<KeySym>(c));
}

void hands::focus(window_id window) {
  const connection display;
  XSetInputFocus(display, window, RevertToPointerRoot, CurrentTime);
}

void hands::close(window_id window) {
  const connection display;
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", 0);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", 0));
  XSendEvent(display, window, 0, NoEventMask, &event);
}
