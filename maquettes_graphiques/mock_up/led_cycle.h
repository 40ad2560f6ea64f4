#pragma once
// A mock-up's cycle led from outside, over two pipes and lines of text: by a test, an exam, a debugger.
// doc/leading-a-mock-up.md describes the lines; a mock-up that is built on run_cycles(),
// share_with_controller() and fault() needs nothing more.
//
// The cycle is led when the environment holds MOCK_UP_LED=<in>,<out>, two open file descriptors. Otherwise
// nothing here is done. The variable is taken out of the environment, and no program that is started from
// here inherits the descriptors. Where the text is not that, a message and status 1 end the process.

#include <FL/Fl_Window.H>

#include <string>

bool led();

// Writes a line, given without its end; line breaks in it become "\n", backslashes "\\", two characters
// each. A leader that has gone is noticed at the next pause.
void tell_leader(const std::string& line);

// Instead of the pause that ends a cycle: says that the cycle is done, and obeys what the leader writes until
// that is leave for the next one, or the run is to end; a leader that has gone ends it too. Buttons and
// valuators of `window` are found by their labels. The window is kept painted meanwhile.
void pause_for_leader(Fl_Window& window);
