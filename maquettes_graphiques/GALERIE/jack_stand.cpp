#include "maquettes_graphiques/GALERIE/jack_stand.h"

#include <cstddef>
#include <iterator>
#include <type_traits>

#include "bibliocpp/formspp.h"

namespace {

constexpr int stand_left = 20, stand_top = 425, cell_width = 97, cell_height = 100, caption_height = 16;
constexpr int lbox = 30, hbox = 16, lfinger = 34, hfinger = 6;
constexpr double speed = 0.5;
constexpr int load_size = 8;
constexpr sortie::index by_spring = sortie::count;

using any_jack = jack_stand::any_jack;

template <typename Jack>
any_jack make(FL_FORM* window, int x, int y, movepart& load) {
  if constexpr (std::is_base_of_v<djack, Jack> || std::is_same_v<Jack, bsjack>)
    return Jack(window, x, y, lbox, hbox, lfinger, hfinger, speed, speed, &load, 0.0);
  else
    return Jack(window, x, y, lbox, hbox, lfinger, hfinger, speed, speed, &load);
}

// A jack, where it stands in its cell, the load it pushes when it is in, and its signals.
struct stand_row {
  const char* name;
  any_jack (*make)(FL_FORM*, int, int, movepart&);
  int x, y, load_x, load_y;
  sortie::index go_out, go_in;
  entree::index is_in, is_out;
};
// clang-format off
constexpr stand_row stand[] = {
    {"rdjack", make<rdjack>,  6, 42, 40, 46, sortie::RD_SORTIR, sortie::RD_RENTRER, entree::rd_rentre, entree::rd_sorti},
    {"ldjack", make<ldjack>, 88, 42, 46, 46, sortie::LD_SORTIR, sortie::LD_RENTRER, entree::ld_rentre, entree::ld_sorti},
    {"bdjack", make<bdjack>, 40,  6, 44, 40, sortie::BD_SORTIR, sortie::BD_RENTRER, entree::bd_rentre, entree::bd_sorti},
    {"tdjack", make<tdjack>, 40, 88, 30, 30, sortie::TD_SORTIR, sortie::TD_RENTRER, entree::td_rentre, entree::td_sorti},
    {"rsjack", make<rsjack>,  6, 42, 40, 46, sortie::RS_SORTIR, by_spring,          entree::rs_rentre, entree::rs_sorti},
    {"lsjack", make<lsjack>, 40, 42, 46, 66, sortie::LS_SORTIR, by_spring,          entree::ls_rentre, entree::ls_sorti},
    {"bsjack", make<bsjack>, 40,  6, 44, 40, sortie::BS_SORTIR, by_spring,          entree::bs_rentre, entree::bs_sorti},
    {"tsjack", make<tsjack>, 40, 92, 44, 50, sortie::TS_SORTIR, by_spring,          entree::ts_rentre, entree::ts_sorti},
};
// clang-format on
static_assert(std::size(stand) == std::variant_size_v<any_jack>);

constexpr int cell_x(std::size_t place) { return stand_left + static_cast<int>(place) * cell_width; }

}  // namespace

jack_stand::jack_stand(FL_FORM* a_window) : window(a_window) {
  for (const stand_row& row : stand) {
    const std::size_t place = jacks.size();
    const int x = cell_x(place);
    loads[place].define(man, window, FL_BACKGROUND_COLOR);
    loads[place].add(x + row.load_x, stand_top + row.load_y, load_size, load_size, FL_DARK_GREEN);
    jacks.push_back(row.make(window, x + row.x, stand_top + row.y, loads[place]));
  }
}

void jack_stand::change_speed(double new_speed) {
  for (any_jack& any : jacks)
    std::visit([new_speed](auto& jack) { jack.change_speeds(new_speed, new_speed); }, any);
}

void jack_stand::advance(const commands& wanted) {
  window->make_current();
  for (std::size_t place = 0; place < jacks.size(); ++place) {
    const stand_row& row = stand[place];
    const auto obey = [&](auto& jack) {
      if (wanted[row.go_out]) jack.activate_out();
      if (row.go_in != by_spring && wanted[row.go_in]) jack.activate_in();
      // Jacks erase nothing: what the finger leaves is cleared here.
      if (jack.react()) fl_rectf(cell_x(place), stand_top, cell_width, cell_height, FL_BACKGROUND_COLOR);
      jack.draw();
    };
    std::visit(obey, jacks[place]);
  }
}

void jack_stand::report(sensors& seen) const {
  for (std::size_t place = 0; place < jacks.size(); ++place) {
    const stand_row& row = stand[place];
    const auto look = [&](const auto& jack) {
      seen[row.is_in] = jack.in_stop();
      seen[row.is_out] = jack.out_stop();
    };
    std::visit(look, jacks[place]);
  }
}

void jack_stand::paint() const {
  fl_font(FL_TIMES, 14);
  for (std::size_t place = 0; place < jacks.size(); ++place) {
    std::visit([](const auto& jack) { jack.paint(); }, jacks[place]);
    loads[place].paint();
    fl_color(FL_BLACK);
    fl_draw(stand[place].name, cell_x(place), stand_top + cell_height, cell_width, caption_height,
            FL_ALIGN_CENTER);
  }
}
