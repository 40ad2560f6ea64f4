#pragma once
// Charts that evolve when their operator wants it, beside a plant that waits for them.

#include "bibliocpp/IOshare.h"
#include "bibliocpp/grafcet_file/chart.h"
#include "outils/grafcet/shared_situation.h"
#include "outils/led_plant/led_plant.h"

// The area of a plant that has just been started. Throws std::runtime_error when it ends without one.
int area_of(led_plant& plant);

// Until the plant ends. A wish for one step is one evolution; after the last one of a batch the plant goes
// one cycle, of 5 ms in the time of the charts, and its inputs are evolved with. Runs at the plant's usual
// pace between a wish to run and one to pause, and from the end of `wishes` on (view.h).
void lead(led_plant& plant, IOsharemem_client& area, const grafcet_file::program& charts,
          shared_situation& shown, int wishes);
