// The plant, its controller under watch and the chart, as one command.
#include <gtest/gtest.h>
#include <sys/shm.h>

#include <csignal>

#include "bibliocpp/area_view.h"
#include "outils/atelier/layout.h"
#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/outils/controller_script.h"

namespace {

void expect_side_by_side(const place& a, const place& b, const place& screen) {
  EXPECT_TRUE(a.x + a.w <= b.x || a.y + a.h <= b.y) << screen.w;
  for (const place& p : {a, b}) {
    EXPECT_TRUE(p.x >= screen.x && p.y >= screen.y && p.w > 0 && p.h > 0) << screen.w;
    EXPECT_TRUE(p.x + p.w <= screen.x + screen.w && p.y + p.h <= screen.y + screen.h) << screen.w;
  }
}

struct an_atelier {
  controller_script script;
  // They mean something to a shell, and to the toolkit.
  process all{{built("atelier"), script.name, "a  b", "it's", "$HOME;\"#&", "-title", ""}};
  window_id mine = wait_for_window("mine de charbon"), chart = 0;
  std::map<char, pid_t> pids = script.pids();
  int ident = 0;

  an_atelier() {
    wait_until([this] { return (chart = other_window_than({mine})) != 0; });
    ident = std::stoi(contents("arguments").substr(contents("arguments").rfind('<') + 1));
    pids['p'] = area_view(ident).plant();
  }
  ~an_atelier() {
    all.signal(SIGTERM);
    all.wait();
    shmctl(ident, IPC_RMID, nullptr);
  }
};

}  // namespace

TEST(atelier, hands_the_command_on_and_shows_mine_and_chart_side_by_side) {
  const an_atelier shown;
  EXPECT_TRUE(contents("arguments").starts_with("<a  b><it's><$HOME;\"#&><-title><><-automemlink><"));
  ASSERT_NE(shown.chart, 0U);
  expect_side_by_side(place_of(shown.mine), place_of(shown.chart), {0, 0, 1280, 800});
  EXPECT_GT(place_of(shown.chart).h, 380) << "all the room that there is";
  hands::close(shown.chart);
  EXPECT_TRUE(wait_until([&] { return other_window_than({shown.mine}) == 0; }));
  for (const char role : {'c', 'd'}) kill(shown.pids.at(role), SIGKILL);
  EXPECT_TRUE(ends(shown.pids.at('s')));
  EXPECT_TRUE(open_area(shown.ident).cycles(3)) << "goes on without chart and controller";
}

TEST(atelier, leaves_the_box_of_an_early_fault_on_top) {
  hands::move_to(640, 700);  // where the box will open, and the chart
  process all({built("atelier"), "true"});
  int ident = -1;
  ASSERT_TRUE(wait_until([&] {
    for (const area_entry& one : areas()) {
      const std::string plant = contents("/proc/" + std::to_string(one.creator) + "/stat");
      if (plant.find(") S " + std::to_string(all.pid()) + " ") != std::string::npos) ident = one.ident;
    }
    return ident != -1;
  }));
  const open_area area(ident);
  area.output(sortie::REMPLIR_A, 1);
  const window_id mine = wait_for_window("mine de charbon");
  window_id box = 0, chart = 0;
  ASSERT_TRUE(wait_until([&] { return (box = other_window_than({mine})) != 0; }));
  ASSERT_TRUE(wait_until([&] { return (chart = other_window_than({mine, box})) != 0; }));
  // Either may have come first, but the box is smaller. A click before it is to be seen would be the chart's.
  EXPECT_TRUE(wait_until(
      [&] { return text_of(place_of(box).h < place_of(chart).h ? box : chart).count(black) > 100; }));
  EXPECT_TRUE(wait_until([&] {
    close_box(place_of(box).h < place_of(chart).h ? box : chart);
    return !all.runs();
  }));
}

TEST(atelier, leaves_nothing_however_it_ends) {
  // What is killed: the roles of the script's pids, p the plant; a and t: atelier, by SIGKILL and SIGTERM.
  for (const auto& [killed, status] : std::initializer_list<std::pair<std::string, int>>{
           {"", 0}, {"p", 128 + SIGKILL}, {"t", 0}, {"a", -SIGKILL}, {"sgp", 128 + SIGKILL}}) {
    an_atelier ended;
    ASSERT_NE(ended.chart, 0U);
    for (const char role : killed) {
      kill(role == 'a' || role == 't' ? ended.all.pid() : ended.pids[role], role == 't' ? SIGTERM : SIGKILL);
    }
    if (killed.empty()) hands::close(ended.mine);
    EXPECT_EQ(ended.all.wait(), status) << killed;
    EXPECT_TRUE(wait_until([] { return other_window_than({}) == 0; })) << killed;
    for (const auto& [role, pid] : ended.pids) EXPECT_TRUE(ends(pid)) << killed << ": " << role << " runs on";
    shmid_ds state{};
    EXPECT_EQ(shmctl(ended.ident, IPC_STAT, &state), killed == "a" ? 0 : -1) << killed;
  }
}

TEST(atelier, tells_what_keeps_it_from_starting) {
  const std::string program = built("atelier");
  expect_end({program}, 2, "usage: atelier ");
  expect_end({program, "--other", "true"}, 2, "usage : atelier ", "fr");
  expect_end({program, "--maquette", "./no such", "true"}, 127, "atelier: program not found: ./no such\n");
  expect_end({"env", "DISPLAY=:none", program, "true"}, 1, "atelier: no display");
}

TEST(layout, keeps_windows_and_their_frames_apart_on_every_screen) {
  const frame f{1, 2, 20, 5};
  constexpr int w = 1190, h = 630;
  for (const rectangle& screen : {rectangle{0, 30, 1920, 1050}, {10, 0, 2560, 720}, {0, 0, 1280, 800}}) {
    const layout at = lay_out(screen, w, h, f);
    const place plant{at.plant_x - f.left, at.plant_y - f.top, w + 3, h + 25};
    const place chart{at.chart.x - f.left, at.chart.y - f.top, at.chart.w + 3, at.chart.h + 25};
    expect_side_by_side(plant, chart, {screen.x, screen.y, screen.w, screen.h});
    EXPECT_EQ(chart.y >= plant.y + plant.h, screen.w < 2560) << "beside it only where it is too low";
  }
}
