#pragma once
// The forms helpers, all of them.

#include "bibliocpp/formspp/colour_drawing.h"
#include "bibliocpp/formspp/io_test_panels.h"
#include "bibliocpp/formspp/message_viewer.h"
#include "bibliocpp/formspp/string_dialogs.h"
#include "bibliocpp/formspp/viewer_display.h"
#include "bibliocpp/formspp/viewer_markup.h"
#include "bibliocpp/formspp/viewer_print.h"
#include "bibliocpp/formspp/viewer_text.h"
#include "bibliocpp/formspp/vision_sheet.h"
#include "bibliocpp/formspp/wait_form.h"
