#pragma once
// The window: the chart, what an operator does to it, and the files he takes away.

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Light_Button.H>
#include <FL/Fl_Menu_Button.H>

#include <functional>
#include <string>

#include "outils/chronogramme/chart_canvas.h"
#include "outils/chronogramme/window_place.h"

class chart_window : public Fl_Double_Window {
 public:
  // `files`: how exported files are called, without their endings. `refresh` is called twenty times a
  // second: it may bring the record up to date, and says whether there was news, how the window is called
  // and what the state line is.
  struct news {
    bool changed = false;
    std::string title, state;
  };
  chart_window(const window_place& place, const signal_record& record, std::string files,
               std::function<news()> refresh);
  ~chart_window() override;

  int handle(int event) override;

 private:
  template <void (chart_window::*action)()>
  static void call(Fl_Widget*, void* window) {
    (static_cast<chart_window*>(window)->*action)();
  }
  static void tick(void* window);
  void look_again();
  void choose_follow();
  void choose_signals();
  void show_operation();
  void export_png();
  void export_vcd();
  void export_csv();
  void close();

  const signal_record& record;
  std::string files;
  std::function<news()> refresh;

  Fl_Group bar;
  Fl_Light_Button follow;
  Fl_Input filter;
  Fl_Check_Button only_changing;
  Fl_Menu_Button exports;
  Fl_Box space;
  Fl_Button quit;
  chart_canvas canvas;
};
