#include <gtest/gtest.h>
#include <sched.h>
#include <sys/shm.h>

#include <algorithm>

#include "tests/support/forked_plant.h"
#include "tests/support/process.h"

namespace {

bool is_there(int ident) {
  const auto all = areas();
  return std::any_of(all.begin(), all.end(), [&](const area_entry& one) { return one.ident == ident; });
}

// The area of a plant that is gone, edited; nobody is attached.
int left_area(void (*edit)(IO_controleur&)) {
  forked_plant plant;
  const int ident = wait_for_area_of(plant.pid);
  auto* const record = static_cast<IO_controleur*>(shmat(ident, nullptr, 0));
  while (std::atomic_ref(record->clock).load() == 0) usleep(100);
  edit(*record);
  shmdt(record);
  return ident;
}

TEST(nettoyer_zones, removes_areas_of_plants_that_are_gone_and_no_others) {
  unshare(CLONE_NEWIPC);  // alone where that is allowed; elsewhere left areas of others go, too
  forked_plant living, killed;
  const open_area of_living(wait_for_area_of(living.pid)), in_use(wait_for_area_of(killed.pid));
  killed.kill_it();
  const int kept[] = {of_living.ident(),
                      in_use.ident(),
                      left_area([](IO_controleur& r) { r = IO_controleur(); }),
                      left_area([](IO_controleur& r) { r.nb_entrees = 42; }),
                      left_area([](IO_controleur& r) { r.nom_output[0][0] = '\0'; }),
                      left_area([](IO_controleur& r) { std::fill_n(r.nom_input[1], 50, 'n'); })};
  const int left = left_area([](IO_controleur&) {});
  const std::string described = "area " + std::to_string(left) + ", created ";
  for (const char* const word : {"--essai", ""}) {
    std::vector<std::string> words{built("nettoyer_zones")};
    if (*word != '\0') words.emplace_back(word);
    process cleaner(words, {"LC_ALL=en_GB.UTF-8"});
    EXPECT_EQ(cleaner.wait(), 0) << cleaner.errors();
    EXPECT_NE(cleaner.output().find(described), std::string::npos) << cleaner.output();
    EXPECT_NE(cleaner.output().find(", 2 inputs, 1 outputs"), std::string::npos);
    EXPECT_EQ(is_there(left), *word != '\0') << word;
    for (const int ident : kept) {
      EXPECT_TRUE(is_there(ident)) << word << " "
                                   << std::distance(kept, std::find(kept, std::end(kept), ident));
      EXPECT_EQ(cleaner.output().find("area " + std::to_string(ident) + ","), std::string::npos);
    }
  }
  for (const int ident : kept) shmctl(ident, IPC_RMID, nullptr);
  process wrong({built("nettoyer_zones"), "--tout"});
  EXPECT_EQ(wrong.wait(), 2);
}

// Of each three variables the first that is set and not empty decides.
TEST(language, is_french_unless_the_locale_asks_for_english) {
  using environment = std::vector<std::string>;
  for (const auto& [variables, first] : {
           std::pair(environment{"LC_ALL=", "LC_MESSAGES=", "LANG="}, "usage :"),
           std::pair(environment{"LC_ALL=", "LC_MESSAGES=", "LANG=en_GB.UTF-8"}, "usage:"),
           std::pair(environment{"LC_ALL=", "LC_MESSAGES=fr_FR", "LANG=en_GB.UTF-8"}, "usage :"),
           std::pair(environment{"LC_ALL=en", "LC_MESSAGES=fr_FR", "LANG=fr_FR"}, "usage:"),
       }) {
    process help({built("nettoyer_zones"), "--help"}, variables);
    EXPECT_EQ(help.wait(), 0);
    EXPECT_EQ(help.output().rfind(first, 0), 0U) << help.output();
  }
}

}  // namespace
