#pragma once
// Lists of doubles, and lists of them.

#include "bibliocpp/list.h"

using list_double = std::list<double>;
using list_list_double = std::list<list_double>;

// Default arguments for "no list": empty from the start of the program, never to be filled.
extern list_double empty_list_double;
extern list_list_double empty_list_list_double;

extern template class std::list<double>;
extern template class std::list<std::list<double>>;

// Exists beside those of the other lists; does nothing. Programs do not call it.
void list_double_inutile();
