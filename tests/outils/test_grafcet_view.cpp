// Charts on paper, and in a window beside a running controller.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <list>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/grafcet_file/parser.h"
#include "outils/grafcet/painting.h"
#include "tests/support/a_directory.h"
#include "tests/support/process.h"
#include "tests/support/program_window.h"
#include "tests/support/wait.h"

namespace {

constexpr const char* chart = R"(grafcet essai "un aller-retour"
étape initiale 1
étape 2 : x si a "là-bas"
transition 1 -> 2 : a
transition 2 -> 1 : b et non a
)";

std::string file_of(const std::string& text) {
  std::ofstream("essai.grafcet") << text;
  return "essai.grafcet";
}

rgb as_shown(const colour& c) {
  const auto byte = [](double part) { return static_cast<int>(std::lround(part * 255)); };
  return {byte(c.r), byte(c.g), byte(c.b)};
}

// The window of a view, and where things are in it.
struct shown_charts {
  explicit shown_charts(const std::string& text, int a_top = 0)
      : window("grafcet - essai.grafcet"),
        drawn(grafcet_file::lay_out(grafcet_file::read_charts(text).charts, painted_widths())),
        top(a_top) {}
  bool shows(const colour& c, double x, double y) const {
    const double left = std::round((place_of(window).w - 200 - drawn.width) / 2);
    return window.at({static_cast<int>(left + x), static_cast<int>(top + y)}) == as_shown(c);
  }
  bool step_is_lit(std::size_t s) const {
    return shows(active_step, drawn.steps[s].where.x + 6, drawn.steps[s].where.y + 6);
  }
  bool transition_is_lit(std::size_t t) const {
    return shows(true_receptivity, drawn.transitions[t].bar.x + 3, drawn.transitions[t].bar.y + 1.5);
  }
  program_window window;
  grafcet_file::drawing drawn;
  int top;
};

// The plant of a test: it does nothing by itself.
struct still_plant {
  std::list<std::string> inputs{"a", "b"}, outputs{"x"};
  IOsharemem_server area{inputs, outputs};
  void set(int a, int b) {
    area.setreset_input(0, a);
    area.setreset_input(1, b);
    area.inputs_go();
  }
  bool answers(int x) {
    return wait_until([&] { return area.output_value(0) == x; });
  }
  std::string number() { return std::to_string(area.memory_ident()); }
};

}  // namespace

TEST(Pictures, are_files_that_other_programs_read) {
  const a_directory here;
  file_of(std::string("grafcet autre \"\xFF\"\netape initiale 9\ntransition 9 -> 9 : a\n") + chart);
  for (const std::string kind : {"svg", "pdf"}) {
    process drawing({built("grafcet"), "--" + kind, "essai." + kind, "essai.grafcet"});
    ASSERT_EQ(drawing.wait(), 0) << drawing.errors();
    process failing({built("grafcet"), "--" + kind, "nowhere/essai", "essai.grafcet"});
    EXPECT_EQ(failing.wait(), 1);
    EXPECT_NE(failing.errors().find("nowhere/essai"), std::string::npos);
  }
  const std::string first = contents("essai.svg");
  EXPECT_EQ(process({built("grafcet"), "--svg", "essai.svg", "essai.grafcet"}).wait(), 0);
  EXPECT_EQ(contents("essai.svg"), first);
  process parser(
      {"python3", "-c", "import xml.etree.ElementTree as e; print(e.parse('essai.svg').getroot().tag)"});
  EXPECT_EQ(parser.wait(), 0) << parser.errors();
  EXPECT_NE(parser.output().find("svg"), std::string::npos);
  process reader({"pdftotext", "-layout", "essai.pdf", "-"});
  EXPECT_EQ(reader.wait(), 0);
  for (const char* text : {"essai", "\"un aller-retour\"", "b et non a", "\"là-bas\""})
    EXPECT_NE(reader.output().find(text), std::string::npos) << text << reader.output();
}

