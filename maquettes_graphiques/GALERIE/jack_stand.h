#pragma once
// The stand: every straight jack, single- and double-acting, in all four orientations, with its name.

#include <FL/forms.H>

#include <array>
#include <variant>
#include <vector>

#include "maquettes_graphiques/GALERIE/gallery_signals.h"
#include "maquettes_graphiques/objgraphiques.h"

class jack_stand {
 public:
  // Places everything along the window's lower edge; to be built before the window is shown.
  explicit jack_stand(FL_FORM* a_window);
  // The jacks push the loads where they are.
  jack_stand(const jack_stand&) = delete;
  jack_stand& operator=(const jack_stand&) = delete;

  // Of all fingers, in pixels a cycle.
  void change_speed(double speed);
  // One cycle: obeys, moves and draws in the shown window.
  void advance(const commands& wanted);
  void report(sensors& seen) const;
  // Paints everything as it stands into whatever is current and moves nothing.
  void paint() const;

  // Jacks are not of one family: each is asked as what it is.
  using any_jack = std::variant<rdjack, ldjack, bdjack, tdjack, rsjack, lsjack, bsjack, tsjack>;

 private:
  FL_FORM* window;
  movepart_manager man;
  std::array<movepart, std::variant_size_v<any_jack>> loads;
  std::vector<any_jack> jacks;
};
