#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/a_directory.h"
#include "tests/support/area.h"
#include "tests/support/led_plant.h"
#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

TEST(building_a_mock_up, the_page_makes_a_cylinder_that_works_for_ever) {
  process plant{{built("poussoir"), built("controleur_poussoir")}};
  const open_area area(wait_for_area_of(plant.pid()));
  const window_id window = wait_for_window("poussoir");
  constexpr rgb dark_green{0, 145, 0};
  for (int stroke = 0; stroke < 2; ++stroke) {
    ASSERT_TRUE(wait_until([&] { return area.input(1) == 1; }));
    ASSERT_TRUE(wait_until([&] { return picture_of(window).at(203, 43) == dark_green; })) << "pushed by 60";
    ASSERT_TRUE(wait_until([&] { return area.input(0) == 1; }));
  }
  plant.signal(SIGTERM);
  EXPECT_EQ(plant.wait(), 0) << plant.errors();
  EXPECT_EQ(area.clock(), -1);
}

TEST(building_a_mock_up, a_box_that_nobody_pushes_ends_the_run_of_the_second_step) {
  led_plant belt({built("convoyeur"), ":"});
  const open_area area(std::stoi(belt.line().substr(5)));
  std::string said = belt.line();
  area.output(0, 1);
  for (int n = 0; n < 1000 && said.starts_with("pause"); ++n) said = belt.ask("go");
  EXPECT_EQ(said, "fault ERREUR:\\n Une boite est tombee du tapis !!!");
}

// The steps of the page, as a reader would run them; films and pictures are left where they are taken.
TEST(building_a_mock_up, its_steps_are_taken_without_a_person) {
  const a_directory folder;
  const auto run = [&](const std::string& options, const std::string& plant, const std::string& steps) {
    process it({"bash", "-c",
                in_repository("script/headless") + options + built(plant) + " " +
                    built("controleur_" + plant) + " <" + steps},
               {"programs=" + built("")});
    const int status = it.wait(std::chrono::seconds(100));
    return std::to_string(status) + (status != 0 ? it.errors() : "");
  };
  const std::string page = std::string(PAGE_FOLDER) + "/";
  EXPECT_EQ(run(" --mene ", "convoyeur", page + "belt.steps"), "0");
  EXPECT_EQ(run(" ", "trieuse", page + "sort.steps"), "0");
  EXPECT_TRUE(contents("sorted.png").starts_with("\x89PNG"));
  EXPECT_TRUE(contents("sorted.gif").starts_with("GIF"));
  std::ofstream("never.steps") << "cycles 5\nhold marche\ncycles 2\nhold nothing\ncycles 1\n";
  EXPECT_TRUE(run(" --mene ", "convoyeur", "never.steps").starts_with("1")) << "there is no such button";
}

TEST(objects, are_painted_as_the_pictures_of_the_page_show) {
  const a_directory folder;
  process tool({built("draw_objects"), folder.path});
  ASSERT_EQ(tool.wait(), 0) << tool.errors();
  const std::string page = contents(in_repository("doc/objects.md"));
  int pictures = 0;
  for (const auto& file : std::filesystem::directory_iterator(folder.path)) {
    const std::string path = "pictures/objects/" + file.path().filename().string();
    EXPECT_TRUE(contents(file.path()) == contents(in_repository("doc/" + path)))
        << path << ": script/pictures";
    EXPECT_NE(page.find(path), std::string::npos) << path;
    ++pictures;
  }
  EXPECT_GE(pictures, 20);
}
