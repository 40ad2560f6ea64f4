#include "bibliocpp/IOshare.h"

#include <sys/ipc.h>
#include <sys/shm.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr std::size_t segment_size = sizeof(IO_controleur) + 1;
constexpr useconds_t idle_pause_us = 10'000;

// The lock has been initialised as private to one process, so the kernel never wakes a waiter of
// the other one, and a controller may be killed while it holds the lock. Nobody honest holds it
// for longer than one field update: it is polled, and after a second its holder counts as gone.
class area_lock {
 public:
  explicit area_lock(sem_t& a_semaphore) : semaphore(a_semaphore) {
    static std::chrono::milliseconds patience = full_patience;
    if (sem_trywait(&semaphore) != 0) {
      const auto deadline = std::chrono::steady_clock::now() + patience;
      while (sem_trywait(&semaphore) != 0) {
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
  ~area_lock() {
    // One that was thought gone may have come back and released already: never let two in.
    int value = 0;
    if (sem_getvalue(&semaphore, &value) == 0 && value == 0) sem_post(&semaphore);
  }
  area_lock(const area_lock&) = delete;
  area_lock& operator=(const area_lock&) = delete;

 private:
  static constexpr std::chrono::milliseconds full_patience = 1s;
  sem_t& semaphore;
};

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
         std::memcmp(slot, name.data(), length) == 0 && std::strlen(slot) == length;
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
  sem_post(&adresse_mem->mutex);
}

IOsharemem_server::~IOsharemem_server() = default;

int IOsharemem_server::memory_ident() { return shm_ident; }

void IOsharemem_server::inputs_go() { advance(adresse_mem->clock); }

int IOsharemem_server::output_value(int i) {
  if (i < 0 || i >= adresse_mem->nb_sorties) return 0;
  return load(adresse_mem->output[i]);
}

std::int64_t IOsharemem_server::get_outputs_clock() {
  const area_lock held(adresse_mem->mutex);
  return load(adresse_mem->output_clock);
}

void IOsharemem_server::setreset_input(int i, int value) {
  if (i < 0 || i >= adresse_mem->nb_entrees) return;
  const area_lock held(adresse_mem->mutex);
  store(adresse_mem->input[i], value);
}

void IOsharemem_server::sharing_terminate() { store(adresse_mem->clock, std::int64_t{-1}); }

IOsharemem_client::IOsharemem_client(int ident) {
  if (ident == 0) sharing_error("ident_mem ==0 !");
  std::cerr << "ident_mem=" << ident << "\n";
  adresse_mem = attach(ident);
  if (adresse_mem == nullptr) sharing_error("shmat() client refuse pour ident mem=", ident);
  store(adresse_mem->output_clock, std::int64_t{0});
  nb_entrees = adresse_mem->nb_entrees;
  nb_sorties = adresse_mem->nb_sorties;
  inputs_copy = new int[static_cast<std::size_t>(nb_entrees)]{};
}

IOsharemem_client::~IOsharemem_client() { delete[] inputs_copy; }

int IOsharemem_client::receive() {
  const std::int64_t announced = load(adresse_mem->clock);
  if (announced < 0) return -1;
  if (announced > local_clock) {
    const area_lock held(adresse_mem->mutex);
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
  return {adresse_mem->nom_input, adresse_mem->nom_input + nb_entrees};
}

std::list<std::string> IOsharemem_client::output_names() {
  return {adresse_mem->nom_output, adresse_mem->nom_output + nb_sorties};
}

void IOsharemem_client::outputs_refresh() {
  const area_lock held(adresse_mem->mutex);
  advance(adresse_mem->output_clock);
}
