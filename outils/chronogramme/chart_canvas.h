#pragma once
// The chart as a widget: wheel, drags and clicks change what it shows.

#include <FL/Fl_Group.H>
#include <FL/Fl_Scrollbar.H>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "outils/chronogramme/chart_drawing.h"
#include "outils/chronogramme/chart_view.h"

// Over the lines the wheel zooms about the pointer, a drag moves in time, a click of the left button sets
// cursor A, one of the right button or with Shift cursor B. Over the names the wheel scrolls, and a drag
// moves a line.
class chart_canvas : public Fl_Group {
 public:
  chart_canvas(int x, int y, int w, int h, const signal_record& a_record);

  chart_view view;
  std::string state;                    // what is written below
  std::function<void()> when_operated;  // after each change by the operator

  // What has to be drawn again, if anything, now that the record has grown.
  void record_grew(bool changed);
  struct pixels {
    int w, h;
    std::vector<unsigned char> rgb;
  };
  // As it is shown now, whatever covers the window.
  pixels picture();

  int handle(int event) override;

 protected:
  void draw() override;

 private:
  static constexpr int state_height = 22, bar_width = 14;
  chart_layout layout() const;
  void draw_at(int left, int top);
  void operated();
  bool turn_wheel();
  void drag();
  void let_go();

  const signal_record& record;
  Fl_Scrollbar bar;
  std::int64_t drawn_column = -1;

  struct grip {
    int x, last_x;
    bool moved;
    std::optional<std::size_t> name;  // the line that is held
  };
  std::optional<grip> held;
};
