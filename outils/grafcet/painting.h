#pragma once
// Charts painted with cairo: on paper, into a picture or into a window, always alike.

#include <cairo.h>

#include "bibliocpp/grafcet_file/drawing.h"
#include "bibliocpp/grafcet_file/layout.h"
#include "bibliocpp/grafcet_file/situation.h"

// Widths of texts as they are painted.
grafcet_file::measure_text painted_widths();

struct colour {
  double r, g, b;
};
constexpr colour active_step{1, 204 / 255.0, 51 / 255.0}, done_action{1, 235 / 255.0, 153 / 255.0},
    true_receptivity{0, 140 / 255.0, 26 / 255.0};

// At the size that the surface is scaled to.
void paint(cairo_t* surface, const grafcet_file::program& charts, const grafcet_file::drawing& drawn);
// Over that: active steps, actions that are done, and true receptivities and conditions in their colours.
void paint_lit(cairo_t* surface, const grafcet_file::program& charts, const grafcet_file::drawing& drawn,
               const grafcet_file::situation& now);

// For texts of the surface's owner, in the same letters.
void choose_letters(cairo_t* surface, grafcet_file::text_style style);
