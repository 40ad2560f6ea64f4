#pragma once
// Many exams, some of them at once, each a process of its own.

#include <functional>
#include <string>
#include <vector>

#include "outils/examen/exam.h"
#include "outils/examen/verdict.h"

constexpr const char* exam_option = "--un-examen";  // of `examen`, the first

// The verdicts in the order of the exams; `tell` gets each one as it comes. Exams that are `boxed` run in a
// box (sandbox.h); `needed` are paths to be seen there. Of the others nothing is left either, as far as this
// process lives. SIGTERM, SIGINT and SIGHUP end all exams: those that are not over are not judged.
std::vector<verdict> hold_exams(const std::vector<exam_order>& orders, int at_once, const std::string& self,
                                const std::vector<std::string>& needed,
                                const std::function<void(const verdict&)>& tell);

// What the process of an exam does with the words after the option.
int hold_one_exam(const std::vector<std::string>& words, const std::string& self);
