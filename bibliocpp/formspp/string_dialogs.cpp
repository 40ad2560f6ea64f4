#include "bibliocpp/formspp/string_dialogs.h"

#include <FL/fl_ask.H>

#include "bibliocpp/Stringpp.h"

// A text used as the format is what these boxes promise.
#pragma GCC diagnostic ignored "-Wformat-security"

void fl_show_Smessages(const std::string& text) {
  char* const copy = Stoa(text);
  fl_message(copy);
  delete[] copy;
}

void fl_show_ms() { fl_message("Created by the wagons authors\n\nThe wagons project"); }
