#pragma once
// The polling cycle of a mock-up, from its first pass to the end of the run.

#include <FL/Fl_Window.H>

#include <functional>

class IOsharemem_server;

// Calls cycle() at least once, and again as long as goes_on() then says so, there has been no fault() and
// nobody has asked for the end of the run (run_end.h), with a pause of 5 milliseconds after each: there is no
// fixed period. A cycle that is led (led_cycle.h) waits for leave instead. Then hides the window, if it is
// still shown, and ends the exchange in `area`, which may be null. cycle() is to begin with Fl::check(), and
// to draw only if the window is still shown after that.
void run_cycles(Fl_Window& window, IOsharemem_server* area, const std::function<void()>& cycle,
                const std::function<bool()>& goes_on);
