#pragma once
// Charts as the controller of a plant.

#include <cstdint>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/grafcet_file/chart.h"
#include "outils/grafcet/shared_situation.h"

// Evolves with every batch of inputs until the plant ends the run or is gone. Outputs that fall are written
// before those that rise: the plant may look in between. A situation that never becomes stable is told once
// on the standard error stream, and again when it comes back after a while.
//
// Time is the machine's, from the first batch on; with a period in microseconds that is not 0 it is the
// area's clock times the period: the same for the same batches, whatever the machine does.
//
// A view gets what it asks for, after the answer.
void control(IOsharemem_client& area, int ident, const grafcet_file::program& charts, std::int64_t period_us,
             shared_situation* shown = nullptr);
