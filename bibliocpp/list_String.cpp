#include "bibliocpp/list_String.h"

list_String empty_list_String;

template std::ostream& operator<<(std::ostream&, list_String&);

void list_String_inutile() {}
