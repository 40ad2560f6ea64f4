#pragma once
// Parts that come and go: a source makes them, a sink counts them and takes them away.

#include <FL/forms.H>

#include <cstddef>
#include <list>
#include <random>
#include <vector>

#include "maquettes_graphiques/objgraphiques/movepart.h"
#include "maquettes_graphiques/objgraphiques/movepart_manager.h"

// What a kind of part looks like: its boxes, from the point where the source makes it.
struct part_box {
  FL_Coord x, y, w, h;
  Fl_Color colour;
};
using part_kind = std::vector<part_box>;

// Makes parts at (x, y), where nothing else may be: until the place is free, none comes. The parts are the
// source's; they go with it, or before when destroy() or a sink takes them. The same seed gives the same
// sequence of kinds, on every machine.
class source {
 public:
  source(movepart_manager& registry, FL_FORM* window, Fl_Color background, int x, int y,
         std::vector<part_kind> kinds, unsigned seed);

  // By command: a part of the kind drawn by lot, or of that one; null while the place is not free.
  movepart* give();
  movepart* give(std::size_t kind);
  // By time: to be called once a cycle. A part comes after `cycles` calls without one, as soon as the place
  // is free; null in all other calls.
  movepart* every(int cycles);

  const std::list<movepart*>& parts() const { return alive; }
  std::size_t kind_of(const movepart& part) const;
  void paint() const;
  // Nobody may carry or push the part any more but a part by carry().
  void destroy(movepart& part);

 private:
  struct made {
    movepart part;
    std::size_t kind;
  };
  movepart_manager& man;
  FL_FORM* form;
  Fl_Color behind;
  int birth_x, birth_y;
  std::vector<part_kind> all_kinds;
  std::mt19937 lot;
  std::size_t next_kind;
  int waited = 0;
  std::list<made> store;
  std::list<movepart*> alive;
};

// Takes parts of one source, and counts them by kind.
class sink {
 public:
  explicit sink(source& a_source, std::size_t kinds) : from(a_source), counts(kinds) {}
  sink(const sink&) = delete;
  sink& operator=(const sink&) = delete;

  // Counts the part and destroys it.
  void take(movepart& part);
  const int& count(std::size_t kind) const { return counts[kind]; }

 private:
  source& from;
  std::vector<int> counts;
};

// For hand_over() (handing.h).
inline void take(sink& to, movepart& part) { to.take(part); }
