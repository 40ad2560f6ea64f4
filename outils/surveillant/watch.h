#pragma once
// A controller under watch, from its start to its end.

#include <sys/types.h>

#include "bibliocpp/area_view.h"
#include "outils/child_processes/signal_inbox.h"

// Tells what becomes of `controller`, a child of this process, until it has ended. When the plant has ended
// it gets a second to leave by itself, then SIGTERM, after another second SIGKILL; a signal that asks this
// process to end does the same. The area of a plant that was killed is removed. The controller's exit
// status; 128 and the number of the signal that killed it.
int watch(pid_t controller, const area_view& area, const signal_inbox& signals);

// Removes the area when its plant is gone without having ended the exchange: nobody else will. Whether it
// was so.
bool remove_if_plant_was_killed(const area_view& area);
