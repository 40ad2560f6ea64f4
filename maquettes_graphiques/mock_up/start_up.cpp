#include "maquettes_graphiques/mock_up/start_up.h"

#include <cstdlib>

#include "maquettes_graphiques/mock_up/led_cycle.h"

std::string joined_arguments(int argc, char** argv) {
  std::string joined;
  for (int n = 1; n < argc; ++n) joined.append(argv[n]).append(" ");
  return joined;
}

IOsharemem_server* share_with_controller(std::list<std::string>& inputs, std::list<std::string>& outputs,
                                         const std::string& command) {
  auto* const area = new IOsharemem_server(inputs, outputs);
  if (led()) tell_leader("area " + std::to_string(area->memory_ident()));
  std::string launch = command;
  launch.append(" -automemlink ").append(std::to_string(area->memory_ident())).append(" &");
  [[maybe_unused]] const int ignored = std::system(launch.c_str());
  return area;
}
