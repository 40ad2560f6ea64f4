#pragma once
// Charts on paper: files that other programs show.

#include <string>

#include "bibliocpp/grafcet_file/chart.h"

// Both throw std::runtime_error with the path and the reason; a file that is there stays as it is then.

// All charts in one picture, letters as outlines: it looks the same wherever it is shown.
void write_svg(const std::string& path, const grafcet_file::program& charts);
// On pages of A4, upright or lying, as many charts on a page as can be read, and none larger than on the
// screen.
void write_pdf(const std::string& path, const grafcet_file::program& charts, const std::string& title);
