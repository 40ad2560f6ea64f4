// controleur_galerie: runs the gallery by itself, as GRAFCETs side by side: one for the piece, one for the
// vat and one for each jack of the stand.

#include <array>
#include <string>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/automemlink.h"
#include "bibliocpp/grafcet.h"

namespace {

// What the charts see of the plant.
struct plant {
  IOsharemem_client& area;
  bool operator[](const char* input) const { return area.input_is_set(input) == 1; }
};

enum class piece {
  in_hopper,
  falling,
  to_pusher,
  pushed,
  turning,
  taken,  // the magnet takes hold before the arm moves
  carried,
  released,
  to_lift,
  lifted,
  to_dock
};

using pt = transition<piece, plant>;
using in_plant = const plant&;
// clang-format off
constexpr pt piece_chart[] = {
  {piece::in_hopper, [](in_plant p) { return p["piece_tremie"] && p["poussoir_rentre"] && p["bras_depart"]; }, piece::falling},
  {piece::falling,   [](in_plant p) { return p["piece_tapis"] && !p["piece_tremie"]; },                        piece::to_pusher},
  {piece::to_pusher, [](in_plant p) { return p["piece_poste"]; },                                              piece::pushed},
  {piece::pushed,    [](in_plant p) { return p["piece_table"]; },                                              piece::turning},
  {piece::turning,   [](in_plant p) { return p["piece_prise"] && p["poussoir_rentre"] && p["bras_depart"]; },  piece::taken},
  {piece::taken,     [](in_plant p) { return !p["piece_table"]; },                                             piece::carried},
  {piece::carried,   [](in_plant p) { return p["bras_arrivee"] && p["chariot_quai"]; },                        piece::released},
  {piece::released,  [](in_plant p) { return p["piece_chariot"]; },                                            piece::to_lift},
  {piece::to_lift,   [](in_plant p) { return p["chariot_tremie"]; },                                           piece::lifted},
  {piece::lifted,    [](in_plant p) { return !p["piece_chariot"]; },                                           piece::to_dock},
  {piece::to_dock,   [](in_plant p) { return p["chariot_quai"] && p["bras_depart"]; },                         piece::in_hopper},
};

enum class batch { filling, heating, emptying };

using bt = transition<batch, plant>;
constexpr bt batch_chart[] = {
  {batch::filling,  [](in_plant p) { return p["cuve_pleine"]; }, batch::heating},
  {batch::heating,  [](in_plant p) { return p["cuve_chaude"]; }, batch::emptying},
  {batch::emptying, [](in_plant p) { return p["cuve_vide"]; },   batch::filling},
};
// clang-format on

enum class stroke { out, in };

// A jack of the stand goes out and in; both ends are seen through the jack's own sensors.
struct jack {
  const char *in, *out, *go_out, *go_in;  // without the last, a spring brings it in
  bool is_in = false, is_out = false;
  grafcet<stroke> chart{stroke::out};
};

using jt = transition<stroke, jack>;
constexpr jt stroke_chart[] = {
    {stroke::out, [](const jack& j) { return j.is_out; }, stroke::in},
    {stroke::in, [](const jack& j) { return j.is_in; }, stroke::out},
};

struct controller {
  grafcet<piece> pieces{piece::to_dock};
  grafcet<batch> batches{batch::emptying};
  std::array<jack, 8> jacks{{
      {"rd_rentre", "rd_sorti", "RD_SORTIR", "RD_RENTRER"},
      {"ld_rentre", "ld_sorti", "LD_SORTIR", "LD_RENTRER"},
      {"bd_rentre", "bd_sorti", "BD_SORTIR", "BD_RENTRER"},
      {"td_rentre", "td_sorti", "TD_SORTIR", "TD_RENTRER"},
      {"rs_rentre", "rs_sorti", "RS_SORTIR", nullptr},
      {"ls_rentre", "ls_sorti", "LS_SORTIR", nullptr},
      {"bs_rentre", "bs_sorti", "BS_SORTIR", nullptr},
      {"ts_rentre", "ts_sorti", "TS_SORTIR", nullptr},
  }};
};

// On its way the piece is not in the hopper, unless the operator has put a new one there.
bool on_its_way(const grafcet<piece>& chart) {
  return !chart.in(piece::in_hopper) && !chart.in(piece::falling) && !chart.in(piece::lifted) &&
         !chart.in(piece::to_dock);
}

void evolve(controller& c, const plant& p) {
  c.pieces.evolve(piece_chart, p);
  if (p["piece_tremie"] && on_its_way(c.pieces)) c.pieces.force(piece::to_dock);
  c.batches.evolve(batch_chart, p);
  for (jack& j : c.jacks) {
    j.is_in = p[j.in];
    j.is_out = p[j.out];
    j.chart.evolve(stroke_chart, j);
  }
}

void act(IOsharemem_client& area, const controller& c) {
  const auto in = [&c](auto... steps) { return (c.pieces.in(steps) || ...); };
  const plant p{area};
  area.setreset_output("OUVRIR_TRAPPE", in(piece::falling));
  area.setreset_output("TAPIS", in(piece::to_pusher));
  area.setreset_output("POUSSER", in(piece::pushed));
  area.setreset_output("RECULER", !in(piece::pushed) && !p["poussoir_rentre"]);
  area.setreset_output("TABLE", in(piece::turning) && !p["piece_prise"]);
  area.setreset_output("AIMANT", in(piece::taken, piece::carried));
  area.setreset_output("BRAS_ALLER", in(piece::carried));
  area.setreset_output("BRAS_RETOUR", in(piece::to_lift, piece::lifted, piece::to_dock) && !p["bras_depart"]);
  area.setreset_output("CHARIOT_GAUCHE", in(piece::to_lift));
  area.setreset_output("VIDER_CHARIOT", in(piece::lifted));
  area.setreset_output("CHARIOT_DROITE", in(piece::to_dock, piece::carried));

  area.setreset_output("REMPLIR", c.batches.in(batch::filling));
  area.setreset_output("VIDER", c.batches.in(batch::emptying));
  area.setreset_output("CHAUFFER", c.batches.in(batch::heating));
  area.setreset_output("MELANGER", c.batches.in(batch::heating));

  for (const jack& j : c.jacks) {
    area.setreset_output(j.go_out, j.chart.in(stroke::out));
    if (j.go_in != nullptr) area.setreset_output(j.go_in, j.chart.in(stroke::in));
  }
  area.outputs_refresh();
}

}  // namespace

int main(int argc, char** argv) {
  IOsharemem_client area(automemlink(argc, argv));
  controller c;
  for (int news = 0; (news = area.receive()) >= 0;)
    if (news == 1) {
      evolve(c, plant{area});
      act(area, c);
    }
}
