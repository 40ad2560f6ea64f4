#pragma once
// A sheet of the current window: a rectangle that clips everything drawn through it.

#include <FL/Enumerations.H>

#include "bibliocpp/Stringpp.h"

// Coordinates are pixels of the current window, not of the sheet, y growing downwards. Each operation
// draws in the colour of its call and leaves the current colour as it last set it. A sheet without
// width or height, as it is before define(), clips nothing. A sheet is a value; it draws while a
// window is current: inside draw(), or after make_current().
class OFL_vision_sheet {
 public:
  OFL_vision_sheet() = default;

  // The sheet's place. The colour is kept with it and not drawn with.
  void define(int x, int y, int w, int h, Fl_Color colour);
  void resize(int x, int y, int w, int h);

  // Lines from (x1, y1) to (x2, y2), both ends drawn; the second is dashed.
  void ofl_line(int x1, int y1, int x2, int y2, Fl_Color colour);
  void ofl_dash_line(int x1, int y1, int x2, int y2, Fl_Color colour);
  // A zigzag in three strokes: it leaves the straight way by half of its length at the first and at the
  // third quarter, on opposite sides.
  void ofl_break_line(int x1, int y1, int x2, int y2, Fl_Color colour);

  // Rectangles, outlined, filled, and filled with a black outline.
  void ofl_rect(int x, int y, int w, int h, Fl_Color colour);
  void ofl_rectf(int x, int y, int w, int h, Fl_Color colour);
  void ofl_rectbound(int x, int y, int w, int h, Fl_Color colour);

  // The same for circles of diameter d with their bounding square's top-left corner at (x, y).
  void ofl_circ(int x, int y, int d, Fl_Color colour);
  void ofl_circf(int x, int y, int d, Fl_Color colour);
  void ofl_circbound(int x, int y, int d, Fl_Color colour);

  // A sector of 40 degrees that opens backwards, from (x2, y2) to (x1, y1), of a circle whose radius is
  // the distance between the two. The circle's bounding square has its top-left corner at (x2, y2):
  // the tip deliberately lies one radius to the right of and below that point. Leaves black current.
  void ofl_arrowbound(int x1, int y1, int x2, int y2, Fl_Color colour);

  // A line from (x1, y1) that ends in a filled triangle with its tip at (x2, y2). The head is
  // `head_length` pixels long and opens by 40 degrees, which makes it 0.73 times as wide; the line is
  // `line_width` pixels wide (0: as thin as can be) and ends where the head begins, so that it never
  // shows past the tip. A head longer than the way stands alone. Between two equal points the head
  // points to the right.
  void ofl_drw_arrow_line(int x1, int y1, int x2, int y2, Fl_Color colour, double head_length,
                          int line_width);

  // Texts in the box x, y, w * h, "@" symbols included. The two take size and font in opposite order and
  // draw alike. Both leave the font set.
  void ofl_drw_text(Fl_Align align, int x, int y, int w, int h, Fl_Color colour, int size, Fl_Font font,
                    const char* text);
  void ofl_drw_String(Fl_Align align, int x, int y, int w, int h, Fl_Color colour, Fl_Font font, int size,
                      const String& text);

 private:
  template <typename Draw>
  void draw_clipped(Fl_Color colour_of_call, Draw draw) const;

  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  Fl_Color sheet_colour = FL_BLACK;
};
