#pragma once
// Charts laid out as IEC 60848 draws them: sequences from above to below, selections and simultaneous
// sequences side by side, single lines for the ones, double lines for the others.
//
// A sequence that goes back is drawn with an arrow where its line crosses nothing; any other link that would
// is told in words, at its end: "→ 12" for a step, "→ (3)" for a transition, which bears that number then.

#include <functional>
#include <string_view>
#include <vector>

#include "bibliocpp/grafcet_file/drawing.h"

namespace grafcet_file {

// How wide a text is in a style. One line is line_height high in every style.
using measure_text = std::function<double(std::string_view, text_style)>;
constexpr double line_height = 14;

// The charts of a program, or only some of them. The program may be any that the parser gives, also one that
// cannot be run. Nothing overlaps, and the same program always gives the same drawing. Charts stand in rows
// or columns, on a sheet about `aspect` times as wide as it is high.
drawing lay_out(const program& charts, const measure_text& width_of, double aspect = 1.4,
                const std::vector<int>& only = {});

}  // namespace grafcet_file
