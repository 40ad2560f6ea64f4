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
// Algorithms ask for a buffer in this way, and give it back as the other.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++calls;
  return std::malloc(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
