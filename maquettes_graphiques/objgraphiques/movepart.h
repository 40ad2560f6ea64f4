#pragma once
// A rigid part of a scene: coloured boxes around a movable base point. It can carry one other part,
// and a registry (movepart_manager) refuses the moves that would make it overlap another part.
//
// Positions are pixels of the part's window, y growing downwards; they are kept as doubles, so that
// moves of a fraction of a pixel add up, and rounded or truncated only to draw and to test.
// Everything runs on the thread that owns the window and draws at once, outside any draw(): each
// drawing operation makes the window current first.

#include <FL/forms.H>

#include <list>
#include <ostream>

class movepart_manager;

class movepart {
 public:
  // A part without boxes, base point (0, 0), entered in the registry `man`, which must outlive it.
  // `background` is the colour behind the part, with which it erases itself.
  movepart(movepart_manager& man, FL_FORM* form, Fl_Color background);
  // A part to be completed by define(); until then only add(), link() and the queries are allowed.
  movepart();
  // Completes a part made without arguments.
  void define(movepart_manager& man, FL_FORM* form, Fl_Color background);
  // Copies have the same boxes, window and linked part, but are not entered in the registry: they
  // cannot move, and only one of the two may still own the linked part when they are destroyed.
  movepart(const movepart&) = default;
  movepart& operator=(const movepart&) = default;
  // Leaves the registry, erases itself and what it carries while the window is shown, and destroys
  // the part it carries, which must have been made with new: call unlink() first to keep it. What it
  // carries by carry() is left alone; and whoever carries this part forgets it.
  ~movepart();

  // Appends a box l * h pixels in colour c, its top-left corner at (x, y) from the base point.
  void add(double x, double y, FL_Coord l, FL_Coord h, Fl_Color c);

  // Carries p from now on; chains are possible. Takes ownership, see the destructor.
  void link(movepart* p);
  // The same without ownership, for parts that come and go: whichever of the two is destroyed first, the
  // other stays, and they do not stand in each other's way, so that what stands on a platform goes down
  // with it. A part has one carrier: the one before lets go of it.
  void carry(movepart* p);
  // Carries nothing any more; what was carried is the caller's again.
  void unlink();
  movepart* part_have_link() const { return nextpart; }
  // 1 while another part carries this one.
  int is_linked() const { return linked; }
  Fl_Color my_background_color() const { return background_color; }

  // Paints the boxes, then the carried part in its own window. Like every drawing operation it needs a
  // shown window.
  void draw();
  // Erases the boxes, then the carried part.
  void undraw();
  // Paints as draw() does into whatever is current, for a repaint from inside a widget's draw().
  void paint() const;

  // Moves by (dx, dy) and redraws only what changed: the strip uncovered, and the boxes at their new
  // place. The carried part moves first. Returns 1, with nothing moved, when the carried part or the
  // part itself would overlap another part of the registry; else 0.
  int moveredraw(double dx, double dy);
  // Moves so that the boxes' smallest offsets come to (x, y), erasing and painting whole boxes at
  // truncated positions. Returns 1, at the old place, when another part is in the way; else 0. The
  // carried part stays where it is. Offsets above 2000 count as 2000.
  int absmoveredraw(double x, double y);
  // Falls by one pixel unless it is carried or something is in the way.
  void fall();

  // The box around the boxes: smallest x and y, largest x + width and y + height. Scans start at
  // 2000 and -2000, so a part without boxes gives the base + 2000 or - 2000, but for first_xpos,
  // which then writes "ERREUR dans movepart::actual_precision_first_xpos()", "LISTE DE <address>
  // ANORMALEMENT VIDE !!!" and an empty line and ends the process with status 1.
  double actual_precision_first_xpos() const;
  double actual_precision_first_ypos() const;
  double actual_precision_last_xpos() const;
  double actual_precision_last_ypos() const;
  // The same, truncated towards zero.
  FL_Coord actual_first_xpos() const;
  FL_Coord actual_first_ypos() const;
  FL_Coord actual_last_xpos() const;
  FL_Coord actual_last_ypos() const;

 private:
  friend class movepart_manager;
  friend std::ostream& operator<<(std::ostream& out, movepart& part);
  friend int vertical_part_dist(movepart& p1, movepart& p2);

  // The one walk over the boxes: calls found(x, y, l, h, colour) for each, in the order of add(), until it
  // returns true; tells whether it did.
  template <typename Found>
  bool any_box(Found found) const {
    auto y = lypos.begin();
    auto l = llbox.begin();
    auto h = lhbox.begin();
    auto colour = lcolor.begin();
    for (const double x : lxpos)
      if (found(x, *y++, *l++, *h++, static_cast<Fl_Color>(*colour++))) return true;
    return false;
  }
  template <typename Paint>
  void for_each_box(Paint paint_box) const {
    any_box([&](double x, double y, int l, int h, Fl_Color colour) {
      paint_box(x, y, l, h, colour);
      return false;
    });
  }
  void become_carrier_of(movepart* p, bool its_owner);
  bool has_aboard(const movepart& other) const;
  void paint_boxes() const;
  void redraw_moved(double oldx, double oldy, double dx, double dy) const;
  void fill_boxes_truncated(bool erase) const;

  FL_FORM* associate_forms = nullptr;
  Fl_Color background_color = 0;
  double xpos_base = 0.0;
  double ypos_base = 0.0;
  movepart_manager* pman = nullptr;
  // Parallel lists: element i of each describes box i.
  std::list<double> lxpos;
  std::list<double> lypos;
  std::list<int> llbox;
  std::list<int> lhbox;
  std::list<int> lcolor;
  FL_OBJECT* internal_ob = nullptr;  // reserved
  movepart* nextpart = nullptr;
  int linked = 0;
  // From the base point to the outermost edges of the boxes: what a collision test looks at first.
  struct {
    double left = 0.0, top = 0.0, right = 0.0, bottom = 0.0;
  } around;
  bool owns_next = false;
  // Who carries this part; not copied, as a copy is not carried.
  struct back_pointer {
    movepart* to = nullptr;
    back_pointer() = default;
    back_pointer(const back_pointer&) {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
    back_pointer& operator=(const back_pointer&) { return *this; }
  } carrier;
};

// "coords <x> <y>" with the base point, then x offsets, y offsets, widths, heights and colours, a
// line each in the form "(1, 2, 3)".
std::ostream& operator<<(std::ostream& out, movepart& part);

// Height of the gap between two parts, in whole pixels (truncated), wherever they stand
// horizontally; 0 when their vertical spans touch or overlap.
int vertical_part_dist(movepart& p1, movepart& p2);
