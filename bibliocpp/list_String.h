#pragma once
// Lists of texts.

#include "bibliocpp/Stringpp.h"
#include "bibliocpp/list.h"

using list_String = std::list<String>;

// Default argument for "no list": empty from the start of the program, never to be filled.
extern list_String empty_list_String;

// Writes each text as its characters, without quotes.
extern template std::ostream& operator<<(std::ostream&, list_String&);

// Exists beside those of the other lists; does nothing. Programs do not call it.
void list_String_inutile();
