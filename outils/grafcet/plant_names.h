#pragma once
// The signals of a plant that does not run.

#include <string>

#include "bibliocpp/grafcet_file/parser.h"

// Those of share/signaux/NAME.txt, or of a file when the name holds a "/"; lines as of banc_essai's
// --signaux. A name that is unknown and a bad file are told and end the process with status 2.
grafcet_file::plant_signals signals_of(const std::string& plant);
