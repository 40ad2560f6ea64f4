#pragma once
#include <ostream>
#include <string>
#include <vector>

#include "outils/examen/verdict.h"

// The verdicts as a JUnit file, which pipelines read: a suite named `title` with a case for each candidate,
// of the class `plant`. What did not pass is a failure, what could not be judged an error; the real seconds
// are the time, and the end of the standard error goes along.
void write_junit(std::ostream& file, const std::string& title, const std::string& plant,
                 const std::vector<verdict>& all);
