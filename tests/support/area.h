#pragma once
// A process's shared area, found and opened from outside.

#include <sys/types.h>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/area_view.h"

// area_of, waited for; throws when it creates none.
int wait_for_area_of(pid_t creator);

// The area, whose segment leaves the system with this object: the programs deliberately let it stay.
class open_area {
 public:
  explicit open_area(int ident);
  ~open_area();
  open_area(const open_area&) = delete;
  open_area& operator=(const open_area&) = delete;

  int ident() const { return id; }
  IO_controleur* operator->() const { return record; }
  int input(int i) const { return read(record->input[i]); }
  void output(int k, int value) const;
  std::int64_t clock() const;
  // Waits until n more whole cycles have been published: every output written before has then been heeded,
  // and every input shows what came of it. False when that does not happen.
  bool cycles(int n) const;

 private:
  static int read(std::int32_t& value);
  int id;
  IO_controleur* record;
};
