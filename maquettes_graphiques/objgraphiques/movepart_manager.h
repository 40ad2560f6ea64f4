#pragma once
// The registry of a scene's moving parts. It answers whether parts overlap and whether a place is
// occupied; it does not own the parts, which enter and leave it by themselves.

#include <FL/forms.H>

#include <array>

class movepart;

class movepart_manager {
 public:
  movepart_manager();
  movepart_manager(const movepart_manager&) = delete;
  movepart_manager& operator=(const movepart_manager&) = delete;

  // Enters a part. The 101st ends the process with status 1 after "too many part !". A null entry counts
  // and is passed over everywhere; a part entered twice stands in its own way.
  void addpart(movepart* ppart);
  // Takes a part out; one that is not there is ignored. Of two entries of the same part in a row
  // the second stays.
  void suppart(movepart* ppart);

  // 1 when a box of p overlaps a box of another registered part, carried parts and carriers
  // included (but for those of movepart::carry()), else 0. Bases are truncated to whole pixels before the
  // offsets are added, and sums again; boxes that only touch do not overlap. When p is not registered the
  // process ends with status 1 after "collision: erreur interne !" and p's address on the next line.
  int collision(movepart* p);

  // The first part of which a box overlaps the rectangle, by the same measure; null when none does.
  movepart* part_in(FL_Coord x, FL_Coord y, FL_Coord w, FL_Coord h) const;

  // 1 when the pixel lies in a box of some part, else 0. Unlike in collision(), bases and offsets
  // are truncated separately, and the pixels just right of and just below a box count.
  int busy_position(FL_Coord xtest, FL_Coord ytest);
  // The same, after drawing a black cross of 50 pixels each way there, in the current window.
  int busy_position_debug(FL_Coord xtest, FL_Coord ytest);

  // Draws every part, in order of registration.
  void draw();
  // Paints every part into whatever is current, for a repaint from inside a widget's draw().
  void paint() const;
  // Lets every part that is not carried fall by one pixel, in order of registration, so that a part
  // resting on one that registered later may follow it only at the next call.
  void parts_fall();

 private:
  static bool may_overlap(const movepart& a, const movepart& b);
  template <typename Found>
  static bool any_box_of(const movepart& part, Found found);

  static constexpr int capacity = 100;
  int number = 0;
  std::array<movepart*, capacity> tab{};
};
