#include "maquettes_graphiques/mock_up/sensors.h"

#include <cmath>
#include <utility>

#include "bibliocpp/formspp/colour_drawing.h"

namespace {

constexpr int dot = 7;

std::function<bool()> part_in(const movepart_manager& registry, int x, int y, int w, int h) {
  return [&registry, x, y, w, h] { return registry.part_in(x, y, w, h) != nullptr; };
}

}  // namespace

void sensor_set::light_gate(bool& seen, const movepart_manager& registry, int x, int top, int bottom) {
  all.push_back({seen, x, top - dot, bottom - top + dot, part_in(registry, x, top, 1, bottom - top)});
}

void sensor_set::part_in_zone(bool& seen, const movepart_manager& registry, int x, int y, int w, int h) {
  add(seen, x + w / 2, y + h / 2, part_in(registry, x, y, w, h));
}

void sensor_set::proximity(bool& seen, int x, int y, std::function<double()> position, double place,
                           double reach, double release) {
  add(seen, x, y, [&seen, position = std::move(position), place, reach, release] {
    return std::abs(position() - place) < (seen ? release : reach);
  });
}

void sensor_set::proximity(bool& seen, int x, int y, std::function<double()> position, double place,
                           double reach) {
  proximity(seen, x, y, std::move(position), place, reach, reach);
}

void sensor_set::level(bool& seen, int x, int y, std::function<double()> height, double mark,
                       double release) {
  add(seen, x, y,
      [height = std::move(height), state = threshold(mark, release)]() mutable { return state(height()); });
}

void sensor_set::add(bool& seen, int x, int y, std::function<bool()> look) {
  all.push_back({seen, x, y, 0, std::move(look)});
}

void sensor_set::read() {
  for (const sensor& its : all) its.seen = its.look();
}

void sensor_set::paint() const {
  for (const sensor& its : all) {
    if (its.beam != 0) fl_line(its.x, its.y, its.x, its.y + its.beam, its.seen ? FL_DARK2 : FL_RED);
    fl_circf(its.x - dot / 2 - 1, its.y - dot / 2 - 1, dot + 2, FL_BLACK);
    fl_circf(its.x - dot / 2, its.y - dot / 2, dot, its.seen ? FL_YELLOW : FL_DARK3);
  }
}
