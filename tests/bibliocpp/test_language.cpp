// In which language programs speak, and how they look their texts up.
#include <gtest/gtest.h>

#include <clocale>
#include <filesystem>
#include <fstream>

#include "bibliocpp/language.h"
#include "tests/support/a_directory.h"
#include "tests/support/process.h"

namespace files = std::filesystem;

const bool in_english = setenv("LC_ALL", "en_GB.UTF-8", 1) == 0;

TEST(language, fills_english_texts_and_leaves_the_locale_alone) {
  ASSERT_TRUE(in_english);
  const locale_t own = uselocale(nullptr);
  EXPECT_EQ(tr("lot {} · {} évolution(s) · {}", {"{}", "2", "3", "4"}), "batch {} · 2 evolution(s) · 3");
  EXPECT_EQ(uselocale(nullptr), own);
  EXPECT_STREQ(tr("sans anglais"), "sans anglais");
}

// Of the three variables the first that is set and not empty decides.
TEST(language, is_french_unless_the_locale_asks_for_english) {
  process help({"/bin/sh", "-c",
                "for e in LC_ALL= 'LC_ALL= LC_MESSAGES= LANG=en_GB.UTF-8' 'LC_MESSAGES=fr LANG=en' "
                "'LC_ALL=en LANG=fr LANGUAGE=fr'; do "
                "env -u LANG -u LC_MESSAGES -u LC_ALL $e " +
                    built("nettoyer_zones") + " --help | head -c 6; done; " + built("nettoyer_zones") +
                    " --tout"});
  EXPECT_EQ(help.wait(), 2);
  EXPECT_EQ(help.output(), "usage usage:usage usage:");
}

TEST(language, is_that_of_the_catalogue_beside_the_program) {
  const a_directory here;
  const files::path english = here.path / "share/locale/en/LC_MESSAGES";
  files::create_directories(english);
  files::create_directory("bin");
  files::copy(built("nettoyer_zones"), "bin");
  const auto says = [&] {
    process program({here.path / "bin/nettoyer_zones", "--help"}, {"LC_ALL=en"});
    EXPECT_EQ(program.wait(), 0);
    return program.output().substr(0, 6);
  };
  std::ofstream(english / "wagons.mo") << "none";
  EXPECT_EQ(says(), "usage ") << "French, where it is of no use";
  files::copy(built("../share/locale/en/LC_MESSAGES/wagons.mo"), english,
              files::copy_options::overwrite_existing);
  EXPECT_EQ(says(), "usage:");
}
