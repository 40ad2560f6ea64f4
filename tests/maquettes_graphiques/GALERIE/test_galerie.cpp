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

// The gallery with the test itself as its controller.
struct driven_gallery {
  process program{{built("galerie"), "true"}};
  open_area area{wait_for_area_of(program.pid())};
  window_id window = wait_for_window("galerie");

  picture look() { return picture_of(window); }
};

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

TEST(galerie, shows_the_signals_and_obeys_only_ones) {
  driven_gallery g;
  const auto lit = [&](place_in_window p) {
    return wait_until([&] { return g.look().count(yellow, p.x - 5, p.y - 5, 10, 10) > 20; });
  };
  const place_in_window light{switch_of(sortie::RD_SORTIR).x - 53, switch_of(sortie::RD_SORTIR).y};
  EXPECT_TRUE(lit(lamp_of(entree::rd_rentre)));
  g.area.output(sortie::RD_SORTIR, 2);
  ASSERT_TRUE(g.area.cycles(3));
  EXPECT_EQ(g.area.input(entree::rd_rentre), 1) << "only 1 is active";
  g.area.output(sortie::RD_SORTIR, 1);
  EXPECT_TRUE(lit(lamp_of(entree::rd_sorti)));
  EXPECT_TRUE(lit(light)) << "the switch shows the controller's output";
  click_in(g.window, switch_of(sortie::RD_SORTIR));
  ASSERT_TRUE(g.area.cycles(3));
  EXPECT_EQ(g.area.input(entree::rd_sorti), 1) << "and is not the operator's";
}

TEST(galerie, the_operator_moves_everything_without_a_controller) {
  process program{{built("galerie")}};
  const window_id window = wait_for_window("galerie");
  const auto lit = [&](int input) {
    const place_in_window p = lamp_of(input);
    return picture_of(window).at(p.x, p.y) == yellow;
  };
  const std::vector<std::pair<int, int>> command_and_effect{{sortie::OUVRIR_TRAPPE, entree::piece_tapis},
                                                            {sortie::TAPIS, entree::piece_poste},
                                                            {sortie::CHARIOT_GAUCHE, entree::chariot_tremie},
                                                            {sortie::REMPLIR, entree::cuve_pleine},
                                                            {sortie::BS_SORTIR, entree::bs_sorti},
                                                            {sortie::LD_SORTIR, entree::ld_sorti}};
  for (const auto& pair : command_and_effect) {
    ASSERT_TRUE(wait_until([&] { return !lit(pair.second); }));
    click_in(window, switch_of(pair.first));
    EXPECT_TRUE(wait_until([&] { return lit(pair.second); }))
        << output_names[static_cast<unsigned>(pair.first)];
  }
  EXPECT_EQ(area_created_by(program.pid()), -1) << "there is nobody to share with";
  click_in(window, quit);
  EXPECT_EQ(program.wait(), 0) << program.errors();
}

TEST(galerie, its_scene_stays_on_screen_behind_a_box) {
  driven_gallery g;
  g.area.output(sortie::RD_SORTIR, 1);
  ASSERT_TRUE(wait_until([&] { return g.area.input(entree::rd_sorti) == 1; }));
  ASSERT_TRUE(g.area.cycles(2));
  const picture before = g.look();
  click_in(g.window, about);
  ASSERT_TRUE(wait_until([&] { return other_window_than({g.window}) != 0; }));
  const window_id box = other_window_than({g.window});
  const auto scene = [](const picture& seen) { return seen.part(10, 10, 800, 610); };
  EXPECT_TRUE(wait_until([&] {
    move_window(box, 900, 0);  // until the toolkit has placed it where it wanted
    return scene(g.look()) == scene(before);
  }));
  hands::key("Return");
  ASSERT_TRUE(g.area.cycles(2)) << "the run goes on";
}
