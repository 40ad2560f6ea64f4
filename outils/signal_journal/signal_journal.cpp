// signal_journal <pid> [--until <signal> <value> [<times>]]: prints every change of a running mock-up's
// signals, without taking part in the exchange.

#include <sys/shm.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>

#include "bibliocpp/IOshare.h"

namespace {

constexpr useconds_t look_every_us = 1000;

struct arguments {
  int pid = 0;
  std::string until;
  int value = 0;
  int times = 1;
};

[[noreturn]] void give_up(const std::string& reason) {
  std::cerr << "signal_journal: " << reason << "\n";
  std::exit(2);
}

int number(const char* text) {
  int value = 0;
  const char* const end = text + std::strlen(text);
  const auto [rest, error] = std::from_chars(text, end, value);
  if (error != std::errc{} || rest != end) give_up(std::string("not a number: ") + text);
  return value;
}

arguments parse(int argc, char** argv) {
  if ((argc != 2 && argc != 5 && argc != 6) || (argc > 2 && argv[2] != std::string("--until"))) {
    std::cerr << "usage: signal_journal <pid> [--until <signal> <value> [<times>]]\n";
    std::exit(2);
  }
  arguments a;
  a.pid = number(argv[1]);
  if (argc > 2) {
    a.until = argv[3];
    a.value = number(argv[4]);
    if (argc > 5) a.times = number(argv[5]);
  }
  return a;
}

// The area is known by its size and its creator.
std::optional<int> area_of(int pid) {
  std::ifstream table("/proc/sysvipc/shm");
  std::string line;
  std::getline(table, line);
  while (std::getline(table, line)) {
    std::istringstream row(line);
    long key = 0, ident = 0, mode = 0, size = 0, creator = 0;
    row >> key >> ident >> mode >> size >> creator;
    if (creator == pid && size == sizeof(IO_controleur) + 1) return static_cast<int>(ident);
  }
  return std::nullopt;
}

// Not through the client, which would take its place as the plant's controller.
const IO_controleur& look_into_area_of(int pid) {
  const std::optional<int> ident = area_of(pid);
  if (!ident) give_up("process " + std::to_string(pid) + " has no area");
  void* const address = shmat(*ident, nullptr, SHM_RDONLY);
  if (address == reinterpret_cast<void*>(-1)) give_up("area " + std::to_string(*ident) + " cannot be read");
  const auto& area = *static_cast<const IO_controleur*>(address);
  std::cout << "area " << *ident << ": " << area.nb_entrees << " inputs, " << area.nb_sorties << " outputs"
            << std::endl;
  return area;
}

template <typename T>
T now(const T& field) {
  return std::atomic_ref(const_cast<T&>(field)).load(std::memory_order_acquire);
}

class journal {
 public:
  journal(const IO_controleur& an_area, const arguments& some) : area(an_area), asked(some) {
    for (std::size_t i = 0; i < last_inputs.size(); ++i) {
      last_inputs[i] = now(area.input[i]);
      last_outputs[i] = now(area.output[i]);
    }
  }

  // Prints what has changed since the last look; true when that was what one waited for.
  bool look() {
    const bool in = changes(area.input, last_inputs, area.nom_input, area.nb_entrees);
    const bool out = changes(area.output, last_outputs, area.nom_output, area.nb_sorties);
    return in || out;
  }

 private:
  using values = std::array<std::int32_t, 41>;

  bool changes(const std::int32_t* current, values& last, const char (*names)[50], std::int32_t count) {
    bool waited_for = false;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count) && i < last.size(); ++i) {
      const std::int32_t value = now(current[i]);
      if (value == last[i]) continue;
      last[i] = value;
      print(names[i], value);
      if (names[i] == asked.until && value == asked.value && ++seen == asked.times) waited_for = true;
    }
    return waited_for;
  }

  void print(const char* name, std::int32_t value) const {
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - start;
    std::cout << std::fixed << std::setprecision(3) << std::setw(9) << since.count() << " s  " << name << " "
              << value << std::endl;
  }

  const IO_controleur& area;
  const arguments& asked;
  values last_inputs{}, last_outputs{};
  int seen = 0;
  const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

}  // namespace

int main(int argc, char** argv) {
  const arguments asked = parse(argc, argv);
  const IO_controleur& area = look_into_area_of(asked.pid);
  journal j(area, asked);
  while (now(area.clock) >= 0) {
    if (j.look()) return 0;
    usleep(look_every_us);
  }
  return asked.until.empty() ? 0 : 1;  // the run has ended before what one waited for
}
