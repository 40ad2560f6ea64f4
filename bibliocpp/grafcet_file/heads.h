#pragma once
// A step with its actions, or a transition with its receptivity, as shapes: the parts of a layout.

#include <string>
#include <string_view>
#include <vector>

#include "bibliocpp/grafcet_file/layout.h"

namespace grafcet_file {

// Shapes about an axis x = 0, along which lines come from above (y = 0) and leave below (y = bottom). They
// keep between -left and right.
struct head {
  double left = 0, right = 0, bottom = 0;
  drawing shapes;
};
head step_head(const program& charts, int step, const measure_text& width_of);
// `number`, if any, is what references call it.
head transition_head(const program& charts, int transition, const std::string& number,
                     const measure_text& width_of);

// Adds shapes, moved by that.
void put(drawing& into, const drawing& shapes, spot by);
void put_line(drawing& into, std::vector<spot> points, bool is_double = false, bool arrow = false);
// Text from its upper left corner; gives its width.
double put_text(drawing& into, drawn_text text, spot from, const measure_text& width_of);
// Lines that are no wider, as long as words allow it.
std::vector<std::string> wrapped(std::string_view text, text_style style, double width,
                                 const measure_text& width_of);

}  // namespace grafcet_file
