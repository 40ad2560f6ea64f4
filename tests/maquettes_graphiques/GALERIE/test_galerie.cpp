#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <list>
#include <string>
#include <vector>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "tests/support/area.h"
#include "tests/support/process.h"
#include "tests/support/program_window.h"
#include "tests/support/wait.h"

namespace {

// As the panel lays its switches out.
point switch_of(int output) { return {825 + output / 14 * 178 + 60, 34 + output % 14 * 22 + 10}; }
constexpr point new_piece{885, 603}, about{1005, 603}, quit{1120, 603};
constexpr rgb yellow{255, 255, 0};

bool lit(const program_window& window, int input) {
  return window.at({825 + input / 16 * 178 + 5, 366 + input % 16 * 13 + 5}) == yellow;
}

constexpr auto& input_names = signal_names<entree::index>;
constexpr auto& output_names = signal_names<sortie::index>;

// A plant that is nothing but its signals.
struct signals_of_gallery {
  std::list<std::string> inputs{input_names.begin(), input_names.end()},
      outputs{output_names.begin(), output_names.end()};
  IOsharemem_server plant{inputs, outputs};
  open_area area{plant.memory_ident()};

  // The outputs, but for the jacks', with which a batch of inputs is answered.
  std::string answer_to(const std::string& set) {
    const auto answers = [this] { return std::atomic_ref(area->output_clock).load(); };
    const std::int64_t before = answers();
    for (int i = 0; i < entree::count; ++i)
      plant.setreset_input(i, (set + " ").find(input_names.at(static_cast<unsigned>(i)) + std::string(" ")) !=
                                  std::string::npos);
    plant.inputs_go();
    if (!wait_until([&] { return answers() > before; })) return "no answer";
    std::string active;
    for (int k = 0; k < sortie::RD_SORTIR; ++k)
      if (plant.output_value(k) == 1) active.append(output_names.at(static_cast<unsigned>(k))).append(" ");
    return active;
  }
};

}  // namespace

TEST(controleur_galerie, answers_what_it_sees) {
  signals_of_gallery signals;
  process controller{{built("controleur_galerie"), "-automemlink", std::to_string(signals.area.ident())}};
  const std::string ready = "poussoir_rentre bras_depart chariot_quai";
  const struct {
    std::string seen, answer;
  } rows[] = {
      {"", "RECULER BRAS_RETOUR CHARIOT_DROITE VIDER "},
      {"piece_tremie poussoir_rentre bras_depart", "CHARIOT_DROITE VIDER "},
      {"piece_tremie " + ready, "VIDER "},
      {"piece_tremie " + ready, "OUVRIR_TRAPPE VIDER "},
      {"piece_tapis " + ready, "TAPIS VIDER "},
      {"piece_tapis piece_poste " + ready, "POUSSER VIDER "},
      {"piece_table bras_depart chariot_quai", "RECULER TABLE VIDER "},
      {"piece_table piece_prise bras_depart chariot_quai", "RECULER VIDER "},
      {"piece_table piece_prise " + ready, "AIMANT VIDER "},
      {ready, "BRAS_ALLER AIMANT CHARIOT_DROITE VIDER "},
      {"poussoir_rentre bras_arrivee", "BRAS_ALLER AIMANT CHARIOT_DROITE VIDER "},
      {"poussoir_rentre bras_arrivee chariot_quai", "VIDER "},
      {"poussoir_rentre bras_arrivee chariot_quai piece_chariot", "BRAS_RETOUR CHARIOT_GAUCHE VIDER "},
      {"poussoir_rentre piece_chariot chariot_tremie", "BRAS_RETOUR VIDER_CHARIOT VIDER "},
      {"piece_tremie poussoir_rentre bras_depart chariot_tremie", "CHARIOT_DROITE VIDER "},
      // The operator puts a new piece into the hopper while one is on the belt.
      {"piece_tremie " + ready, "VIDER "},
      {"piece_tremie " + ready, "OUVRIR_TRAPPE VIDER "},
      {"piece_tapis " + ready, "TAPIS VIDER "},
      {"piece_tremie poussoir_rentre bras_depart", "CHARIOT_DROITE VIDER "},
      {"poussoir_rentre bras_depart cuve_vide", "CHARIOT_DROITE REMPLIR "},
      {"poussoir_rentre bras_depart cuve_pleine", "CHARIOT_DROITE MELANGER CHAUFFER "},
      {"poussoir_rentre bras_depart cuve_pleine cuve_chaude", "CHARIOT_DROITE VIDER "}};
  for (const auto& [seen, answer] : rows) EXPECT_EQ(signals.answer_to(seen), answer) << "to " << seen;
  signals.plant.sharing_terminate();
  EXPECT_EQ(controller.wait(), 0);
}

