#include "outils/atelier/plant_window.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <span>
#include <vector>

namespace {

// The first numbers of a property; empty when it has not that many.
std::vector<int> numbers(Display* connection, Window window, const char* property, long count) {
  Atom type = 0;
  int format = 0;
  unsigned long items = 0, rest = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(connection, window, XInternAtom(connection, property, False), 0, count, False,
                     XA_CARDINAL, &type, &format, &items, &rest, &data);
  std::vector<int> found;
  if (data != nullptr && format == 32 && items == static_cast<unsigned long>(count))
    for (const long value : std::span(reinterpret_cast<const long*>(data), items))
      found.push_back(static_cast<int>(value));
  if (data != nullptr) XFree(data);
  return found;
}

// A window manager puts windows into frames of its own: all levels are looked through.
template <typename Visit>
void each_shown_window(Display* connection, Window parent, const Visit& visit) {
  Window ignored = 0, *children = nullptr;
  unsigned count = 0;
  if (XQueryTree(connection, parent, &ignored, &ignored, &children, &count) == 0) return;
  for (const Window child : std::span(children, count)) {
    XWindowAttributes seen{};
    if (XGetWindowAttributes(connection, child, &seen) == 0 || seen.map_state != IsViewable) continue;
    visit(child, seen);
    each_shown_window(connection, child, visit);
  }
  if (children != nullptr) XFree(children);
}

}  // namespace

display::display() : connection(XOpenDisplay(nullptr)) {
  // A window may vanish between two questions about it.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
}

display::~display() {
  if (connection != nullptr) XCloseDisplay(connection);
}

rectangle display::usable() const {
  const std::vector<int> area = numbers(connection, DefaultRootWindow(connection), "_NET_WORKAREA", 4);
  if (!area.empty()) return {area[0], area[1], area[2], area[3]};
  const int screen = DefaultScreen(connection);
  return {0, 0, DisplayWidth(connection, screen), DisplayHeight(connection, screen)};
}

std::optional<Window> display::window_of(pid_t process) const {
  std::optional<Window> largest;
  int size = 0;
  each_shown_window(connection, DefaultRootWindow(connection),
                    [&](Window window, const XWindowAttributes& seen) {
                      const std::vector<int> owner = numbers(connection, window, "_NET_WM_PID", 1);
                      if (owner.empty() || owner[0] != process || seen.width * seen.height <= size) return;
                      size = seen.width * seen.height;
                      largest = window;
                    });
  return largest;
}

rectangle display::place_of(Window window) const {
  XWindowAttributes seen{};
  if (XGetWindowAttributes(connection, window, &seen) == 0) return {};
  int x = 0, y = 0;
  Window ignored = 0;
  XTranslateCoordinates(connection, window, seen.root, 0, 0, &x, &y, &ignored);
  return {x, y, seen.width, seen.height};
}

frame display::frame_of(Window window) const {
  const std::vector<int> extents = numbers(connection, window, "_NET_FRAME_EXTENTS", 4);
  if (extents.empty()) return {1, 1, 1, 1};
  return {extents[0], extents[1], extents[2], extents[3]};
}

void display::move(Window window, int x, int y) const {
  // A window manager takes the position for the frame's, unless the window says otherwise.
  XSizeHints hints{};
  long ignored = 0;
  XGetWMNormalHints(connection, window, &hints, &ignored);
  const bool window_itself = (hints.flags & PWinGravity) != 0 && hints.win_gravity == StaticGravity;
  const frame around = window_itself ? frame{} : frame_of(window);
  XMoveWindow(connection, window, x - around.left, y - around.top);
  XSync(connection, False);
}

void display::put_below(Window window, Window other) const {
  XWindowChanges wanted{};
  wanted.sibling = other;
  wanted.stack_mode = Below;
  XReconfigureWMWindow(connection, window, DefaultScreen(connection), CWSibling | CWStackMode, &wanted);
  XSync(connection, False);
}
