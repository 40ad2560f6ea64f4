#pragma once
// The stand: every straight jack, single- and double-acting, in all four orientations, with its name.

#include <FL/forms.H>

#include <array>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/objgraphiques.h"

class jack_stand {
 public:
  // Places everything along the window's lower edge; to be built before the window is shown.
  explicit jack_stand(FL_FORM* a_window);

  // Of all fingers, in pixels a cycle.
  void change_speed(double speed);
  // One cycle: obeys, moves and draws in the shown window.
  void advance(const commands& wanted);
  void report(sensors& seen) const;
  // Paints everything as it stands into whatever is current and moves nothing.
  void paint() const;

 private:
  static constexpr int count = 8;

  // Calls operation(jack, place on the stand) for every jack.
  template <typename Self, typename Operation>
  static void for_each_jack(Self& self, Operation operation);

  FL_FORM* window;
  movepart_manager man;
  std::array<movepart, count> loads;
  rdjack rd;
  ldjack ld;
  bdjack bd;
  tdjack td;
  rsjack rs;
  lsjack ls;
  bsjack bs;
  tsjack ts;
};
