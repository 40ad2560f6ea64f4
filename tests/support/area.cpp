#include "tests/support/area.h"

#include <sys/shm.h>

#include <atomic>
#include <stdexcept>

#include "bibliocpp/area_view.h"
#include "tests/support/wait.h"

int wait_for_area_of(pid_t creator) {
  int ident = -1;
  // Not one that was left by a process that had the number before.
  const auto is_made = [&] {
    for (const area_entry& area : areas())
      if (area.creator == creator && creator_runs(area)) ident = area.ident;
    return ident != -1;
  };
  if (!wait_until(is_made)) throw std::runtime_error("the process creates no area");
  return ident;
}

open_area::open_area(int ident) : id(ident), record(static_cast<IO_controleur*>(shmat(ident, nullptr, 0))) {}

open_area::~open_area() {
  shmdt(record);
  shmctl(id, IPC_RMID, nullptr);
}

int open_area::read(std::int32_t& value) { return std::atomic_ref(value).load(); }
void open_area::output(int k, int value) const { std::atomic_ref(record->output[k]).store(value); }
std::int64_t open_area::clock() const { return std::atomic_ref(record->clock).load(); }

bool open_area::cycles(int n) const {
  // One more: the cycle that is under way may have read the outputs already.
  const std::int64_t enough = clock() + n + 1;
  return wait_until([&] { return clock() >= enough || clock() < 0; }) && clock() >= 0;
}
