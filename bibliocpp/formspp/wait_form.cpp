#include "bibliocpp/formspp/wait_form.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/forms.H>

#include "bibliocpp/formspp/current_group.h"
#include "bibliocpp/formspp/string_dialogs.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers know it with a text by value
OFD_wait_form::OFD_wait_form(String message) {
  const current_group none(nullptr);
  window = new Fl_Window(600, 60);
  window->box(FL_NO_BOX);
  auto* const background = new Fl_Box(0, 0, 600, 60, "");
  background->box(FL_UP_BOX);
  Fl_Widget* const text = fl_add_Stext(FL_NO_BOX, 10, 10, 580, 40, message);
  text->align(FL_ALIGN_INSIDE);
  text->labelsize(FL_NORMAL_SIZE);
  fl_end_form();
  fl_show_form(window, FL_PLACE_MOUSE, FL_TRANSIENT, "travail en cours ...");
  Fl::check();
  // The display asks for the first painting only once it has mapped the window.
  for (int slices = 0; window->damage() != 0 && slices < 100; ++slices) Fl::wait(0.01);
}

OFD_wait_form::~OFD_wait_form() {
  delete window;
  Fl::flush();  // it goes now, not when the caller looks for events again
}
