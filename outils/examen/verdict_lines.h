#pragma once
// A verdict on its way from an exam's process to the program that holds the exams.

#include <string>

#include "outils/examen/verdict.h"

std::string to_lines(const verdict& v);
// `v` as it was, with what the lines say in place of what it said; false when they are not whole.
bool from_lines(const std::string& text, verdict& v);
