#pragma once
// What a run has left, as lines for people; each harmless and cut (harmless.h).

#include <string>
#include <vector>

#include "outils/examen/verdict.h"

// What happened and when, a line each: "   12.345 s  pcA is forced to 0"; of a long run the last ones.
std::vector<std::string> happened(const verdict& v, std::size_t most = 40);

// The end of its standard error; none when there is none.
std::vector<std::string> last_errors(const verdict& v, std::size_t most = 20);
