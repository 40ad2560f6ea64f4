// commande_manuelle -automemlink <ident>: a controller played by hand. Named on a mock-up's command line,
// it shows the plant's sensors as lamps and sets its actuators by check marks. Ends with the run; ending it
// first, by QUIT or by a signal, stops every actuator.

#include <algorithm>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/automemlink.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "outils/hand_panel/hand_panel.h"

namespace {

// The plant may look at any moment: everything that ends is dropped before anything begins.
void write(IOsharemem_client& area, const list_String& actuators, const std::vector<int>& values) {
  for (const int level : {0, 1}) {
    auto value = values.begin();
    for (const String& name : actuators)
      if (*value++ == level) area.setreset_output(name, level);
  }
  area.outputs_refresh();
}

}  // namespace

int main(int argc, char** argv) {
  watch_for_run_end();
  IOsharemem_client area(automemlink(argc, argv));
  const list_String sensors = area.input_names();
  const list_String actuators = area.output_names();

  hand_panel panel("commande manuelle", actuators, "Entrees", sensors);
  const auto release = [&](const std::vector<int>& values) { write(area, actuators, values); };
  int news = 0;
  const auto watch = [&] {
    news = area.receive();
    if (news == 1) {
      std::vector<int> values;
      for (const String& name : sensors) values.push_back(area.input_is_set(name));
      panel.light(values);
    }
    return news >= 0;
  };
  panel.run(release, watch);
  if (news >= 0) release(std::vector<int>(actuators.size()));
  return 0;
}
