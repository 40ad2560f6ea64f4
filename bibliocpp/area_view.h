#pragma once
// One look at a plant's shared area from outside: it is found, attached read-only and read. Neither the
// plant nor its controller can tell.

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <string>
#include <vector>

#include "bibliocpp/IOshare.h"

// A segment of this machine that has the size of an area, as the kernel lists it.
struct area_entry {
  int ident;
  pid_t creator;      // the plant, if it still runs
  unsigned attached;  // processes that have it attached, the plant included
  uid_t owner;
  std::time_t created;  // seconds since the epoch
};

// All of them, the newest first. Kernel numbers are given out in rising order, so they decide between two
// of the same second.
std::vector<area_entry> areas();

// The identifier of the newest area that the process has created; -1 when there is none. An older one with
// the same creator was left by a process that had the number before.
int area_of(pid_t plant);

// Whether the process that created an area at that time still runs: a later one of the same number does
// not count, nor one that has ended and is only not yet waited for. One in another namespace of processes,
// whose number is 0 here, counts as running.
bool creator_runs(const area_entry& area);

// Whether the process has the area attached at this moment; false also where the kernel does not tell, as of
// other users' processes.
bool has_attached(pid_t process, int ident);

// What keeps an area from being looked at, as a sentence.
struct area_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class area_view {
 public:
  // Attaches the area read-only. Throws an area_error when there is none of that identifier, when it may
  // not be read, or when it has not the size and the counts of the record.
  explicit area_view(int ident);
  ~area_view();
  area_view(area_view&& other) noexcept;
  area_view(const area_view&) = delete;
  area_view& operator=(const area_view&) = delete;

  int ident() const { return entry.ident; }
  pid_t plant() const { return entry.creator; }
  // Whether the plant's process still runs, however its end came; exact, and cheap enough for every look. One
  // in another namespace of processes counts as running until it has said that the run is over.
  bool plant_runs() const;

  // Fixed when the view is made; at most 41 each. A name has at most 49 bytes.
  const std::vector<std::string>& input_names() const { return inputs; }
  const std::vector<std::string>& output_names() const { return outputs; }

  // Values as they are now, each read at once. The index must be one of the names'.
  std::int32_t input(std::size_t i) const;
  std::int32_t output(std::size_t k) const;
  // Batches of inputs announced; -1 once the run is over.
  std::int64_t clock() const;
  // Batches of outputs announced by the controller.
  std::int64_t output_clock() const;

 private:
  area_entry entry;
  const IO_controleur* record = nullptr;
  int plant_end = -1;  // a descriptor of the plant's process: readable once it has ended; -1 when it has
  std::vector<std::string> inputs, outputs;
};
