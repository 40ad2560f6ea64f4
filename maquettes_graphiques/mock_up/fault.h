#pragma once
// What a plant says when its controller has done what must not be done.

#include <string>

// Shows the text, which is French, in a modal box, waits until the operator has closed it, and has the run
// end once its cycle is done. "%" stands in it as in a format without arguments. Several faults of one cycle
// have a box each.
// When the end of the run has been asked for from outside there is no box any more; in a cycle that is led
// there is none either: the leader is told.
void fault(const std::string& text);

// Whether there has been one: run_cycles() ends the run then.
bool run_has_failed();
