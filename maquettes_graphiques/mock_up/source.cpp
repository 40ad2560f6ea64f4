#include "maquettes_graphiques/mock_up/source.h"

#include <algorithm>
#include <utility>

source::source(movepart_manager& registry, FL_FORM* window, Fl_Color background, int x, int y,
               std::vector<part_kind> kinds, unsigned seed)
    : man(registry),
      form(window),
      behind(background),
      birth_x(x),
      birth_y(y),
      all_kinds(std::move(kinds)),
      lot(seed),
      next_kind(lot() % all_kinds.size()) {}

movepart* source::give() {
  movepart* const part = give(next_kind);
  if (part != nullptr) next_kind = lot() % all_kinds.size();
  return part;
}

movepart* source::give(std::size_t kind) {
  const part_kind& boxes = all_kinds[kind];
  const auto taken = [this](const part_box& box) {
    return man.part_in(birth_x + box.x, birth_y + box.y, box.w, box.h) != nullptr;
  };
  if (std::any_of(boxes.begin(), boxes.end(), taken)) return nullptr;
  made& its = store.emplace_back();
  its.kind = kind;
  its.part.define(man, form, behind);
  for (const part_box& box : boxes) its.part.add(birth_x + box.x, birth_y + box.y, box.w, box.h, box.colour);
  return alive.emplace_back(&its.part);
}

movepart* source::every(int cycles) {
  if (++waited < cycles) return nullptr;
  movepart* const part = give();
  if (part != nullptr) waited = 0;
  return part;
}

std::size_t source::kind_of(const movepart& part) const {
  return std::find_if(store.begin(), store.end(), [&](const made& its) { return &its.part == &part; })->kind;
}

void source::paint() const {
  for (const made& its : store) its.part.paint();
}

void source::destroy(movepart& part) {
  alive.remove(&part);
  store.remove_if([&](const made& its) { return &its.part == &part; });
}

void sink::take(movepart& part) {
  ++counts[from.kind_of(part)];
  from.destroy(part);
}
