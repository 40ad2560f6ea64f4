#pragma once
// Charts as shapes on a sheet: what the layout makes, and a painter puts on paper or on a screen.
//
// Units are those of the measured texts: pixels of a screen at full size, points on paper. x grows to the
// right, y downwards. Indexes are those of the program, none where there is nothing to tell.

#include <string>
#include <vector>

#include "bibliocpp/grafcet_file/chart.h"

namespace grafcet_file {

struct spot {
  double x = 0, y = 0;
};

struct zone {
  double x = 0, y = 0, w = 0, h = 0;
};

// Titles of charts, labels of steps, receptivities and actions, comments, and words for links that are not
// drawn.
enum class text_style { title, label, body, comment, reference };

struct drawn_text {
  zone where;  // one line of text
  std::string words;
  text_style style = text_style::body;
  int step = none, transition = none, action = none;  // what it belongs to
  bool above = false;                                 // an action's condition or event, above its box
};

struct drawn_step {
  int step = none;
  zone where;
};

struct drawn_transition {
  int transition = none;
  zone bar;
};

// What goes before the text in the box of an action, or stands on it.
enum class action_mark { plain, condition, activation, deactivation, event, forcing };

struct drawn_action {
  int step = none, action = none;
  zone where;
  action_mark mark = action_mark::plain;
};

struct drawn_line {
  std::vector<spot> points;
  bool is_double = false;  // a second line runs below, at a distance of double_gap
  bool arrow = false;      // at the last point
};
constexpr double double_gap = 4;

struct drawn_chart {
  int chart = none;
  zone where;           // with its title
  bool framed = false;  // what an enclosing step holds stands in a frame
  zone frame;
};

struct drawing {
  std::vector<drawn_chart> charts;
  std::vector<drawn_step> steps;
  std::vector<drawn_transition> transitions;
  std::vector<drawn_action> actions;
  std::vector<drawn_line> lines;
  std::vector<drawn_text> texts;
  double width = 0, height = 0;
};

}  // namespace grafcet_file
