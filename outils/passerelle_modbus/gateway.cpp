#include "outils/passerelle_modbus/gateway.h"

#include <poll.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <tuple>

#include "bibliocpp/language.h"
#include "outils/passerelle_modbus/tell.h"

namespace {

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

constexpr std::size_t most_clients = 32;

// A batch of inputs is fetched soon after it has been announced; without clients nobody asks for it.
constexpr int look_every_ms = 1, look_idle_every_ms = 10;

}  // namespace

gateway::gateway(const listener& a_door, process_image& an_image, bool drops_outputs)
    : door(a_door), image(an_image), answering(an_image), dropping(drops_outputs) {}

gateway::end gateway::serve(const signal_inbox& signals) {
  for (;;) {
    wait(signals);
    const time now = clock_type::now();
    const plant_state plant = image.look(now);
    if (plant == plant_state::over) return end::run_over;
    if (plant == plant_state::killed) return end::plant_killed;
    if (const int signal = events[0].revents != 0 ? signals.next(0ms) : 0; signal != 0 && signal != SIGCHLD)
      break;
    serve_clients(now);
    if (events[1].revents != 0) let_in(now);
  }
  if (!clients.empty()) last_has_gone();
  return end::asked_for;
}

void gateway::wait(const signal_inbox& signals) {
  events = {{.fd = signals.readable(), .events = POLLIN, .revents = 0},
            {.fd = door.descriptor(), .events = POLLIN, .revents = 0}};
  int time_ms = clients.empty() ? look_idle_every_ms : look_every_ms;
  for (const connection& client : clients) {
    events.push_back({.fd = client.descriptor(), .events = client.awaits(), .revents = 0});
    if (client.has_request()) time_ms = 0;
  }
  poll(events.data(), events.size(), time_ms);
}

void gateway::serve_clients(time now) {
  const bool had_some = !clients.empty();
  auto event = events.begin() + 2;
  for (auto client = clients.begin(); client != clients.end(); ++event) {
    auto state = connection::state::open;
    if (event->revents != 0 || client->has_request()) state = client->turn(answering, now);
    if (state == connection::state::no_modbus) tell_cut(tr("ce n'est pas du Modbus TCP"), now);
    if (state == connection::state::open && client->is_stuck(now)) {
      state = connection::state::gone;
      tell_cut(tr("requête inachevée ou réponse non lue depuis 5 s"), now);
    }
    client = state == connection::state::open ? std::next(client) : clients.erase(client);
  }
  if (had_some && clients.empty()) last_has_gone();
}

// One a turn. When there are too many, the one goes that has asked for nothing, or for nothing for the
// longest time: it will hardly miss the connection, and nobody can keep others out by his mere presence.
void gateway::let_in(time now) {
  const int socket = door.accept();
  if (socket < 0) return;
  if (clients.size() == most_clients) {
    clients.erase(std::min_element(clients.begin(), clients.end(), [](const auto& a, const auto& b) {
      return std::tuple(a.has_asked(), a.quiet_since()) < std::tuple(b.has_asked(), b.quiet_since());
    }));
    tell_cut(tr("plus de 32 clients"), now);
  }
  clients.emplace_back(socket, now);
}

void gateway::last_has_gone() {
  if (dropping && image.drop_outputs())
    tell(tr("dernier client parti : toutes les sorties sont retombées à zéro"));
}

// Once a second at most: a client that comes again and again must not fill a disk.
void gateway::tell_cut(const char* why, time now) {
  if (now - told < 1s) return;
  told = now;
  tell(tr("client coupé : {}", {why}));
}
