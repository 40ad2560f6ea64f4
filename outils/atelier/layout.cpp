#include "outils/atelier/layout.h"

#include <algorithm>

layout lay_out(const rectangle& usable, int plant_w, int plant_h, const frame& around) {
  constexpr int least_chart_w = 680, least_chart_h = 240, best_chart_w = 1600, best_chart_h = 900;
  const int borders_w = around.left + around.right;
  const int borders_h = around.top + around.bottom;
  const int plant_outer_w = plant_w + borders_w;
  const int plant_outer_h = plant_h + borders_h;
  const int right_w = usable.w - plant_outer_w - borders_w;
  const int below_h = usable.h - plant_outer_h - borders_h;
  if (below_h < least_chart_h && right_w >= least_chart_w)
    return {usable.x + around.left,
            usable.y + around.top,
            {usable.x + plant_outer_w + around.left, usable.y + around.top, std::min(right_w, best_chart_w),
             std::min(usable.h - borders_h, best_chart_h)}};
  const int chart_w = std::min(usable.w - borders_w, best_chart_w);
  return {usable.x + std::max(0, usable.w - plant_outer_w) / 2 + around.left,
          usable.y + around.top,
          {usable.x + (usable.w - borders_w - chart_w) / 2 + around.left,
           usable.y + plant_outer_h + around.top, chart_w, std::clamp(below_h, 1, best_chart_h)}};
}
