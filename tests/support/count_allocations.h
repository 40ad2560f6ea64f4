#pragma once
// Calls of operator new since the program began, of all threads. Programs that look at it are built with
// count_allocations.cpp, which replaces the operator.
long allocations();
