#pragma once
// The simulator's window: the scene on the left, the control desk and the program's own buttons on
// the right, the speed rollers below the scene.

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Roller.H>

#include <functional>

// Builds and lays out the widgets, and nothing else: who runs the mine shows the window, polls the
// widgets and draws the scene. The window (925 * 400 pixels) is not shown yet; its user data is this
// object. Widgets live as long as the program, also when this object goes.
class mine_class {
 public:
  mine_class();

  // What stands in the scene: from now on painted with every repaint of the window, so that it stays on
  // screen while a modal box keeps the cycle from drawing (see scene_window).
  void paint_with_window(std::function<void()> paint);

  Fl_Double_Window* mine;
  Fl_Box* simul;  // the scene: 705 * 380 at (10, 10); its colour is the scene's background
  Fl_Button* bouton_about;
  Fl_Button* bouton_quit;
  Fl_Button* bouton_intervention;  // empties all wagons by hand
  // The control desk: momentary buttons, to be polled with fl_get_button().
  Fl_Button* bouton_ac;    // stop cycle
  Fl_Button* bouton_dc;    // start cycle
  Fl_Button* bouton_atu;   // emergency stop
  Fl_Button* bouton_init;  // initialisation
  Fl_Button* bouton_redraw;
  // Speeds in pixels a cycle; ranges and values are set by who runs the mine.
  Fl_Roller* reglage_vitesse_A;
  Fl_Roller* reglage_vitesse_B;
  Fl_Roller* reglage_vitesse_C;
};
