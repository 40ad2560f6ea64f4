#include "outils/grafcet/shared_situation.h"

#include <sys/mman.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>

using grafcet_file::situation;

// Odd while it is being written.
struct shared_situation::header {
  std::atomic<unsigned long> version{0};
  std::atomic<bool> asked_for{false};
};
static_assert(std::atomic<unsigned long>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

namespace {

// All that a situation holds, in an order of its own.
void for_each_piece(auto& of, auto&& action) {
  const auto list = [&](auto& values) { action(values.data(), values.size() * sizeof(values[0])); };
  const auto single = [&](auto& value) { action(&value, sizeof value); };
  list(of.active);
  list(of.enabled);
  list(of.receptive);
  list(of.forced);
  list(of.since_us);
  list(of.variables);
  list(of.values);
  list(of.inputs);
  list(of.outputs);
  single(of.time_us);
  single(of.batches);
  single(of.evolutions);
  single(of.stable);
}

}  // namespace

shared_situation::shared_situation(const situation& first) : size(sizeof(header)) {
  for_each_piece(first, [this](const void*, std::size_t bytes) { size += bytes; });
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
  shared = new (memory) header;
  hand_over(first);
}

shared_situation::~shared_situation() { munmap(shared, size); }

void shared_situation::hand_over(const situation& now) {
  const unsigned long version = shared->version.load(std::memory_order_relaxed);
  shared->asked_for.store(false, std::memory_order_relaxed);
  shared->version.store(version + 1, std::memory_order_relaxed);
  std::atomic_thread_fence(std::memory_order_release);
  auto* to = reinterpret_cast<unsigned char*>(shared + 1);
  for_each_piece(now, [&to](const void* from, std::size_t bytes) {
    if (bytes > 0) std::memcpy(to, from, bytes);
    to += bytes;
  });
  shared->version.store(version + 2, std::memory_order_release);
}

void shared_situation::hand_over_if_asked(const situation& now) {
  if (shared->asked_for.load(std::memory_order_relaxed)) hand_over(now);
}

bool shared_situation::look(situation& into) {
  const unsigned long version = shared->version.load(std::memory_order_acquire);
  if (version == seen) {
    shared->asked_for.store(true, std::memory_order_relaxed);
    return false;
  }
  if (version % 2 != 0) return false;
  const auto* from = reinterpret_cast<const unsigned char*>(shared + 1);
  for_each_piece(into, [&from](void* to, std::size_t bytes) {
    if (bytes > 0) std::memcpy(to, from, bytes);
    from += bytes;
  });
  std::atomic_thread_fence(std::memory_order_acquire);
  if (shared->version.load(std::memory_order_relaxed) != version) return false;
  seen = version;
  shared->asked_for.store(true, std::memory_order_relaxed);
  return true;
}
