#pragma once
// FLTK's modal boxes and a few widget calls for standard strings.
//
// Texts are UTF-8. The boxes are modal: each call returns when the operator closes its box, and
// meanwhile nothing of the caller runs but timeouts and the like.

#include <FL/Enumerations.H>

#include <string>

class Fl_Widget;

// --- Boxes ---

// Shows a message. The text is a printf format without arguments: a literal percent sign is written
// twice.
void fl_show_Smessages(const std::string& text);

// The same as an alert; the text is a printf format too.
void fl_show_Salert(const std::string& text);

// Shows the credits.
void fl_show_ms();

// Asks a question, with the texts of FLTK's fl_no and fl_yes on the buttons: 1 for yes, 0 for no, for
// Escape and for a closed box. The number is ignored.
int fl_show_Squestion(const std::string& text, int);

// Asks for a text; an empty one when the operator cancels, whatever `initial` is.
std::string fl_show_Sinput(const std::string& prompt, const std::string& initial);

// Ask for a number, in C notation; what follows it is ignored. Return `initial` when the operator
// cancels and when the answer is no number or, for an int, does not fit.
int fl_show_int(const char* prompt, int initial);
double fl_show_double(const char* prompt, double initial);
double fl_show_double(const std::string& prompt, double initial);

// Shows a text of any length, a line to each of its lines, in a list `width` characters (6 pixels each)
// wide; "save" writes the text as it stands to a file that the operator chooses ("*.txt"), replacing
// what was there. A file that cannot be written is silently left alone. Returns after "Quit", or when
// the window is closed. Lines that begin with "@" are read as Fl_Browser formats.
void fl_show_Sbigmessages(const std::string& text, int width);

// --- Widgets: each must be of the class that its call is named after ---

// Sets the text of an Fl_Input.
void fl_set_Sinput(Fl_Widget* input, const std::string& text);

// Labels any widget with the first n bytes of the text, with all of it when n is negative or not less
// than its length. The widget keeps a copy.
void fl_set_object_Slabel(Fl_Widget* w, const std::string& text, int n);

// A new text of the Forms library (Fl_FormsText) in the current group, its label left of the box unless
// `align` is changed. The widget keeps a copy of the label.
Fl_Widget* fl_add_Stext(Fl_Boxtype type, int x, int y, int w, int h, const std::string& label);

// Appends a line to an Fl_Browser, or replaces its line n, counted from 1; a line that does not exist is
// left alone.
void fl_add_browser_Sline(Fl_Widget* browser, const std::string& line);
void fl_replace_browser_Sline(Fl_Widget* browser, int n, const std::string& line);

// --- Drawing ---

// Draws the text into the box x, y, w * h of the current window, "@" symbols included. Leaves the
// font set.
void fl_drw_String(Fl_Align align, int x, int y, int w, int h, Fl_Color colour, int size, Fl_Font style,
                   const std::string& text);
