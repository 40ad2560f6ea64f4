#include "maquettes_graphiques/WAGONS/plant_signals.h"

#include <sys/time.h>

#include <iostream>
#include <iterator>
#include <list>
#include <string>

#include "maquettes_graphiques/mock_up/start_up.h"

std::int32_t actionneur[sortie::count];

IOsharemem_server* init_partage_mem(const char* param) {
  if (*param == '\0') {
    std::cerr << "ERREUR de parametre:" << std::endl << " wagons <controleur>" << std::endl << std::endl;
    return nullptr;
  }
  auto* const first_output = std::begin(table_signaux) + entree::count;
  std::list<std::string> l_entrees(std::begin(table_signaux), first_output);
  std::list<std::string> l_sorties(first_output, std::end(table_signaux));
  return share_with_controller(l_entrees, l_sorties, param);
}

void actuator_set(IOsharemem_server* mem) {
  for (int k = 0; k < sortie::count; ++k) actionneur[k] = mem->output_value(k);
}

long heure10() {
  constexpr long seconds_a_day = 86'400;
  constexpr long tenth_us = 100'000;
  timeval now{};
  gettimeofday(&now, nullptr);
  return (now.tv_sec % seconds_a_day * 10 + now.tv_usec / tenth_us) / 5;
}
