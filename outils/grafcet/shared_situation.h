#pragma once
// The situation of charts at work, handed over to a view in another process. Neither waits for the other: the
// view asks, and whoever controls hands over what it has at the end of a batch. A batch for which nobody asks
// costs one look at a flag.

#include <cstddef>

#include "bibliocpp/grafcet_file/situation.h"

class shared_situation {
 public:
  // In memory that processes forked from here on share; for situations of the size of this one, which is
  // handed over at once. Throws std::system_error when there is no memory.
  explicit shared_situation(const grafcet_file::situation& first);
  ~shared_situation();
  shared_situation(const shared_situation&) = delete;
  shared_situation& operator=(const shared_situation&) = delete;

  // One process only.
  void hand_over(const grafcet_file::situation& now);
  void hand_over_if_asked(const grafcet_file::situation& now);

  // Whether it is another one than at the last look; asks for the next one then. One process only.
  bool look(grafcet_file::situation& into);

 private:
  struct header;
  header* shared;
  std::size_t size;
  unsigned long seen = 0;
};
