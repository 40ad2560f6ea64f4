#include "maquettes_graphiques/mock_up/fault.h"

#include <FL/fl_ask.H>

#include "bibliocpp/formspp.h"
#include "maquettes_graphiques/mock_up/led_cycle.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "maquettes_graphiques/mock_up/unseen_drawing.h"

namespace {
bool failed = false;
}

void fault(const std::string& text) {
  failed = true;
  if (led())
    tell_leader("fault " + text);
  else if (!run_end_requested()) {
    const seen_drawing shown;  // a cycle may be in the midst of moving its scene
    fl_close = "Fermer";  // as the texts are French, whatever the locale; no other box comes before the end
    fl_show_Smessages(text);
  }
}

bool run_has_failed() { return failed; }
