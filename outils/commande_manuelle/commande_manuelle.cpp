// commande_manuelle -automemlink <ident>: a controller played by hand. Named on a mock-up's command line,
// it shows the plant's sensors as lamps and sets its actuators by check marks. Ends with the run; ending it
// first, by QUIT or by a signal, stops every actuator.

#include <cstddef>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/automemlink.h"
#include "bibliocpp/drop_then_set.h"
#include "bibliocpp/language.h"
#include "maquettes_graphiques/mock_up/run_end.h"
#include "outils/hand_panel/hand_panel.h"

int main(int argc, char** argv) {
  watch_for_run_end();
  IOsharemem_client area(automemlink(argc, argv));
  const list_String sensors = area.input_names();
  const list_String actuators = area.output_names();
  const std::vector<String> names(actuators.begin(), actuators.end());

  hand_panel panel("commande manuelle", actuators, tr("Entrees"), sensors);
  const auto release = [&](const std::vector<int>& values) {
    drop_then_set(values, [&](std::size_t k, int level) { area.setreset_output(names[k], level); });
    area.outputs_refresh();
  };
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
