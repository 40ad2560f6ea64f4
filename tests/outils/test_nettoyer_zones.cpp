#include <gtest/gtest.h>
#include <sched.h>
#include <sys/shm.h>

#include <algorithm>

#include "tests/support/forked_plant.h"
#include "tests/support/process.h"

namespace {

bool is_there(int ident) { return shmctl(ident, IPC_STAT, std::array<shmid_ds, 1>().data()) == 0; }

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
  for (const std::string word : {"--essai", ""}) {
    process cleaner({"/bin/sh", "-c", built("nettoyer_zones") + " " + word}, {"LC_ALL=en_GB.UTF-8"});
    EXPECT_EQ(cleaner.wait(), 0) << cleaner.errors();
    EXPECT_NE(cleaner.output().find("area " + std::to_string(left) + ", created 2"), std::string::npos);
    EXPECT_NE(cleaner.output().find(", 2 inputs, 1 outputs"), std::string::npos);
    EXPECT_EQ(is_there(left), word == "--essai");
    for (const int& ident : kept)
      EXPECT_TRUE(is_there(ident) &&
                  cleaner.output().find("area " + std::to_string(ident) + ",") == std::string::npos)
          << word << " " << &ident - kept;
  }
  for (const int ident : kept) shmctl(ident, IPC_RMID, nullptr);
}

}  // namespace
