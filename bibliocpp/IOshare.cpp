#include "bibliocpp/IOshare.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <thread>
#include <type_traits>

namespace {

using namespace std::chrono_literals;

constexpr std::size_t segment_size = sizeof(IO_controleur) + 1;
constexpr useconds_t idle_pause_us = 10'000;

template <typename T>
T load(T& field) {
  return std::atomic_ref<T>(field).load(std::memory_order_acquire);
}

template <typename T>
void store(T& field, T value) {
  std::atomic_ref<T>(field).store(value, std::memory_order_release);
}

template <typename T>
void advance(T& field) {
  std::atomic_ref<T>(field).fetch_add(1, std::memory_order_release);
}

// What the C library keeps in a sem_t. Its own operations hand these words to the kernel, and end the
// process when a stranger has written there what the kernel objects to. So none of them is used after
// sem_init: to every other program this stays a semaphore, whose value is 1 while it is free.
struct semaphore_words {
  std::uint32_t value;
  std::uint32_t waiters;
  std::uint32_t sharing;  // 0: private to one process, part of the area's contract
};
#if !defined(__GLIBC__) || !defined(__LP64__) || __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "how the words of a sem_t are laid out here is not known"
#endif
static_assert(sizeof(semaphore_words) <= sizeof(sem_t));
static_assert(alignof(semaphore_words) <= alignof(sem_t));
static_assert(std::atomic_ref<std::uint32_t>::is_always_lock_free);

constexpr std::uint32_t taken = 0, is_free = 1;

semaphore_words& words_of(sem_t& semaphore) { return reinterpret_cast<semaphore_words&>(semaphore); }

// The lock has been initialised as private to one process, so the kernel never wakes a waiter of
// the other one, and a controller may be killed while it holds the lock. Nobody honest holds it
// for longer than one field update: it is polled, and after a second its holder counts as gone.
class area_lock {
 public:
  area_lock(sem_t& semaphore, std::chrono::milliseconds& patience) : words(words_of(semaphore)) {
    if (!take()) {
      const auto deadline = std::chrono::steady_clock::now() + patience;
      while (!take()) {
        if (std::chrono::steady_clock::now() > deadline) {
          // A holder that goes on taking the lock without giving it back must not cost a second
          // each time: trust comes back slowly.
          patience = 1ms;
          return;
        }
        std::this_thread::sleep_for(1ms);
      }
    }
    if (patience < full_patience) patience += 1ms;
  }
  // Free whatever the value is now: one that was thought gone may have come back and given it already.
  ~area_lock() { store(words.value, is_free); }
  area_lock(const area_lock&) = delete;
  area_lock& operator=(const area_lock&) = delete;

 private:
  static constexpr std::chrono::milliseconds full_patience = 1s;

  // A value that is neither 0 nor 1 says nothing about a holder: it is taken like a free one, and 1 again
  // when given back.
  bool take() {
    std::uint32_t value = load(words.value);
    while (value != taken)
      if (std::atomic_ref(words.value).compare_exchange_weak(value, taken, std::memory_order_acquire)) {
        if (value != is_free || load(words.sharing) != 0) mend_other_words();
        return true;
      }
    return false;
  }

  // An honest program's sem_post hands them to the kernel. One that waits at this moment is no longer
  // counted, and finds the lock free all the same as often as before: nobody wakes it across processes.
  void mend_other_words() {
    store(words.waiters, std::uint32_t{0});
    store(words.sharing, std::uint32_t{0});
  }

  semaphore_words& words;
};

[[noreturn]] void sharing_error(const char* reason) {
  std::cerr << "IOshare: erreur sur partage memoire" << std::endl << reason << std::endl << std::endl;
  std::exit(1);
}

[[noreturn]] void sharing_error(const char* reason, int ident) {
  sharing_error((reason + std::to_string(ident)).c_str());
}

int create_segment() { return shmget(IPC_PRIVATE, segment_size, 0600); }

// A fresh kernel gives identifier 0 to its first segment, and a controller must refuse 0: the
// first segment keeps that slot while the real one is created, then goes.
int create_segment_with_nonzero_ident() {
  const int first = create_segment();
  if (first != 0) return first;
  const int second = create_segment();
  shmctl(first, IPC_RMID, nullptr);
  return second;
}

IO_controleur* attach(int ident) {
  void* address = shmat(ident, nullptr, 0);
  return address == reinterpret_cast<void*>(-1) ? nullptr : static_cast<IO_controleur*>(address);
}

int fill(const std::list<std::string>& names, std::int32_t* values, char (*slots)[50]) {
  int count = 0;
  for (const std::string& name : names) {
    values[count] = 0;
    std::memcpy(slots[count], name.c_str(), name.size() + 1);
    ++count;
  }
  return count;
}

// Looked at from the end: the names of a plant differ there, if not in their length.
bool slot_is(const char (&slot)[50], const std::string& name) {
  const std::size_t length = name.size();
  return length < sizeof slot && slot[length] == '\0' &&
         (length == 0 || slot[length - 1] == name[length - 1]) &&
         std::memcmp(slot, name.data(), length) == 0 && std::memchr(slot, '\0', length) == nullptr;
}

std::list<std::string> names_in(const char (*slots)[50], int count) {
  std::list<std::string> names;
  for (int i = 0; i < count; ++i) names.emplace_back(slots[i], strnlen(slots[i], sizeof slots[i]));
  return names;
}

// The counts stand where strangers can write: they are never trusted beyond the arrays' ends.
constexpr int most_names = std::extent_v<decltype(IO_controleur::nom_input)>;

template <std::size_t size>
bool in_use(int i, std::int32_t& count, const std::int32_t (&values)[size]) {
  return i >= 0 && i < load(count) && i < std::ssize(values);
}

}  // namespace

