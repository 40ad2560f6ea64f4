#include "maquettes_graphiques/GALERIE/jack_stand.h"

#include <cstddef>
#include <type_traits>

#include "bibliocpp/formspp.h"

namespace {

constexpr int stand_left = 20, stand_top = 425, cell_width = 97, cell_height = 100, caption_height = 16;
constexpr int lbox = 30, hbox = 16, lfinger = 34, hfinger = 6;
constexpr double speed = 0.5;
constexpr int load_size = 8;

// Where a jack stands in its cell, and the load it pushes when it is in.
struct stand_place {
  const char* name;
  int x, y, load_x, load_y;
  int first_output, first_input;
};
constexpr stand_place places[] = {
    {"rdjack", 6, 42, 40, 46, sortie::RD_SORTIR, entree::rd_rentre},
    {"ldjack", 88, 42, 46, 46, sortie::LD_SORTIR, entree::ld_rentre},
    {"bdjack", 40, 6, 44, 40, sortie::BD_SORTIR, entree::bd_rentre},
    {"tdjack", 40, 88, 30, 30, sortie::TD_SORTIR, entree::td_rentre},
    {"rsjack", 6, 42, 40, 46, sortie::RS_SORTIR, entree::rs_rentre},
    {"lsjack", 40, 42, 46, 66, sortie::LS_SORTIR, entree::ls_rentre},
    {"bsjack", 40, 6, 44, 40, sortie::BS_SORTIR, entree::bs_rentre},
    {"tsjack", 40, 92, 44, 50, sortie::TS_SORTIR, entree::ts_rentre},
};

constexpr int cell_x(std::size_t place) { return stand_left + static_cast<int>(place) * cell_width; }

template <typename Jack>
Jack make_jack(FL_FORM* window, std::size_t place, movepart& load) {
  const stand_place& p = places[place];
  const int x = cell_x(place) + p.x;
  const int y = stand_top + p.y;
  if constexpr (std::is_base_of_v<djack, Jack> || std::is_same_v<Jack, bsjack>)
    return Jack(window, x, y, lbox, hbox, lfinger, hfinger, speed, speed, &load, 0.0);
  else
    return Jack(window, x, y, lbox, hbox, lfinger, hfinger, speed, speed, &load);
}

}  // namespace

jack_stand::jack_stand(FL_FORM* a_window)
    : window(a_window),
      rd(make_jack<rdjack>(window, 0, loads[0])),
      ld(make_jack<ldjack>(window, 1, loads[1])),
      bd(make_jack<bdjack>(window, 2, loads[2])),
      td(make_jack<tdjack>(window, 3, loads[3])),
      rs(make_jack<rsjack>(window, 4, loads[4])),
      ls(make_jack<lsjack>(window, 5, loads[5])),
      bs(make_jack<bsjack>(window, 6, loads[6])),
      ts(make_jack<tsjack>(window, 7, loads[7])) {
  for (std::size_t n = 0; n < count; ++n) {
    loads[n].define(man, window, FL_BACKGROUND_COLOR);
    loads[n].add(cell_x(n) + places[n].load_x, stand_top + places[n].load_y, load_size, load_size,
                 FL_DARK_GREEN);
  }
}

template <typename Self, typename Operation>
void jack_stand::for_each_jack(Self& self, Operation operation) {
  operation(self.rd, 0);
  operation(self.ld, 1);
  operation(self.bd, 2);
  operation(self.td, 3);
  operation(self.rs, 4);
  operation(self.ls, 5);
  operation(self.bs, 6);
  operation(self.ts, 7);
}

void jack_stand::change_speed(double new_speed) {
  for_each_jack(*this, [new_speed](auto& jack, std::size_t) { jack.change_speeds(new_speed, new_speed); });
}

void jack_stand::advance(const commands& wanted) {
  window->make_current();
  for_each_jack(*this, [&wanted]<typename Jack>(Jack& jack, std::size_t place) {
    const auto output = static_cast<std::size_t>(places[place].first_output);
    if (wanted[output]) jack.activate_out();
    if constexpr (std::is_base_of_v<djack, Jack>)
      if (wanted[output + 1]) jack.activate_in();
    // Jacks erase nothing: what the finger leaves is cleared here.
    if (jack.react()) fl_rectf(cell_x(place), stand_top, cell_width, cell_height, FL_BACKGROUND_COLOR);
    jack.draw();
  });
}

void jack_stand::report(sensors& seen) const {
  for_each_jack(*this, [&seen](const auto& jack, std::size_t place) {
    const auto input = static_cast<std::size_t>(places[place].first_input);
    seen[input] = jack.in_stop();
    seen[input + 1] = jack.out_stop();
  });
}

void jack_stand::paint() const {
  fl_font(FL_TIMES, 14);
  for_each_jack(*this, [this](const auto& jack, std::size_t place) {
    jack.paint();
    loads[place].paint();
    fl_color(FL_BLACK);
    fl_draw(places[place].name, cell_x(place), stand_top + cell_height, cell_width, caption_height,
            FL_ALIGN_CENTER);
  });
}
