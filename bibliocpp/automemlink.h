#pragma once
// The command line that a plant starts its controller with.

// The area's identifier from the last two arguments, "-automemlink" and a decimal number without sign
// that fits an int; whatever stands before them is the controller's own. Anything else writes
// "usage: <program> [...] -automemlink <ident>" to the standard error stream and ends the process with
// status 2.
int automemlink(int argc, char** argv);

// How many of the arguments, the program's name among them, are its own: all but these two; all where the
// last but one is not "-automemlink". Ends nothing, and does not look at the number.
int own_arguments(int argc, char** argv);
