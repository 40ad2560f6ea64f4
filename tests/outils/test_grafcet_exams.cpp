// GRAFCETs as the pages show them: what the exercises' commands print, and the mine's charts beside its
// controller.
#include <gtest/gtest.h>

#include "tests/support/a_directory.h"
#include "tests/support/process.h"

namespace {

std::string replaced(std::string text, const std::string& old, const std::string& by) {
  for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += by.size())
    text.replace(at, old.size(), by);
  return text;
}

// A page's blocks of commands, each with what it is said to print.
std::vector<std::pair<std::string, std::string>> shown_on(const std::string& page) {
  const std::string text = contents(in_repository(page)), commands = "\n```sh\n", output = "```\n\n```\n";
  std::vector<std::pair<std::string, std::string>> all;
  for (std::size_t at = 0; (at = text.find(commands, at)) != std::string::npos;) {
    at += commands.size();
    const std::size_t end = text.find("```\n", at), from = end + output.size();
    const bool prints = text.compare(end, output.size(), output) == 0;
    all.emplace_back(text.substr(at, end - at),
                     prints ? text.substr(from, text.find("```\n", from) - from) : "");
    at = end;
  }
  return all;
}

// In the project's folder, by the programs under test, which a busy machine may keep waiting for each other.
std::string printed_by(const std::string& commands) {
  const std::string own =
      replaced(replaced(commands, "--scenario", "--patience 10000 --scenario"), "build/bin/", built(""));
  process shell({"sh", "-c", "cd '" + in_repository("") + "'\n" + own}, {"LC_ALL=fr_FR.UTF-8"});
  shell.wait(std::chrono::minutes(4));
  return shell.output() + shell.errors();
}

}  // namespace

TEST(exercises, print_what_their_page_shows) {
  int compared = 0;
  for (const auto& [commands, output] : shown_on("doc/exercices/README.md")) {
    if (output.empty()) continue;
    EXPECT_EQ(printed_by(commands), output);
    ++compared;
  }
  EXPECT_EQ(compared, 2);
}

// The first of the ten minutes: the operator is not done by then.
TEST(mine_charts, give_the_same_signals_as_the_mines_own_controller) {
  const a_directory here;
  const std::string scenario = "share/scenarios/dix-minutes.toml";
  std::ofstream("brief.toml") << replaced(contents(in_repository(scenario)), "duree = 600", "duree = 45");
  std::string commands = shown_on("doc/grafcet.md").back().first;
  for (const auto& [name, own] : {std::pair{scenario, "brief.toml"}, {"both", "both"}})
    commands = replaced(commands, name, here.path / own);
  const std::string printed = printed_by(commands);
  EXPECT_NE(printed.find("controleur_mine : échoué à 45.000 s"), std::string::npos) << printed;
  EXPECT_TRUE(printed.ends_with("the same\n")) << printed;
}