TEST(galerie, runs_by_itself_with_its_model_controller_and_ends_in_good_order) {
  process program{{built("galerie"), built("controleur_galerie")}};
  const open_area area(wait_for_area_of(program.pid()));
  const auto come = [&](const std::vector<int>& inputs) {
    return std::all_of(inputs.begin(), inputs.end(),
                       [&](int i) { return wait_until([&] { return area.input(i) == 1; }); });
  };
  ASSERT_TRUE(come({entree::piece_tapis, entree::piece_table, entree::piece_prise}));
  ASSERT_TRUE(wait_until([&] { return area.input(entree::bras_depart) == 0; }));
  program_window("galerie").click(new_piece);  // from the arm
  ASSERT_TRUE(
      wait_until([&] { return area.input(entree::piece_tremie) + area.input(entree::piece_chariot) > 0; }));
  EXPECT_EQ(area.input(entree::piece_chariot), 0) << "it has not gone the usual way";
  ASSERT_TRUE(come({entree::piece_tremie, entree::piece_table, entree::bras_arrivee, entree::piece_chariot,
                    entree::chariot_tremie, entree::piece_tremie, entree::piece_tapis, entree::cuve_pleine,
                    entree::cuve_chaude, entree::cuve_vide}));
  for (int jack = entree::rd_rentre; jack <= entree::ts_rentre; jack += 2)
    ASSERT_TRUE(come({jack, jack + 1, jack})) << input_names.at(static_cast<unsigned>(jack));
  program.signal(SIGTERM);
  EXPECT_EQ(program.wait(), 0) << program.errors();
  EXPECT_EQ(area.clock(), -1);
}

TEST(galerie, the_operator_moves_everything_without_a_controller) {
  process program{{built("galerie")}};
  const program_window window("galerie");
  // A piece reaches the belt long before it is run, and is to wait there.
  for (const auto& [command, effect] : {std::pair{sortie::OUVRIR_TRAPPE, entree::piece_tapis},
                                        {sortie::REMPLIR, entree::cuve_pleine},
                                        {sortie::CHARIOT_GAUCHE, entree::chariot_tremie},
                                        {sortie::BS_SORTIR, entree::bs_sorti},
                                        {sortie::LD_SORTIR, entree::ld_sorti},
                                        {sortie::TAPIS, entree::piece_poste}}) {
    ASSERT_TRUE(wait_until([&, light = effect] { return !lit(window, light); }));
    window.click(switch_of(command));
    EXPECT_TRUE(wait_until([&, light = effect] { return lit(window, light); })) << command;
  }
  EXPECT_EQ(area_of(program.pid()), -1) << "there is nobody to share with";
  window.click(quit);
  EXPECT_EQ(program.wait(), 0) << program.errors();
}

TEST(galerie, obeys_only_ones_shows_the_signals_and_stays_on_screen_behind_a_box) {
  process program{{built("galerie"), "true"}};  // with the test itself as its controller
  const open_area area(wait_for_area_of(program.pid()));
  const program_window window("galerie");
  area.output(sortie::RD_SORTIR, 2);
  ASSERT_TRUE(area.cycles(3));
  EXPECT_EQ(area.input(entree::rd_rentre), 1) << "only 1 is active";
  area.output(sortie::RD_SORTIR, 1);
  EXPECT_TRUE(wait_until([&] { return lit(window, entree::rd_sorti); }));
  const point button = switch_of(sortie::RD_SORTIR);
  EXPECT_TRUE(wait_until([&] {
    return window.look().count(yellow, button.x - 58, button.y - 5, 10, 10) > 20;
  })) << "the switch shows the controller's output";
  window.click(button);
  ASSERT_TRUE(area.cycles(3));
  EXPECT_EQ(area.input(entree::rd_sorti), 1) << "and is not the operator's";
  const auto scene = [&] { return window.look().part(10, 10, 800, 610); };
  const picture before = scene();
  window.click(about);
  ASSERT_TRUE(wait_until([&] { return other_window_than({window}) != 0; }));
  EXPECT_TRUE(wait_until([&] {
    move_window(other_window_than({window}), 900, 0);  // until the toolkit has placed it where it wanted
    return scene() == before;
  }));
  hands::key("Return");
  ASSERT_TRUE(area.cycles(2)) << "the run goes on";
}
