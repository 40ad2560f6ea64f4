#include "bibliocpp/area_view.h"

#include <poll.h>
#include <sys/shm.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>
#include <utility>

#include "bibliocpp/language.h"

namespace {

// The number that the kernel gives for a creator in another namespace of processes, as the plant of a
// controller that is judged in a box of its own. Nothing can be known of it but what it says in the area.
constexpr pid_t elsewhere = 0;

constexpr std::size_t segment_size = sizeof(IO_controleur) + 1;
constexpr std::int32_t most_signals = 41;

template <typename T>
T now(const T& field) {
  return std::atomic_ref(const_cast<T&>(field)).load(std::memory_order_acquire);
}

template <std::size_t slots, std::size_t length>
std::vector<std::string> names_in(const char (&names)[slots][length], std::int32_t count) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
    result.emplace_back(names[i], strnlen(names[i], length));
  return result;
}

std::string whole(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

// Seconds since the epoch; 0 when the process does not run.
std::time_t start_of(pid_t pid) {
  // The name in brackets may hold blanks and brackets of its own: count from the last one.
  const std::string line = whole("/proc/" + std::to_string(pid) + "/stat");
  const std::size_t name_end = line.rfind(')');
  if (name_end == std::string::npos) return 0;
  std::istringstream rest(line.substr(name_end + 1));
  std::string field;
  rest >> field;
  if (field == "Z" || field == "X") return 0;
  constexpr int fields_before_start = 18;
  for (int n = 0; n < fields_before_start; ++n) rest >> field;
  long long ticks = 0;
  rest >> ticks;
  const std::string machine = whole("/proc/stat");
  const std::size_t boot = machine.find("btime ");
  return std::stoll(machine.substr(boot + 6)) + ticks / sysconf(_SC_CLK_TCK);
}

}  // namespace

std::vector<area_entry> areas() {
  std::vector<area_entry> found;
  std::ifstream table("/proc/sysvipc/shm");
  table.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  std::string line;
  while (std::getline(table, line)) {
    std::istringstream row(line);
    area_entry area{};
    std::string key, mode, last_user, group, creator_user, creator_group, attach_time, detach_time;
    std::size_t size = 0;
    row >> key >> area.ident >> mode >> size >> area.creator >> last_user >> area.attached >> area.owner >>
        group >> creator_user >> creator_group >> attach_time >> detach_time >> area.created;
    if (row && size == segment_size) found.push_back(area);
  }
  std::sort(found.begin(), found.end(), [](const area_entry& a, const area_entry& b) {
    return std::pair(a.created, a.ident) > std::pair(b.created, b.ident);
  });
  return found;
}

int area_of(pid_t plant) {
  for (const area_entry& area : areas())
    if (area.creator == plant) return area.ident;
  return -1;
}

// A process's memory map names its segments by their identifiers.
bool has_attached(pid_t process, int ident) {
  std::istringstream map(whole("/proc/" + std::to_string(process) + "/maps"));
  const std::string inode = std::string(" ").append(std::to_string(ident)).append(" ");
  for (std::string line; std::getline(map, line);)
    if (line.find("/SYSV") != std::string::npos && line.find(inode) != std::string::npos) return true;
  return false;
}

// Its start is known to the second, rounded down from a boot time that is rounded too; and should somebody
// have set the clock of the machine since, it is wrong. A plant has its area attached as long as it lives.
bool creator_runs(const area_entry& area) {
  if (area.creator == elsewhere) return true;
  constexpr std::time_t rounding = 2;
  const std::time_t start = start_of(area.creator);
  return start != 0 && (start <= area.created + rounding || has_attached(area.creator, area.ident));
}

area_view::area_view(int ident) {
  const std::vector<area_entry> all = areas();
  const auto mine = std::find_if(all.begin(), all.end(), [&](const auto& a) { return a.ident == ident; });
  if (mine == all.end()) throw area_error(tr("il n'y a pas de zone {}", {std::to_string(ident)}));
  entry = *mine;
  void* const address = shmat(ident, nullptr, SHM_RDONLY);
  if (address == reinterpret_cast<void*>(-1))
    throw area_error(tr("la zone {} est illisible : {}", {std::to_string(ident), std::strerror(errno)}));
  record = static_cast<const IO_controleur*>(address);
  const std::int32_t input_count = now(record->nb_entrees), output_count = now(record->nb_sorties);
  if (std::clamp(input_count, 0, most_signals) != input_count ||
      std::clamp(output_count, 0, most_signals) != output_count) {
    shmdt(record);
    throw area_error(tr("la zone {} n'est pas celle d'une maquette : ses nombres de signaux sont impossibles",
                        {std::to_string(ident)}));
  }
  inputs = names_in(record->nom_input, input_count);
  outputs = names_in(record->nom_output, output_count);
  plant_end = static_cast<int>(syscall(SYS_pidfd_open, entry.creator, 0));  // glibc's own has no C++ linkage
  // Without a process of that number the plant is gone; any other refusal must not pass for its end.
  if (plant_end < 0 && errno != ESRCH && errno != EINVAL) {
    const std::string reason = std::strerror(errno);
    shmdt(record);
    throw area_error(
        tr("le processus {} ne peut être surveillé : {}", {std::to_string(entry.creator), reason}));
  }
  if (plant_end >= 0 && !creator_runs(entry)) {
    close(plant_end);
    plant_end = -1;
  }
}

area_view::area_view(area_view&& other) noexcept
    : entry(other.entry),
      record(std::exchange(other.record, nullptr)),
      plant_end(std::exchange(other.plant_end, -1)),
      inputs(std::move(other.inputs)),
      outputs(std::move(other.outputs)) {}

area_view::~area_view() {
  if (record != nullptr) shmdt(record);
  if (plant_end >= 0) close(plant_end);
}

bool area_view::plant_runs() const {
  if (entry.creator == elsewhere) return clock() >= 0;
  pollfd end{.fd = plant_end, .events = POLLIN, .revents = 0};
  return plant_end >= 0 && poll(&end, 1, 0) == 0;
}

std::int32_t area_view::input(std::size_t i) const { return now(record->input[i]); }
std::int32_t area_view::output(std::size_t k) const { return now(record->output[k]); }
std::int64_t area_view::clock() const { return now(record->clock); }
std::int64_t area_view::output_clock() const { return now(record->output_clock); }
