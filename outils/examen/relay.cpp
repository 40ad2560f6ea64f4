#include "outils/examen/relay.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <list>

namespace {

IO_controleur* attach(int ident) {
  void* const address = shmat(ident, nullptr, 0);
  if (address == reinterpret_cast<void*>(-1)) throw area_error(std::strerror(errno));
  shmctl(ident, IPC_RMID, nullptr);
  return static_cast<IO_controleur*>(address);
}

IOsharemem_server area_like(const area_view& plant) {
  std::list<std::string> inputs(plant.input_names().begin(), plant.input_names().end());
  std::list<std::string> outputs(plant.output_names().begin(), plant.output_names().end());
  return {inputs, outputs};
}

void copy(const std::int32_t* from, std::span<std::int32_t> to) {
  for (std::int32_t& value : to)
    value = std::atomic_ref(const_cast<std::int32_t&>(*from++)).load(std::memory_order_acquire);
}

void copy(std::span<const std::int32_t> from, std::int32_t* to) {
  for (const std::int32_t value : from) std::atomic_ref(*to++).store(value, std::memory_order_release);
}

}  // namespace

relay::relay(int plant_area)
    : plant(plant_area),
      area(area_like(plant)),
      plant_record(attach(plant_area)),
      record(attach(area.memory_ident())) {}

relay::~relay() {
  area.sharing_terminate();
  shmdt(plant_record);
  shmdt(record);
}

bool relay::attached() const {
  constexpr shmatt_t ours = 2;  // the server's and our own
  shmid_ds state{};
  return shmctl(const_cast<IOsharemem_server&>(area).memory_ident(), IPC_STAT, &state) == 0 &&
         state.shm_nattch > ours;
}

void relay::read_inputs(std::span<std::int32_t> values) const { copy(plant_record->input, values); }

void relay::publish(std::span<const std::int32_t> values) {
  copy(values, record->input);
  area.inputs_go();
}

std::int64_t relay::answers() const {
  return std::atomic_ref(record->output_clock).load(std::memory_order_acquire);
}

void relay::read_outputs(std::span<std::int32_t> values) const { copy(record->output, values); }

void relay::drive(std::span<const std::int32_t> values) const { copy(values, plant_record->output); }
