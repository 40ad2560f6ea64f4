#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "tests/support/area.h"
#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

namespace {

struct place_in_window {
  int x, y;
};
// As the panel lays its switches out.
place_in_window switch_of(int output) { return {825 + output / 14 * 178 + 60, 34 + output % 14 * 22 + 10}; }
place_in_window lamp_of(int input) { return {825 + input / 16 * 178 + 5, 366 + input % 16 * 13 + 5}; }
constexpr place_in_window new_piece{885, 603}, about{1005, 603}, quit{1120, 603};
constexpr rgb yellow{255, 255, 0};

void click_in(window_id window, place_in_window p) {
  const place where = place_of(window);
  hands::click(where.x + p.x, where.y + p.y);
}

bool lit(window_id window, place_in_window p) { return picture_of(window).at(p.x, p.y) == yellow; }

}  // namespace

TEST(galerie, runs_by_itself_with_its_model_controller_and_ends_in_good_order) {
  process program{{built("galerie"), built("controleur_galerie")}};
  const open_area area(wait_for_area_of(program.pid()));
  const auto come = [&](const std::vector<int>& inputs) {
    for (const int input : inputs)
      EXPECT_TRUE(wait_until([&] { return area.input(input) == 1; }))
          << input_names[static_cast<std::size_t>(input)];
  };
  come({entree::piece_tapis, entree::piece_poste, entree::poussoir_sorti, entree::piece_table,
        entree::piece_prise});
  ASSERT_TRUE(wait_until([&] { return area.input(entree::bras_depart) == 0; }));
  click_in(wait_for_window("galerie"), new_piece);  // from the arm
  come({entree::piece_tremie, entree::piece_table, entree::bras_arrivee, entree::piece_chariot,
        entree::chariot_tremie, entree::piece_tremie, entree::piece_tapis});
  come({entree::cuve_pleine, entree::cuve_chaude, entree::cuve_vide});
  for (int jack = entree::rd_rentre; jack <= entree::ts_rentre; jack += 2) come({jack, jack + 1, jack});
  program.signal(SIGTERM);
  EXPECT_EQ(program.wait(), 0) << program.errors();
  EXPECT_EQ(area.clock(), -1);
}

TEST(galerie, the_operator_moves_everything_without_a_controller) {
  process program{{built("galerie")}};
  const window_id window = wait_for_window("galerie");
  struct row {
    int command, effect;
  };
  for (const row& r : std::vector<row>{{sortie::OUVRIR_TRAPPE, entree::piece_tapis},
                                       {sortie::TAPIS, entree::piece_poste},
                                       {sortie::CHARIOT_GAUCHE, entree::chariot_tremie},
                                       {sortie::REMPLIR, entree::cuve_pleine},
                                       {sortie::BS_SORTIR, entree::bs_sorti},
                                       {sortie::LD_SORTIR, entree::ld_sorti}}) {
    ASSERT_TRUE(wait_until([&] { return !lit(window, lamp_of(r.effect)); }));
    click_in(window, switch_of(r.command));
    EXPECT_TRUE(wait_until([&] { return lit(window, lamp_of(r.effect)); }))
        << output_names[static_cast<unsigned>(r.command)];
  }
  EXPECT_EQ(area_of(program.pid()), -1) << "there is nobody to share with";
  click_in(window, quit);
  EXPECT_EQ(program.wait(), 0) << program.errors();
}

TEST(galerie, obeys_only_ones_shows_the_signals_and_stays_on_screen_behind_a_box) {
  process program{{built("galerie"), "true"}};  // with the test itself as its controller
  const open_area area(wait_for_area_of(program.pid()));
  const window_id window = wait_for_window("galerie");
  area.output(sortie::RD_SORTIR, 2);
  ASSERT_TRUE(area.cycles(3));
  EXPECT_EQ(area.input(entree::rd_rentre), 1) << "only 1 is active";
  area.output(sortie::RD_SORTIR, 1);
  EXPECT_TRUE(wait_until([&] { return lit(window, lamp_of(entree::rd_sorti)); }));
  const place_in_window button = switch_of(sortie::RD_SORTIR);
  EXPECT_TRUE(wait_until([&] {
    return picture_of(window).count(yellow, button.x - 58, button.y - 5, 10, 10) > 20;
  })) << "the switch shows the controller's output";
  click_in(window, button);
  ASSERT_TRUE(area.cycles(3));
  EXPECT_EQ(area.input(entree::rd_sorti), 1) << "and is not the operator's";
  const auto scene = [&] { return picture_of(window).part(10, 10, 800, 610); };
  const picture before = scene();
  click_in(window, about);
  ASSERT_TRUE(wait_until([&] { return other_window_than({window}) != 0; }));
  EXPECT_TRUE(wait_until([&] {
    move_window(other_window_than({window}), 900, 0);  // until the toolkit has placed it where it wanted
    return scene() == before;
  }));
  hands::key("Return");
  ASSERT_TRUE(area.cycles(2)) << "the run goes on";
}
