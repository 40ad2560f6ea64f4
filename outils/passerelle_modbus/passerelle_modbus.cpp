// passerelle_modbus [--adresse A] [--port P] [--sur-perte zero|garder] -automemlink N: a controller that
// hands the area over to Modbus TCP clients.

#include <sys/shm.h>

#include <iostream>
#include <system_error>

#include "bibliocpp/language.h"
#include "outils/passerelle_modbus/address_table.h"
#include "outils/passerelle_modbus/command_line.h"
#include "outils/passerelle_modbus/gateway.h"
#include "outils/passerelle_modbus/tell.h"

namespace {

enum status { in_order = 0, failed = 1, bad_input = 2 };

area_view area_asked_for(const command_line& wanted) {
  if (wanted.ident) return area_view(*wanted.ident);
  for (const area_entry& area : areas())
    if (creator_runs(area)) return area_view(area.ident);
  throw area_error(tr("aucune maquette n'est en marche"));
}

status show_table(const area_view& area) {
  print_address_table(std::cout, area);
  std::cout << std::flush;
  return std::cout ? in_order : failed;
}

status serve(const area_view& area, const command_line& wanted) {
  const listener door(wanted.address, wanted.port);
  process_image image(area);
  const signal_inbox signals;
  gateway serving(door, image, wanted.drop_outputs);
  tell(tr("sert Modbus TCP sur {}", {door.name()}));
  if (!door.is_local())
    tell(tr("attention : Modbus n'a pas de mot de passe ; tout le réseau peut commander la maquette"));
  if (serving.serve(signals) != gateway::end::plant_killed) return in_order;
  // Nobody else would: the plant has not ended its exchange, and never will.
  shmctl(area.ident(), IPC_RMID, nullptr);
  tell(tr("la maquette a disparu sans terminer l'échange ; zone supprimée : {}",
          {std::to_string(area.ident())}));
  return failed;
}

}  // namespace

int main(int argc, char** argv) try {
  const command_line wanted = read_command_line(argc, argv);
  const area_view area = area_asked_for(wanted);
  return wanted.only_table ? show_table(area) : serve(area, wanted);
} catch (const area_error& error) {
  tell(error.what());
  return bad_input;
} catch (const listener_error& error) {
  tell(error.what());
  return failed;
} catch (const std::system_error& error) {
  tell(error.what());
  return failed;
}
