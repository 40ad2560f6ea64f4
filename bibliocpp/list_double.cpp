#include "bibliocpp/list_double.h"

list_double empty_list_double;
list_list_double empty_list_list_double;

template class std::list<double>;
template class std::list<std::list<double>>;

void list_double_inutile() {}
