#include "bibliocpp/area_view.h"

#include <gtest/gtest.h>
#include <sys/shm.h>

#include "tests/support/forked_plant.h"

namespace {

TEST(area_view, shows_the_newest_area_of_a_process_as_it_is_now) {
  std::list<std::string> inputs{"a", std::string(49, 'n')}, outputs{"x"};
  IOsharemem_server before(outputs, inputs), plant(inputs, outputs);
  const open_area left(before.memory_ident()), area(plant.memory_ident());
  ASSERT_EQ(area_of(getpid()), plant.memory_ident());
  area_view first(area.ident());
  const area_view view(std::move(first));
  EXPECT_EQ(view.input_names(), std::vector<std::string>(inputs.begin(), inputs.end()));
  EXPECT_EQ(view.output_names(), std::vector<std::string>{"x"});
  area->input[1] = -7;
  area->output[0] = 5;
  area->clock = 8;
  area->output_clock = 3;
  EXPECT_EQ(std::tuple(view.input(1), view.output(0), view.clock(), view.output_clock()),
            std::tuple(-7, 5, 8, 3));
}

TEST(area_view, knows_whether_its_plant_lives) {
  forked_plant plant;
  const open_area area(wait_for_area_of(plant.pid));
  const area_view view(area.ident());
  EXPECT_TRUE(view.plant_runs());
  area_entry entry{
      .ident = area.ident(), .creator = plant.pid, .attached = 2, .owner = getuid(), .created = 1};
  EXPECT_TRUE(creator_runs(entry)) << "somebody has set the clock of the machine";
  plant.kill_it();
  entry.created = time(nullptr);
  EXPECT_FALSE(creator_runs(entry));
  EXPECT_FALSE(view.plant_runs()) << "killed, and not waited for";
  EXPECT_FALSE(area_view(area.ident()).plant_runs()) << "dead already";
  entry = {.ident = -1, .creator = getpid(), .attached = 0, .owner = getuid(), .created = 1};
  EXPECT_FALSE(creator_runs(entry)) << "created before this process of the same number was";
}

TEST(area_view, refuses_what_is_no_area) {
  std::list<std::string> none;
  IOsharemem_server plant(none, none);
  const open_area area(plant.memory_ident());
  for (std::int32_t IO_controleur::*const count : {&IO_controleur::nb_entrees, &IO_controleur::nb_sorties}) {
    for (const int wrong : {-1, 42}) {
      area.operator->()->*count = wrong;
      EXPECT_THROW(area_view{area.ident()}, area_error) << wrong;
    }
    area.operator->()->*count = 41;
    EXPECT_NO_THROW(area_view{area.ident()});
  }
  const int small = shmget(IPC_PRIVATE, sizeof(IO_controleur), 0600);
  EXPECT_THROW(area_view{small}, area_error);
  shmctl(small, IPC_RMID, nullptr);
}

}  // namespace
