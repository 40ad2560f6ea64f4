// The page about the area: its tables say what is so, and its programs run.
#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/support/a_directory.h"

TEST(page_of_the_area, has_the_fields_of_the_record_and_the_signals_of_the_mine_in_their_order) {
#define FIELD(name, extents) \
  "| " << offsetof(IO_controleur, name) << " | " << sizeof(IO_controleur::name) << " | `" #name extents "`\n"
  std::ostringstream expected, told;
  expected << FIELD(clock, "") << FIELD(output_clock, "") << FIELD(mutex, "") << FIELD(nb_entrees, "")
           << FIELD(nb_sorties, "") << FIELD(input, "[50]") << FIELD(output, "[50]")
           << FIELD(nom_input, "[41][50]") << FIELD(nom_output, "[41][50]");
#undef FIELD
  for (int i = 0; i < std::ssize(table_signaux); ++i)
    expected << "| " << (i < entree::count ? i : i - entree::count) << " | `" << table_signaux[i] << "`\n";
  std::istringstream page(contents(in_repository("doc/io-area.md")));
  for (std::string line; std::getline(page, line);)
    if (line.starts_with("| ") && std::isdigit(line[2]) != 0)
      told << line.substr(0, line.find('`', line.find('`') + 1) + 1) << "\n";
  EXPECT_EQ(told.str(), expected.str());
}

TEST(page_of_the_area, shows_controllers_that_fetch_a_load_and_leave_with_the_run) {
  for (const std::string& program : {built("fetch"), std::string("python3 " PAGE_FOLDER "/fetch.py")}) {
    running_mine mine;
    ASSERT_TRUE(mine.turn(0, 5)) << "so slow that a busy machine does not miss the sensor";
    process controller(
        {"sh", "-c", "exec " + program + " -automemlink " + std::to_string(mine.area.ident())});
    EXPECT_TRUE(mine.input_becomes(entree::wAplein, 1)) << controller.errors();
    EXPECT_TRUE(wait_until([&] { return mine.at_rest(); }));
    EXPECT_EQ(mine.quit(), 0);
    EXPECT_EQ(controller.wait(), 0) << controller.errors();
  }
}
