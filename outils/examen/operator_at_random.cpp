#include "outils/examen/operator_at_random.h"

std::vector<std::string> operator_at_random::advance() {
  constexpr int longest_push = 40, longest_pause = 150;
  // Not "Redessiner": an extra drawing moves the tray of a running wagon on, and nothing brings it back;
  // after hours of that trays meet where no wagon is.
  constexpr struct {
    int share;
    const char* label;
  } buttons[] = {{30, "dc"}, {15, "ac"}, {10, "init"}, {8, "ATU"}, {7, "Interv."}};
  constexpr const char* rollers[] = {"Vitesse A", "Vitesse B", "Vitesse C"};
  if (wait-- > 0) return {};
  if (!held.empty()) {
    wait = up_to(longest_pause);
    return leave();
  }
  int choice = up_to(100);
  for (const auto& [share, label] : buttons)
    if ((choice -= share) < 0) {
      held = label;
      wait = up_to(longest_push);
      return {"hold " + held};
    }
  wait = up_to(longest_pause);
  const int tenths = 1 + up_to(30);
  const std::string speed = std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
  return {"set " + speed + " " + rollers[up_to(3)]};
}

std::vector<std::string> operator_at_random::leave() {
  if (held.empty()) return {};
  const std::string line = "release " + held;
  held.clear();
  return {line};
}
