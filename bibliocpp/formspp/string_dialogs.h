#pragma once
// FLTK's modal boxes for standard strings.

#include <string>

// Shows a modal message box and returns when the operator closes it. The text is a printf format
// without arguments: a literal percent sign is written twice.
void fl_show_Smessages(const std::string& text);

// Shows the credits in a modal box.
void fl_show_ms();
