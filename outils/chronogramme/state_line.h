#pragma once
// What the line below the chart says.

#include <string>

#include "outils/chronogramme/chart_view.h"
#include "outils/chronogramme/recording.h"

// "chronogramme - " and what is shown, with the plant's state unless it is running.
std::string title_of(const std::string& shown, plant_state state = plant_state::running);
// `plant`: its name and number.
std::string plant_line(const std::string& plant, const plant_figures& figures, std::int64_t missed);
// Of a record that is finished.
std::string file_line(const std::string& file, const signal_record& record);
// Where the cursors stand, and the time from A to B; empty without any.
std::string cursor_line(const chart_view& view);
