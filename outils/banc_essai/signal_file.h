#pragma once
// Signal names from a text file.

#include "bibliocpp/list_String.h"

struct signal_names {
  list_String inputs;
  list_String outputs;
};

// A line of the file reads "entree NAME" or "sortie NAME"; empty lines are skipped. What an area cannot
// hold is refused: more than 41 names of a kind, a name of more than 49 bytes; so is a name given twice.
// A bad line, and a file without signals or that cannot be read, is reported on the standard error
// stream, a line with its number, and ends the process with status 2.
signal_names read_signals(const String& path);
