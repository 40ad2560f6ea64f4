#pragma once
// Values beside the charts: active steps with their time, inputs, outputs, variables, definitions. The wheel
// scrolls.

#include <FL/Fl_Widget.H>

#include <string>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"
#include "bibliocpp/grafcet_file/situation.h"

struct value_line {
  std::string name, value;
  bool heading = false, lit = false;
  bool operator==(const value_line&) const = default;
};
std::vector<value_line> values_of(const grafcet_file::program& charts, const grafcet_file::situation& now);

class values_panel : public Fl_Widget {
 public:
  values_panel(int x, int y, int w, int h) : Fl_Widget(x, y, w, h) {}
  // Draws itself anew where something has changed.
  void update(std::vector<value_line> lines);

  int handle(int event) override;

 protected:
  void draw() override;

 private:
  std::vector<value_line> shown;
  int scrolled = 0;  // lines
};
