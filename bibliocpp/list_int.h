#pragma once
// Lists of integers, and lists of them.

#include "bibliocpp/list.h"

using list_int = std::list<int>;
using list_list_int = std::list<list_int>;

// Default arguments for "no list": empty from the start of the program, never to be filled.
extern list_int empty_list_int;
extern list_list_int empty_list_list_int;

extern template int item_where(list_int&, const int&);
extern template int item_where(list_list_int&, const list_int&);
extern template int read_number(list_int&, int);
extern template void replace_number(list_int&, int, const int&);
extern template std::ostream& operator<<(std::ostream&, list_int&);
extern template list_int* array_convert(list_list_int&);

// Shows the operations at work on the standard error stream. Programs do not call it.
void list_int_inutile();
