#pragma once
// The shared I/O area between a plant (the simulator, "server") and its controller ("client").
//
// Direction words are the controller's: an input (entree) is written by the plant and read by the
// controller; an output (sortie) is written by the controller and read by the plant. Signals are
// plain integers; the plants of this project use 0 and 1.
//
// The area is one System V shared-memory segment of the same machine and user. Both sides must
// agree on the record below byte for byte, whatever compiler or language they are written in.
//
// The lock is waited for a second at most; then its holder counts as gone, and the caller goes on as the
// holder. After that a side waits 1 ms only, and 1 ms longer with each time it gets the lock in time.
// Whatever is written into the area, over the lock too, nothing here ends, blocks or leaves its arrays.

#include <semaphore.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>

struct IO_controleur_structure {
  std::int64_t clock;         // batches of inputs completed since creation; -1 once the run is over
  std::int64_t output_clock;  // batches of outputs completed since the controller attached
  sem_t mutex;                // the area's lock: 1 = free
  std::int32_t nb_entrees;    // inputs in use
  std::int32_t nb_sorties;    // outputs in use
  std::int32_t input[50];
  std::int32_t output[50];
  char nom_input[41][50];  // NUL-terminated names
  char nom_output[41][50];
};
using IO_controleur = IO_controleur_structure;

static_assert(offsetof(IO_controleur, clock) == 0);
static_assert(offsetof(IO_controleur, output_clock) == 8);
static_assert(offsetof(IO_controleur, mutex) == 16 && sizeof(sem_t) == 32);
static_assert(offsetof(IO_controleur, nb_entrees) == 48);
static_assert(offsetof(IO_controleur, nb_sorties) == 52);
static_assert(offsetof(IO_controleur, input) == 56);
static_assert(offsetof(IO_controleur, output) == 256);
static_assert(offsetof(IO_controleur, nom_input) == 456);
static_assert(offsetof(IO_controleur, nom_output) == 2506);
static_assert(sizeof(IO_controleur) == 4560);

// The plant's side: creates the area, publishes inputs, reads outputs, ends the exchange.
//
// Order of calls: construct; hand memory_ident() to the controller; then in every cycle
// setreset_input() for each input, inputs_go() once, output_value() for each output; at the end
// sharing_terminate(). One thread only.
class IOsharemem_server {
 public:
  // Creates and fills an area for these signals, in list order; values and clocks are 0.
  // At most 41 names a list and 49 bytes a name: neither is checked, what exceeds them
  // overwrites its neighbours in the area.
  // When no segment can be had, three lines go to the standard error stream,
  //   "IOshare: erreur sur partage memoire", "shmat() serveur refuse pour ident mem=-1", "",
  // and the process ends with status 1.
  IOsharemem_server(std::list<std::string>& inputs, std::list<std::string>& outputs);

  // Leaves the segment in the system, attached until the process ends: a controller may still
  // have to read in it that the run is over.
  ~IOsharemem_server();
  IOsharemem_server(const IOsharemem_server&) = delete;
  IOsharemem_server& operator=(const IOsharemem_server&) = delete;

  // The identifier a controller attaches with; never 0, which a controller refuses.
  int memory_ident();
  // Announces the batch of inputs written since the last call: the input clock advances by one.
  void inputs_go();
  // Output i as the controller last wrote it; 0 for an index out of range. Takes no lock.
  int output_value(int i);
  // The number of output batches announced by the controller. Takes the lock.
  std::int64_t get_outputs_clock();
  // Writes one input under the lock; an index out of range is ignored.
  void setreset_input(int i, int value);
  // Sets the input clock to -1: the controller's next receive() tells it that the run is over.
  void sharing_terminate();

 private:
  int shm_ident;
  IO_controleur* adresse_mem;
  std::int64_t local_clock = 0;              // kept for users of the record's historical layout; unused
  std::chrono::milliseconds patience{1000};  // how long the lock is waited for
};

// The controller's side: attaches, waits for inputs, reads them by name, sets outputs by name (or by
// handle, quicker and checked: bibliocpp/signal_handles.h).
//
// Order of calls: construct; then for ever: receive(); on -1 stop; on 1 evaluate with
// input_is_set(), write with setreset_output(), then outputs_refresh() once; on 0 call again.
class IOsharemem_client {
 public:
  // Attaches to area `ident` and sets its output clock to 0; traces "ident_mem=<ident>" on the
  // standard error stream. The process ends with status 1 after "IOshare: erreur sur partage
  // memoire", a second line and an empty one: "ident_mem ==0 !" when ident is 0, "shmat() client
  // refuse pour ident mem=<ident>" when the segment cannot be attached.
  explicit IOsharemem_client(int ident);
  // Leaves the area attached until the process ends.
  ~IOsharemem_client();
  IOsharemem_client(const IOsharemem_client&) = delete;
  IOsharemem_client& operator=(const IOsharemem_client&) = delete;

  // -1: the run is over. 1: a new batch of inputs has been copied (intermediate batches may have
  // been skipped). 0: nothing new; has slept 10 ms.
  int receive();
  // The named input at the last receive() that gave 1; 0 for an unknown name. Names compare
  // exactly; where two inputs bear the same name the later counts.
  int input_is_set(const std::string& name);
  // Writes every output of that name at once; an unknown name is ignored. Stores are seen by the
  // plant in the order of the calls.
  void setreset_output(const std::string& name, int value);
  // The names of the area's signals, in its order.
  std::list<std::string> input_names();
  std::list<std::string> output_names();
  // Announces a finished batch of outputs: the output clock advances by one, under the lock.
  void outputs_refresh();

 private:
  friend class input_signal;  // bibliocpp/signal_handles.h
  friend class output_signal;

  int nb_entrees;
  int nb_sorties;
  IO_controleur* adresse_mem;
  int* inputs_copy;
  std::int64_t local_clock = 0;
  std::chrono::milliseconds patience{1000};
};
