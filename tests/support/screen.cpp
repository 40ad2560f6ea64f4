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

// The first shown top-level window that fits; 0 when none does.
template <typename Fits>
window_id first_shown(Fits fits) {
  const connection display;
  Window root = 0, parent = 0, found = 0;
  Window* children = nullptr;
  unsigned count = 0;
  XQueryTree(display, DefaultRootWindow(static_cast<Display*>(display)), &root, &parent, &children, &count);
  for (unsigned i = 0; i < count && found == 0; ++i) {
    XWindowAttributes seen{};
    if (XGetWindowAttributes(display, children[i], &seen) && seen.map_state == IsViewable &&
        fits(display, children[i]))
      found = children[i];
  }
  if (children != nullptr) XFree(children);
  return found;
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
  picture result(where.w, where.h, [image](int x, int y) {
    const auto pixel = static_cast<int>(XGetPixel(image, x, y));
    return rgb{pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255};
  });
  XDestroyImage(image);
  return result;
}

void tap(Display* display, KeySym symbol, KeySym held = NoSymbol) {
  const KeyCode code = XKeysymToKeycode(display, symbol);
  if (XkbKeycodeToKeysym(display, code, 0, 0) != symbol) held = XK_Shift_L;
  const KeyCode with = XKeysymToKeycode(display, held);
  if (held != NoSymbol) XTestFakeKeyEvent(display, with, 1, 0);
  XTestFakeKeyEvent(display, code, 1, 0);
  XTestFakeKeyEvent(display, code, 0, 0);
  if (held != NoSymbol) XTestFakeKeyEvent(display, with, 0, 0);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const rgb& colour) {
  return out << "rgb(" << colour.r << ", " << colour.g << ", " << colour.b << ")";
}

picture picture::part(int x, int y, int width, int height) const {
  return {width, height, [&](int column, int row) { return at(x + column, y + row); }};
}

int picture::count(const rgb& colour, int x, int y, int width, int height) const {
  const picture seen = part(x, y, width < 0 ? w - x : width, height < 0 ? h - y : height);
  return static_cast<int>(std::count(seen.pixels.begin(), seen.pixels.end(), colour));
}

int picture::dark(int x, int y, int width, int height) const {
  const picture seen = part(x, y, width, height);
  return static_cast<int>(std::count_if(seen.pixels.begin(), seen.pixels.end(),
                                        [](const rgb& c) { return c.r + c.g + c.b < 3 * 128; }));
}

void picture::save(const std::string& path) const {
  std::ofstream out(path, std::ios::binary);
  out << "P6\n" << w << " " << h << "\n255\n";
  for (const rgb& c : pixels)
    for (const int light : {c.r, c.g, c.b}) out << static_cast<char>(light);
}

window_id window_titled(const std::string& title) {
  return first_shown([&](Display* display, window_id window) { return title_of(display, window) == title; });
}

window_id other_window_than(const std::vector<window_id>& known) {
  return first_shown([&](Display*, window_id window) {
    return std::find(known.begin(), known.end(), window) == known.end();
  });
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

void hands::press(int button) {
  const connection display;
  XTestFakeButtonEvent(display, static_cast<unsigned>(button), 1, 0);
}

void hands::release(int button) {
  const connection display;
  XTestFakeButtonEvent(display, static_cast<unsigned>(button), 0, 0);
}

void hands::click(int x, int y, int button) {
  move_to(x, y);
  press(button);
  release(button);
}

void hands::key(const std::string& name) {
  const connection display;
  const std::string control = "Control+";
  const bool with_control = name.starts_with(control);
  tap(display, XStringToKeysym(name.c_str() + (with_control ? control.size() : 0)),
      with_control ? XK_Control_L : NoSymbol);
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
