// The chart in its window, beside a real mine whose outputs are the test's, and on files.
#include <gtest/gtest.h>
#include <png.h>

#include <csignal>
#include <cstdlib>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/a_directory.h"

namespace {

using words = std::vector<std::string>;
constexpr rgb of_output{247, 223, 204}, of_input{204, 227, 240}, cursor_a{0, 128, 96}, cursor_b{170, 70, 130};

std::string number(int n) { return std::to_string(n); }

struct a_chart {
  static constexpr int w = 900, h = 640, bar = 34, lines_x = 140, rows_y = 74;
  static constexpr int scroll_bar = 14, state_line = 22;

  a_chart(const std::string& subject, words arguments)
      : program(command(std::move(arguments)), {"LC_ALL=en_US.UTF-8"}), title("chronogramme - " + subject) {}
  static words command(words arguments) {
    arguments.insert(arguments.begin(), {built("chronogramme"), "--geometry", "900x640+30+160"});
    return arguments;
  }
  bool is_called(const std::string& name) const {
    return wait_until([&] { return window_titled(name) == window; });
  }
  void click(int x, int y, int button = 1) const { hands::click(30 + x, 160 + y, button); }
  void drag(int x, int y, int to_x, int to_y) const {
    hands::move_to(30 + x, 160 + y);
    hands::press();
    hands::move_to(30 + to_x, 160 + to_y);
    hands::release();
  }
  bool follow_becomes(bool on) const {
    return wait_until([&] { return (picture_of(window).count({255, 255, 0}, 0, 0, 80, bar) > 0) == on; });
  }
  // Neither the names nor their values.
  picture lines() const {
    return picture_of(window).part(lines_x, rows_y, w - lines_x - scroll_bar, h - rows_y - state_line);
  }
  // Where an output's row has been 1: from where, how far. Rows count from 0, the first heading.
  struct pulse {
    int x, w;
  };
  pulse pulse_in(int row = 18, int rows = 29) const {
    const int height = std::min((h - rows_y - state_line) / rows, 26);
    const picture seen = lines().part(0, row * height + height / 2, w - lines_x - scroll_bar, 1);
    int x = 0;
    while (x + 1 < seen.width() && seen.at(x, 0) != of_output) ++x;
    return {lines_x + x, seen.count(of_output)};
  }

  process program;
  std::string title;
  window_id window = wait_for_window(title);
};

bool near(int a, int b) { return std::abs(a - b) <= 2; }

picture read_png(const std::string& file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  png_image_begin_read_from_file(&image, file.c_str());
  image.format = PNG_FORMAT_RGB;
  const int w = static_cast<int>(image.width), h = static_cast<int>(image.height);
  std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(image));
  png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr);
  return {w, h, [&](int x, int y) {
            const unsigned char* const pixel = bytes.data() + std::ptrdiff_t{3} * (y * w + x);
            return rgb{pixel[0], pixel[1], pixel[2]};
          }};
}

}  // namespace

