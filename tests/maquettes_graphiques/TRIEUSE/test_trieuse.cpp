// The parcel sorter, led cycle by cycle: with its controller, and with wrong ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "maquettes_graphiques/TRIEUSE/sorter_signals.h"
#include "tests/maquettes_graphiques/WAGONS/fault_box.h"
#include "tests/support/area.h"
#include "tests/support/led_plant.h"
#include "tests/support/wait.h"

namespace {

struct led_sorter : led_plant {
  explicit led_sorter(const std::string& controller) : led_plant({built("trieuse"), controller}) {}

  open_area area{std::stoi(line().substr(5))};  // "area <ident>"
  std::string said = line();

  bool in(entree::index i) const { return area.input(i) == 1; }
  bool out(sortie::index k) const { return area->output[k] == 1; }
  // One cycle, for which the controller has answered the one before.
  void cycle() {
    EXPECT_TRUE(wait_until([&] { return std::atomic_ref(area->output_clock).load() >= area.clock(); }));
    said = ask("go");
  }
};

}  // namespace

TEST(trieuse, its_controller_sorts_and_stops_in_an_emergency) {
  led_sorter run(built("controleur_trieuse"));
  run.tell("set 2.5 Vitesse\nset 50 Intervalle\nhold marche\n");
  int pushed = 0, turned = 0;
  const auto work = [&](int cycles) {
    for (int n = 0; n < cycles && run.said.starts_with("pause"); ++n) {
      const bool was_out = run.in(entree::poussoir_sorti), was_at_exit = run.in(entree::colis_sortie);
      run.cycle();
      pushed += run.in(entree::poussoir_sorti) && !was_out;
      turned += run.in(entree::colis_sortie) && !was_at_exit;
    }
  };
  work(2);
  run.tell("release marche\n");
  work(420);
  run.tell("hold ATU\n");
  work(3);
  for (int k = 0; k < sortie::count; ++k) EXPECT_EQ(run.out(sortie::index{k}), k == sortie::VOYANT_ATU) << k;
  run.tell("release ATU\nhold marche\n");
  work(3);
  EXPECT_FALSE(run.out(sortie::TAPIS_1)) << "not before it is acknowledged";
  run.tell("hold rearmement\n");
  work(6);
  EXPECT_TRUE(run.out(sortie::VOYANT_MARCHE));
  run.tell("release marche\nrelease rearmement\n");
  work(420);
  EXPECT_EQ(run.said, "pause 855") << "no fault";
  EXPECT_EQ(pushed, 2) << "short ones";
  EXPECT_EQ(turned, 2) << "long ones";
}

TEST(trieuse, tells_each_fault_of_a_wrong_controller) {
  const struct {
    const char* fault;
    void (*command)(led_sorter&);
  } wrong[] = {
      {"Un petit colis est arrive chez les grands",
       [](led_sorter& s) {
         s.area.output(sortie::TABLE, s.in(entree::colis_table) && !s.in(entree::colis_sortie));
       }},
      {"Un grand colis est arrive chez les petits",
       [](led_sorter& s) {
         const bool push =
             (s.in(entree::colis_poussoir) || s.out(sortie::POUSSER)) && !s.in(entree::poussoir_sorti);
         s.area.output(sortie::POUSSER, push);
         s.area.output(sortie::RECULER, !push);
         s.area.output(sortie::TAPIS_1, !push && s.in(entree::poussoir_rentre));
       }},
      {"Un colis est tombe: la table n'etait pas libre",
       [](led_sorter& s) { s.area.output(sortie::TABLE, 1); }},
      {"Un colis a heurte le poussoir: le tapis 1 tournait",
       [](led_sorter& s) { s.area.output(sortie::POUSSER, 1); }},
  };
  for (const auto& [fault, command] : wrong) {
    led_sorter run(":");
    run.tell("set 2.5 Vitesse\n");
    for (const int belt : {sortie::TAPIS_1, sortie::TAPIS_2, sortie::TAPIS_3}) run.area.output(belt, 1);
    for (int n = 0; n < 3000 && run.said.starts_with("pause"); ++n) {
      command(run);
      run.said = run.ask("go");
    }
    EXPECT_EQ(run.said, std::string("fault ERREUR:\\n ") + fault + " !!!");
  }
}

// The fault comes in the midst of a scene that moves unseen.
TEST(trieuse, shows_its_fault_in_a_box) {
  process plant({built("trieuse"), ":"});
  const window_id window = wait_for_window("trieuse");
  const open_area area(wait_for_area_of(plant.pid()));
  for (const int output : {sortie::TAPIS_1, sortie::POUSSER}) area.output(output, 1);
  window_id box = 0;
  EXPECT_TRUE(wait_until([&] { return (box = other_window_than({window})) != 0; }));
  EXPECT_TRUE(box_says(box, "ERREUR:\n Un colis a heurte le poussoir: le tapis 1 tournait !!!"));
  close_box(box);
  EXPECT_EQ(plant.wait(), 0);
}
