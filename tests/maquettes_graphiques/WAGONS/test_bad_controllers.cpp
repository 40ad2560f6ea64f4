// Whatever a controller does, the window stays alive and "Quit" works.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <random>
#include <thread>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"

namespace {

// A window that is alive answers a button: its border changes while it is held.
void expect_alive(running_mine& mine) {
  const picture released = mine.look().part(760, 295, 80, 35);
  mine.hold(buttons::redraw);
  EXPECT_TRUE(
      wait_until([&] { return mine.look().part(760, 295, 80, 35) != released; }, std::chrono::seconds(4)));
  hands::move_to(mine.where.x, mine.where.y);
  hands::release();
  EXPECT_EQ(mine.quit(), 0);
}

template <int byte>
void fill(const open_area& area, std::uint32_t) {
  std::memset(area.operator->(), byte, sizeof(IO_controleur));
}

}  // namespace

TEST(controller, leaves_the_operator_in_command_whatever_it_does) {
  // Each with a random number; again and again as long as the mine runs, where it says so.
  const struct {
    const char* name;
    bool again;
    void (*act)(const open_area& area, std::uint32_t n);
  } vices[] = {
      {"does nothing", false, [](auto&, auto) {}},
      {"keeps the lock", true, [](auto& area, auto) { sem_trywait(&area->mutex); }},
      {"scribbles over the lock", true,
       [](auto& area, auto n) {
         const std::uint32_t words[] = {n % 2 == 0 ? 1 : n, n, ~n};
         std::memcpy(&area->mutex, words, sizeof words);
       }},
      {"floods the outputs", true,
       [](auto& area, auto n) { std::fill_n(area->output, 50, static_cast<int>(n << 1)); }},  // never 1
      {"attaches twice", true,
       [](auto& area, auto) {
         static IOsharemem_client one(area.ident()), two(area.ident());
         if (one.receive() >= 0 && two.receive() >= 0) two.outputs_refresh();
       }},
      {"fills with zeros", false, fill<0>},
      {"fills with ones", false, fill<0xff>},
      {"fills with garbage", false, fill<0x5a>},
  };
  for (const auto& vice : vices) {
    SCOPED_TRACE(vice.name);
    running_mine mine("/nowhere/at/all");
    const std::jthread controller([&](const std::stop_token& over) {
      std::minstd_rand random;
      do vice.act(mine.area, static_cast<std::uint32_t>(random()));
      while (vice.again && !over.stop_requested());
    });
    if (vice.again) {
      EXPECT_TRUE(mine.area.cycles(100));
    }
    expect_alive(mine);
  }
}

TEST(controller, may_be_killed_at_any_instant) {
  running_mine mine;
  for (int n = 0; n < 20; ++n) {
    process controller({built("controleur_mine"), "-automemlink", std::to_string(mine.area.ident())});
    ASSERT_TRUE(wait_until([&] { return !controller.errors().empty(); }));
    mine.area.cycles(n % 3);
    controller.signal(SIGKILL);
    controller.wait();
  }
  EXPECT_TRUE(mine.area.cycles(5));
  expect_alive(mine);
}
