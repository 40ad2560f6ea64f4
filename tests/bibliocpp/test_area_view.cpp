#include "bibliocpp/area_view.h"

#include <gtest/gtest.h>
#include <sys/shm.h>

#include <functional>

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
  plant.setreset_input(1, -7);
  area.output(0, 5);
  plant.inputs_go();
  IOsharemem_client controller(area.ident());
  for (int n = 0; n < 3; ++n) controller.outputs_refresh();
  EXPECT_EQ(view.input(1), -7);
  EXPECT_EQ(view.output(0), 5);
  EXPECT_EQ(view.clock(), 1);
  EXPECT_EQ(view.output_clock(), 3);
  plant.sharing_terminate();
  EXPECT_EQ(view.clock(), -1);
  EXPECT_TRUE(view.plant_runs());
}

TEST(area_view, knows_whether_its_plant_lives) {
  forked_plant plant;
  const open_area area(wait_for_area_of(plant.pid));
  const area_view view(area.ident());
  EXPECT_EQ(view.plant(), plant.pid);
  EXPECT_TRUE(view.plant_runs());
  plant.kill_it();
  EXPECT_FALSE(view.plant_runs()) << "killed, and not waited for";
  EXPECT_FALSE(area_view(area.ident()).plant_runs()) << "looked at when it was dead already";
  area_entry entry{};
  entry.creator = getpid();
  EXPECT_FALSE(creator_runs(entry)) << "created long before this process was";
  entry.created = time(nullptr);
  EXPECT_TRUE(creator_runs(entry));
}

TEST(area_view, refuses_what_is_no_area) {
  std::list<std::string> none;
  IOsharemem_server plant(none, none);
  const open_area area(plant.memory_ident());
  const int small = shmget(IPC_PRIVATE, sizeof(IO_controleur), 0600);
  const auto refused = [](int ident) {
    try {
      area_view view(ident);
    } catch (const area_error& error) {
      return std::string(error.what());
    }
    return std::string("taken");
  };
  EXPECT_EQ(refused(area.ident()), "taken");
  EXPECT_EQ(refused(small), "there is no area " + std::to_string(small));
  shmctl(small, IPC_RMID, nullptr);
  for (std::int32_t IO_controleur::*const count : {&IO_controleur::nb_entrees, &IO_controleur::nb_sorties})
    for (const int wrong : {-1, 42}) {
      area.operator->()->*count = wrong;
      EXPECT_NE(refused(area.ident()).find("counts are out of range"), std::string::npos) << wrong;
      area.operator->()->*count = 41;
      EXPECT_EQ(refused(area.ident()), "taken");
    }
}

}  // namespace
