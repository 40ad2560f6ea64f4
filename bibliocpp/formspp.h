#pragma once
// The forms helpers, all of them.

#include "bibliocpp/formspp/colour_drawing.h"
#include "bibliocpp/formspp/string_dialogs.h"
