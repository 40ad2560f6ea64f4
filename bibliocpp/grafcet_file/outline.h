#pragma once
// How the steps and transitions of a chart follow each other, as it is to be drawn: what stands under what,
// and which links are left over.

#include <vector>

#include "bibliocpp/grafcet_file/chart.h"

namespace grafcet_file {

// A step, a transition, or a bare piece of line: a branch that holds nothing. Every element but the top
// stands under the one that all ways from an initial step to it lead through (its dominator).
struct element {
  int step = none, transition = none;
  std::vector<int> branches;  // elements that only this one leads to, side by side
  std::vector<int> joins;     // elements that several ways from here meet at, the upper first
  // The link that is no branch: to a join of an element above, or up to an element above.
  int leads_to = none;
  // Where that is, to be told in words when it cannot be drawn; one of them.
  int to_step = none, to_transition = none;
  bool goes_up = false;
  bool looped = false;  // links go up to it

  bool has_link() const { return to_step != none || to_transition != none; }
};

struct outline {
  // The first is the top of it all and nothing itself; what stands under an element comes after it.
  std::vector<element> elements;
};

// Any chart, also one that hangs together nowhere. A link that goes up to another place than one above it, or
// over to a sequence of its own, is left to words: it has no leads_to.
outline outline_of(const program& charts, const chart& drawn);

}  // namespace grafcet_file
