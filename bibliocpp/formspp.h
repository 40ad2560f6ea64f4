#pragma once
// The forms helpers, all of them.

#include "bibliocpp/formspp/colour_drawing.h"
#include "bibliocpp/formspp/io_test_panels.h"
#include "bibliocpp/formspp/string_dialogs.h"
#include "bibliocpp/formspp/vision_sheet.h"
#include "bibliocpp/formspp/wait_form.h"
