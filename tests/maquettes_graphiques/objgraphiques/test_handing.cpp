// Parts that go from one object to the next, and come and go themselves.
#include <gtest/gtest.h>

#include "tests/maquettes_graphiques/objgraphiques/a_scene.h"

TEST(handing, nothing_is_freed_twice_whichever_of_carrier_and_part_goes_first) {
  a_scene scene;
  auto carrier = scene.part(50, 50, 20, 10), load = scene.part(50, 40, 10, 10, FL_GREEN);
  carrier->carry(load.get());
  EXPECT_EQ(scene.calls([&] { carrier.reset(); }), "grey 50 50 20 10") << "the part is not its to erase";
  EXPECT_EQ(load->is_linked(), 0);
  EXPECT_EQ(load->moveredraw(0, 15), 0) << "and goes where it was";

  auto first = scene.part(100, 50, 20, 10), second = scene.part(130, 50, 20, 10);
  first->carry(load.get());
  second->carry(load.get());
  EXPECT_EQ(first->part_have_link(), nullptr) << "a part has one carrier";
  first.reset();
  EXPECT_EQ(load->is_linked(), 1);
  load.reset();
  EXPECT_EQ(second->part_have_link(), nullptr);
  EXPECT_EQ(scene.calls([&] { second->draw(); }), "blue 130 50 20 10");

  movepart* const owned = scene.part(130, 30, 5, 5).release();
  second->link(owned);
  const movepart copy = *owned;  // is not carried by anybody
  delete owned;
  EXPECT_EQ(second->part_have_link(), nullptr);
}

TEST(handing, a_part_stands_on_what_carries_it_and_both_stop_at_an_obstacle) {
  a_scene scene;
  const auto platform = scene.part(50, 60, 40, 5), tray = scene.part(150, 60, 40, 5);
  const auto load = scene.part(60, 50, 10, 10), on_top = scene.part(60, 40, 10, 10);
  take(*platform, *load);
  take(*load, *on_top);
  EXPECT_EQ(platform->moveredraw(0, 3), 0) << "down, as a lift goes";
  EXPECT_EQ(on_top->actual_first_ypos(), 43);
  const auto ceiling = scene.part(0, 30, 200, 10);
  EXPECT_EQ(platform->moveredraw(0, -5), 1) << "the upper part is under the ceiling";
  EXPECT_EQ(load->actual_first_ypos(), 53);
  EXPECT_EQ(platform->moveredraw(0, -3), 0);
  hand_over(*load, *platform, *tray);
  platform->moveredraw(-5, 0);
  tray->moveredraw(2, 0);
  EXPECT_EQ(on_top->actual_first_xpos(), 62) << "from wagon to lift: it goes with the tray";
}

TEST(handing, a_part_goes_from_belt_to_jack_and_on_and_an_idle_jack_pushes_nothing) {
  a_scene scene;
  const auto box = scene.part(50, 50, 10, 10, FL_GREEN);
  hbelt upper(&scene.window, 20, 45, 200, 20, 3), lower(&scene.window, 20, 70, 200, 20, 3);
  bdjack jack(&scene.window, 50, 5, 30, 10, 44, 4, 5, 5, nullptr, 0);
  rsjack spring(&scene.window, 50, 5, 30, 10, 44, 4, 5, 5, nullptr);
  hrdjack arm(&scene.window, 250, 100, 10, 0, 30, 90, 90, nullptr, 0);
  const auto cycle = [&] {
    for (hbelt* const belt : {&upper, &lower}) {
      belt->activate();
      belt->react();
      belt->draw();
    }
    jack.activate_out();
    spring.activate_out();
    arm.activate_out();
    jack.react();
    spring.react();
    arm.react();
    jack.draw();
    spring.draw();
    arm.draw();
  };
  const auto place = [&] { return point{box->actual_first_xpos(), box->actual_first_ypos()}; };
  take(upper, *box);
  cycle();
  EXPECT_EQ(jack.my_travel(), 5);
  EXPECT_EQ(place().x, 53);
  hand_over(*box, upper, jack);
  cycle();
  EXPECT_EQ(jack.my_part(), box.get());
  EXPECT_EQ(place().x, 53);
  EXPECT_EQ(place().y, 55);
  hand_over(*box, jack, lower);
  cycle();
  EXPECT_EQ(jack.my_part(), nullptr);
  EXPECT_EQ(place().x, 56);
  EXPECT_EQ(place().y, 55);
}

TEST(handing, a_zone_sees_parts_that_overlap_it) {
  a_scene scene;
  const auto box = scene.part(50, 50, 20, 10);
  const auto sees = [&](int x, int y, int w, int h) { return scene.man.part_in(x, y, w, h) == box.get(); };
  EXPECT_TRUE(sees(69, 59, 1, 1) && sees(0, 0, 51, 51) && sees(60, 0, 1, 100));
  EXPECT_FALSE(sees(70, 50, 5, 5) || sees(40, 50, 10, 10) || sees(50, 60, 20, 5));
}

TEST(rbelt, is_drawn_on_its_axle_when_that_is_asked_for) {
  a_scene scene;
  rbelt table(&scene.window, 100, 100, 40, 10, 1);
  table.draw();
  EXPECT_EQ(scene.window.pixel_at(70, 100), grey);
  table.disc_on_axle();
  table.draw();
  EXPECT_EQ(scene.window.pixel_at(62, 100), white);
  EXPECT_EQ(scene.window.pixel_at(100, 138), white);
}
