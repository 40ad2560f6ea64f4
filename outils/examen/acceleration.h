#pragma once
// Pauses of controllers made shorter, by libfaketime.

#include <string>

// Whether libfaketime is installed.
bool can_be_accelerated();

// Whether the file is a program without a dynamic linker, which nothing can be loaded into.
bool is_statically_linked(const std::string& program);

// In a process that is about to become the controller: its pauses, and those of what it starts in turn, take
// a `times`th of what they should. Its clocks run that much faster, too. 1: nothing is done.
void accelerate_pauses(int times);

// Removes what accelerated processes that were killed have left in /dev/shm, and only what belongs to no
// running process.
void remove_traces_of_acceleration();
