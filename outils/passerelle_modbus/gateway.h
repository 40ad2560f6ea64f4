#pragma once
// The gateway at work: all clients in one loop, and each has its turn.

#include <poll.h>

#include <chrono>
#include <list>
#include <vector>

#include "outils/child_processes/signal_inbox.h"
#include "outils/passerelle_modbus/answers.h"
#include "outils/passerelle_modbus/connection.h"
#include "outils/passerelle_modbus/listener.h"
#include "outils/passerelle_modbus/process_image.h"

class gateway {
 public:
  enum class end { run_over, plant_killed, asked_for };

  // Both must outlive it. `drops_outputs`: when the last client has gone, and when the gateway is asked to
  // end.
  gateway(const listener& a_door, process_image& an_image, bool drops_outputs);

  // Serves until the run is over, the plant is gone or a signal asks for the end.
  end serve(const signal_inbox& signals);

 private:
  using time = std::chrono::steady_clock::time_point;

  void wait(const signal_inbox& signals);
  void let_in(time now);
  void serve_clients(time now);
  void last_has_gone();
  void tell_cut(const char* why, time now);

  const listener& door;
  process_image& image;
  answers answering;
  bool dropping;
  std::list<connection> clients;  // in the order of their coming
  std::vector<pollfd> events;     // of the signals, the door and the clients
  time told{};
};
