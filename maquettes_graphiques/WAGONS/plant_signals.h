#pragma once
// The area in which the mine's signals are exchanged with its controller.

#include <cstdint>

#include "maquettes_graphiques/WAGONS/mine_signals.h"

class IOsharemem_server;

// Output k as read by the last actuator_set().
extern std::int32_t actionneur[sortie::count];

// Creates the area of the mine and starts the controller command `param` (see
// share_with_controller). An empty command gives null, after three lines on the standard error
// stream: "ERREUR de parametre:", " wagons <controleur>" and an empty one.
IOsharemem_server* init_partage_mem(const char* param);

// Reads all outputs into `actionneur`, in order.
void actuator_set(IOsharemem_server* mem);

// Half-seconds since midnight UTC, 0 to 172799. The name promises tenths; users of this service
// rely on halves.
long heure10();
