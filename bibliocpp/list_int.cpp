#include "bibliocpp/list_int.h"

#include <iostream>

list_int empty_list_int;
list_list_int empty_list_list_int;

template int item_where(list_int&, const int&);
template int item_where(list_list_int&, const list_int&);
template int read_number(list_int&, int);
template void replace_number(list_int&, int, const int&);
template std::ostream& operator<<(std::ostream&, list_int&);
template list_int* array_convert(list_list_int&);

void list_int_inutile() {
  list_int l{1, 2, 3};
  std::cerr << "item_where de 3 " << item_where(l, 3) << std::endl;
  std::cerr << "taille " << l.size() << std::endl;
  std::cerr << "read_number " << read_number(l, 2) << std::endl;
  std::cerr << "avant " << l << std::endl;
  replace_number(l, 1, 10);
  std::cerr << "apres " << l << std::endl;
}
