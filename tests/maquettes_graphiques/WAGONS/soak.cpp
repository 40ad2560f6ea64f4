// soak [seconds] [seed]: the reference controller under a random operator, who never makes it raise a fault.
// The same seed makes the same choices. Status 0 when the mine still works at the end.

#include <cstdlib>
#include <iostream>
#include <random>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/display.h"

namespace {

class operator_at_random {
 public:
  operator_at_random(running_mine& a_mine, unsigned seed) : mine(a_mine), random(seed) {}

  bool act() {
    struct {
      int share;
      point button;
    } constexpr pushes[] = {
        {30, buttons::start}, {15, buttons::stop}, {10, buttons::init}, {8, buttons::emergency}};
    int choice = up_to(100);
    for (const auto& [share, button] : pushes)
      if ((choice -= share) < 0) return mine.push(button), true;
    if (choice >= 8) return mine.turn(static_cast<std::size_t>(up_to(3)), 1 + up_to(30));
    mine.click(choice < 7 ? buttons::empty_by_hand : buttons::redraw);
    return true;
  }
  // Goes on working when nothing is wrong.
  bool watch() {
    for (int n = up_to(200); n > 0; n -= 4) {
      if (!mine.area.cycles(3)) return false;
      const bool C_is_empty = mine.area.input(entree::wCvide) == 1;
      deliveries += C_is_empty && !C_was_empty;
      C_was_empty = C_is_empty;
    }
    return other_window_than({mine.window}) == 0;
  }

  int deliveries = 0;

 private:
  int up_to(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

  running_mine& mine;
  std::mt19937 random;
  bool C_was_empty = true;
};

bool still_works(running_mine& mine) {
  for (const std::size_t wagon : {0U, 1U, 2U})
    if (!mine.turn(wagon, 30)) return false;
  mine.push(buttons::init);
  if (!wait_until([&] { return mine.all_home(); }, std::chrono::seconds(60))) return false;
  mine.push(buttons::start);
  return mine.hauls(2) && mine.quit() == 0;
}

}  // namespace

int main(int argc, char** argv) {
  const auto argument = [&](int n, long otherwise) { return n < argc ? std::atol(argv[n]) : otherwise; };
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(argument(1, 20));
  const auto seed = static_cast<unsigned>(argument(2, 1));
  use_own_display();
  running_mine mine(built("controleur_mine"));
  operator_at_random hands_on(mine, seed);
  mine.push(buttons::start);
  int actions = 0;
  bool fine = true;
  for (; fine && std::chrono::steady_clock::now() < end; ++actions) fine = hands_on.act() && hands_on.watch();
  fine = fine && still_works(mine);
  std::cout << actions << " actions, " << hands_on.deliveries << " deliveries, seed " << seed << "\n";
  if (!fine) std::cerr << "soak: a fault, or the mine no longer works\n" << mine.simulator.errors();
  return fine ? 0 : 1;
}