IOsharemem_server::IOsharemem_server(std::list<std::string>& inputs, std::list<std::string>& outputs)
    : shm_ident(create_segment_with_nonzero_ident()) {
  if (shm_ident == -1) sharing_error("shmat() serveur refuse pour ident mem=", shm_ident);
  adresse_mem = attach(shm_ident);
  if (adresse_mem == nullptr) sharing_error("shmat() serveur refuse pour ident mem=", shm_ident);
  // Locked until it is filled. Private to one process: part of the area's contract.
  sem_init(&adresse_mem->mutex, 0, 0);
  adresse_mem->nb_entrees = fill(inputs, adresse_mem->input, adresse_mem->nom_input);
  adresse_mem->nb_sorties = fill(outputs, adresse_mem->output, adresse_mem->nom_output);
  store(adresse_mem->clock, std::int64_t{0});
  store(words_of(adresse_mem->mutex).value, is_free);
}

IOsharemem_server::~IOsharemem_server() = default;

int IOsharemem_server::memory_ident() { return shm_ident; }

void IOsharemem_server::inputs_go() { advance(adresse_mem->clock); }

int IOsharemem_server::output_value(int i) {
  if (!in_use(i, adresse_mem->nb_sorties, adresse_mem->output)) return 0;
  return load(adresse_mem->output[i]);
}

std::int64_t IOsharemem_server::get_outputs_clock() {
  const area_lock held(adresse_mem->mutex, patience);
  return load(adresse_mem->output_clock);
}

void IOsharemem_server::setreset_input(int i, int value) {
  if (!in_use(i, adresse_mem->nb_entrees, adresse_mem->input)) return;
  const area_lock held(adresse_mem->mutex, patience);
  store(adresse_mem->input[i], value);
}

void IOsharemem_server::sharing_terminate() { store(adresse_mem->clock, std::int64_t{-1}); }

IOsharemem_client::IOsharemem_client(int ident) {
  if (ident == 0) sharing_error("ident_mem ==0 !");
  std::cerr << "ident_mem=" << ident << "\n";
  adresse_mem = attach(ident);
  if (adresse_mem == nullptr) sharing_error("shmat() client refuse pour ident mem=", ident);
  store(adresse_mem->output_clock, std::int64_t{0});
  nb_entrees = std::clamp(load(adresse_mem->nb_entrees), 0, most_names);
  nb_sorties = std::clamp(load(adresse_mem->nb_sorties), 0, most_names);
  inputs_copy = new int[static_cast<std::size_t>(nb_entrees)]{};
}

IOsharemem_client::~IOsharemem_client() { delete[] inputs_copy; }

int IOsharemem_client::receive() {
  const std::int64_t announced = load(adresse_mem->clock);
  if (announced < 0) return -1;
  if (announced > local_clock) {
    const area_lock held(adresse_mem->mutex, patience);
    local_clock = load(adresse_mem->clock);
    std::memcpy(inputs_copy, adresse_mem->input, static_cast<std::size_t>(nb_entrees) * sizeof(int));
    return 1;
  }
  usleep(idle_pause_us);
  return 0;
}

int IOsharemem_client::input_is_set(const std::string& name) {
  int result = 0;
  for (int i = 0; i < nb_entrees; ++i)
    if (slot_is(adresse_mem->nom_input[i], name)) result = inputs_copy[i];
  return result;
}

void IOsharemem_client::setreset_output(const std::string& name, int value) {
  for (int i = 0; i < nb_sorties; ++i)
    if (slot_is(adresse_mem->nom_output[i], name)) store(adresse_mem->output[i], value);
}

std::list<std::string> IOsharemem_client::input_names() {
  return names_in(adresse_mem->nom_input, nb_entrees);
}

std::list<std::string> IOsharemem_client::output_names() {
  return names_in(adresse_mem->nom_output, nb_sorties);
}

void IOsharemem_client::outputs_refresh() {
  const area_lock held(adresse_mem->mutex, patience);
  advance(adresse_mem->output_clock);
}