TEST(View, follows_its_controller_which_goes_on_without_it) {
  const a_directory here;
  still_plant plant;
  process controller({built("grafcet"), "--vue", file_of(chart), "-automemlink", plant.number()});
  plant.set(0, 0);
  {
    const shown_charts view(chart);
    EXPECT_TRUE(wait_until([&] { return view.step_is_lit(0) && !view.step_is_lit(1); }));
    EXPECT_FALSE(view.transition_is_lit(0));
    plant.set(1, 0);
    EXPECT_TRUE(wait_until([&] { return view.step_is_lit(1) && !view.step_is_lit(0); }));
    EXPECT_TRUE(view.transition_is_lit(0));
    const auto& action = view.drawn.actions[0].where;
    EXPECT_TRUE(view.shows(done_action, action.x + 3, action.y + 3));

    // What is under the pointer stays there, and takes more room.
    const auto& step = view.drawn.steps[1].where;
    const int left = static_cast<int>((place_of(view.window).w - 200 - view.drawn.width) / 2);
    view.window.move_hand_to({left + static_cast<int>(step.x) + 5, static_cast<int>(step.y) + 5});
    for (int k = 0; k < 6; ++k)
      hands::click(place_of(view.window).x + left + static_cast<int>(step.x) + 5,
                   place_of(view.window).y + static_cast<int>(step.y) + 5, 4);
    EXPECT_TRUE(wait_until([&] { return view.shows(active_step, step.x + step.w + 10, step.y + 20); }));
    hands::close(view.window);
  }
  EXPECT_TRUE(wait_until([] { return window_titled("grafcet - essai.grafcet") == 0; }));
  plant.set(0, 1);
  EXPECT_TRUE(plant.answers(0));
  plant.set(1, 0);
  EXPECT_TRUE(plant.answers(1));
  plant.area.sharing_terminate();
  EXPECT_EQ(controller.wait(), 0);
}

TEST(View, ends_with_its_controller_and_is_not_needed) {
  const a_directory here;
  still_plant plant;
  {
    const process controller({built("grafcet"), "--vue", file_of(chart), "-automemlink", plant.number()});
    wait_for_window("grafcet - essai.grafcet");
  }
  EXPECT_TRUE(wait_until([] { return window_titled("grafcet - essai.grafcet") == 0; }));
  process blind({built("grafcet"), "--vue", "essai.grafcet", "-automemlink", plant.number()},
                {"DISPLAY=:nowhere"});
  plant.set(1, 0);
  EXPECT_TRUE(plant.answers(1));
  EXPECT_TRUE(wait_until([&] { return blind.errors().find("pas d'affichage") != std::string::npos; }));
}

TEST(View, goes_step_by_step_beside_a_plant_that_waits) {
  const a_directory here;
  constexpr const char* steps = R"(grafcet pas
étape initiale 1
étape 2
étape 3
étape 4
transition 1 -> 2 : 1
transition 2 -> 3 : 1
transition 3 -> 4 : 100ms/X3
)";
  process leader({built("grafcet"), "--vue", "--pas-a-pas", "--maquette", built("wagons"), file_of(steps)});
  const shown_charts view(steps, 32);
  const program_window plant("mine de charbon");
  const auto only_lit = [&](std::size_t step) {
    for (std::size_t s = 0; s < 4; ++s)
      if (view.step_is_lit(s) != (s == step)) return false;
    return true;
  };
  for (const std::size_t step : {0, 1, 2}) {
    EXPECT_TRUE(wait_until([&] { return only_lit(step); })) << step;
    view.window.click({40, 16});
  }
  view.window.click({140, 16});  // run: the plant's time goes on
  EXPECT_TRUE(wait_until([&] { return only_lit(3); }));
  hands::close(plant);
  EXPECT_EQ(leader.wait(), 0) << leader.errors();
  EXPECT_TRUE(wait_until([] { return window_titled("grafcet - essai.grafcet") == 0; }));
}
