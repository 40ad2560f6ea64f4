#include "tests/support/count_allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

static std::atomic<long> calls = 0;

long allocations() { return calls; }

void* operator new(std::size_t size) {
  ++calls;
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