TEST(chronogramme, shows_a_running_mine_heeds_the_hand_and_exports_what_it_shows) {
  const a_directory here;
  const running_mine mine;
  const std::string pid = number(mine.simulator.pid());
  const a_chart chart("wagons (" + pid + ")", {pid});
  mine.area.cycles(300);
  for (int n = 0; n < 11; ++n) chart.click(500, 300, 4);
  EXPECT_TRUE(chart.follow_becomes(false)) << "zoomed to a second, about an earlier moment";
  chart.click(40, 17);
  EXPECT_TRUE(chart.follow_becomes(true));
  mine.area.output(sortie::A_DROITE, 1);
  EXPECT_TRUE(wait_until([&] { return chart.pulse_in().w > 100; })) << "grows as time goes on";
  mine.area.output(sortie::A_DROITE, 0);
  const int moving = chart.pulse_in().x;
  EXPECT_TRUE(wait_until([&] { return chart.pulse_in().x < moving - 50; })) << "moves on";
  chart.click(40, 17);
  EXPECT_TRUE(chart.follow_becomes(false));
  const picture held = picture_of(chart.window);
  const picture lines = chart.lines();
  mine.area.cycles(100);
  EXPECT_EQ(chart.lines(), lines) << "whatever goes on";

  for (const auto& [key, ending] : {std::pair("p", ".png"), {"s", ".vcd"}, {"e", ".csv"}}) {
    hands::focus(chart.window);
    hands::key(std::string("Control+") + key);
    hands::focus(wait_for_window("Export as"));
    EXPECT_TRUE(wait_until([&, file = "wagons-" + pid + ending] {
      if (window_titled("Export as") != 0) hands::key("Return");
      return std::filesystem::exists(file) && window_titled("Export as") == 0;
    })) << ending;
  }
  const int w = a_chart::w - a_chart::scroll_bar, h = a_chart::h - a_chart::bar - a_chart::state_line;
  EXPECT_EQ(read_png("wagons-" + pid + ".png").part(0, 0, w, h), held.part(0, a_chart::bar, w, h));
  EXPECT_NE(contents("wagons-" + pid + ".csv").find(",output,A_DROITE,1\n"), std::string::npos);
  {
    a_chart from_file("wagons-" + pid + ".vcd", {"wagons-" + pid + ".vcd"});
    EXPECT_TRUE(wait_until([&] { return from_file.pulse_in().w > 0; }));
    from_file.program.signal(SIGTERM);
    EXPECT_EQ(from_file.program.wait(), 0);
  }

  const a_chart::pulse before = chart.pulse_in();
  chart.click(before.x, 300, 5);
  EXPECT_TRUE(wait_until([&] { return near(chart.pulse_in().w, before.w * 4 / 5); })) << "made smaller";
  EXPECT_PRED2(near, chart.pulse_in().x, before.x) << "about the pointer";
  chart.drag(400, 300, 460, 300);
  EXPECT_TRUE(wait_until([&] { return near(chart.pulse_in().x, before.x + 60); })) << "back in time";

  const auto in_column = [&](const rgb& c, int x) { return picture_of(chart.window).count(c, x, 60, 1); };
  chart.click(300, 300);
  chart.click(400, 300, 3);
  EXPECT_TRUE(wait_until([&] { return in_column(cursor_a, 300) > 500 && in_column(cursor_b, 400) > 500; }));
  hands::focus(chart.window);
  hands::key("Escape");
  EXPECT_TRUE(wait_until([&] { return in_column(cursor_a, 300) + in_column(cursor_b, 400) == 0; }));

  chart.click(200, 17);
  hands::type("_droite");
  EXPECT_TRUE(wait_until([&] { return chart.pulse_in(1, 4).w > 0; })) << "three outputs and their heading";
  chart.drag(30, a_chart::rows_y + 39, 30, a_chart::rows_y + 91);
  EXPECT_TRUE(wait_until([&] { return chart.pulse_in(3, 4).w > 0; })) << "moved below the others";
  chart.click(300, 17);
  EXPECT_TRUE(wait_until([&] { return chart.pulse_in(1, 2).w > 0; })) << "the only one that changes";
}

TEST(chronogramme, tells_whether_the_plant_stands_still_is_over_or_killed_and_stays) {
  for (const bool killed : {false, true}) {
    running_mine mine;
    mine.click(buttons::about);
    const window_id box = mine.box();
    a_chart chart("wagons (" + number(mine.simulator.pid()) + ")",
                  {"-automemlink", number(mine.area.ident())});
    EXPECT_TRUE(chart.is_called(chart.title + " - suspended"));
    hands::focus(box);
    hands::key("Return");
    EXPECT_TRUE(chart.is_called(chart.title));
    mine.simulator.signal(killed ? SIGKILL : SIGTERM);
    EXPECT_TRUE(chart.is_called(chart.title + (killed ? " - killed" : " - over")));
    EXPECT_GT(picture_of(chart.window).count(of_input), 100) << "still to be looked at";
    chart.click(a_chart::w - 40, 17);
    EXPECT_EQ(chart.program.wait(), 0) << "Quit";
  }
}

TEST(chronogramme, says_in_one_line_what_is_wrong) {
  const std::string help = "; see \"chronogramme --help\"", self = number(getpid());
  for (const auto& [arguments, line] : std::vector<std::pair<words, std::string>>{
           {{self}, "no area was made by process " + self},
           {{"-automemlink", "x"}, "not a number: x" + help},
           {{"-automemlink"}, "there is no value after -automemlink" + help},
           {{"1", "2"}, "one argument too many: 2" + help},
           {{"--geometry", "12"}, "a geometry reads WxH+X+Y, not 12" + help},
           {{"--x"}, "there is no option --x" + help},
           {{"-automemlink", "2147483647"}, "there is no area 2147483647"}}) {
    process chart(a_chart::command(arguments), {"LC_ALL=en_US.UTF-8"});
    EXPECT_EQ(chart.wait(), 2);
    EXPECT_EQ(chart.errors(), "chronogramme: " + line + "\n");
  }
  // In a room of its own, where nobody else's plant runs.
  process alone({"unshare", "-Ur", "--ipc", built("chronogramme")}, {"LC_ALL=C"});
  if (alone.wait(); alone.errors().starts_with("unshare")) GTEST_SKIP() << alone.errors();
  EXPECT_EQ(alone.errors(), "chronogramme: aucune maquette n'est en marche\n");
}
