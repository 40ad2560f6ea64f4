#pragma once
// Handing a part from one object to the next: hand_over(part, belt, jack). The part moves with the one that
// has it, and is nobody's property by that.
//
// A belt carries it; a jack pushes it, and nothing else meanwhile; another part (a tray, a platform) carries
// it by movepart::carry(). The part stays where it is: it is handed when it has come where the next object
// wants it.

#include "maquettes_graphiques/objgraphiques/belts.h"
#include "maquettes_graphiques/objgraphiques/jacks.h"
#include "maquettes_graphiques/objgraphiques/movepart.h"

inline void take(belt& to, movepart& part) { to.add_ppart(&part); }
inline void let_go(belt& from, movepart& part) { from.supp_ppart(&part); }

inline void take(djack& to, movepart& part) { to.change_part(&part); }
inline void let_go(djack& from, movepart&) { from.change_part(nullptr); }
inline void take(sjack& to, movepart& part) { to.change_part(&part); }
inline void let_go(sjack& from, movepart&) { from.change_part(nullptr); }

inline void take(movepart& to, movepart& part) { to.carry(&part); }
inline void let_go(movepart& from, movepart&) { from.unlink(); }

template <typename From, typename To>
void hand_over(movepart& part, From& from, To& to) {
  let_go(from, part);
  take(to, part);
}
