// Removes the areas of plants that are gone, to which nobody is attached.

#include <sys/shm.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <iostream>
#include <string>
#include <vector>

#include "bibliocpp/area_view.h"
#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

enum status { done = 0, not_done = 1, bad_command_line = 2 };

// The size alone could be a stranger's: an area has signals, and each has a name of at most 49 bytes.
bool has_the_layout(const area_view& area) {
  constexpr std::size_t longest = 49;
  std::vector<std::string> names = area.input_names();
  names.insert(names.end(), area.output_names().begin(), area.output_names().end());
  return !names.empty() && std::all_of(names.begin(), names.end(), [&](const std::string& name) {
    return !name.empty() && name.size() <= longest;
  });
}

std::string described(const area_entry& entry, const area_view& area) {
  tm day{};
  localtime_r(&entry.created, &day);
  std::array<char, 32> created{};
  std::strftime(created.data(), created.size(), "%F %T", &day);
  return tr("zone {}, créée le {} par le processus {}, {} entrées, {} sorties",
            {std::to_string(entry.ident), created.data(), std::to_string(entry.creator),
             std::to_string(area.input_names().size()), std::to_string(area.output_names().size())});
}

// What it was like; empty when it is not to be touched.
std::string abandoned(const area_entry& entry) try {
  if (entry.owner != geteuid() || entry.attached > 0 || creator_runs(entry)) return {};
  const area_view area(entry.ident);
  return has_the_layout(area) ? described(entry, area) : std::string();
} catch (const area_error&) {
  return {};
}

// Somebody may have come since it was listed. Should he come between the two calls, nothing is taken from
// him: a segment lives as long as one is attached.
bool nobody_is_attached(int ident) {
  shmid_ds now{};
  return shmctl(ident, IPC_STAT, &now) == 0 && now.shm_nattch == 0;
}

[[noreturn]] void tell_usage() {
  answer_help(
      tr("usage : nettoyer_zones [--essai]\n"
         "Enlève les zones des maquettes disparues, auxquelles personne n'est attaché ;\n"
         "--essai les montre seulement.\n"));
}

}  // namespace

int main(int argc, char** argv) {
  const std::string word = argc > 1 ? argv[1] : "";
  if (argc == 2 && word == "--help") tell_usage();
  if (argc == 2 && word == "--version") answer_version();
  if (argc > 2 || (argc == 2 && word != "--essai")) {
    std::cerr << "nettoyer_zones: " << tr("je ne comprends pas : {}", {argv[argc - 1]}) << "\n";
    return bad_command_line;
  }
  status as = done;
  for (const area_entry& entry : areas()) {
    const std::string what = abandoned(entry);
    if (what.empty()) continue;
    if (word == "--essai") {
      std::cout << what << "\n";
    } else if (!nobody_is_attached(entry.ident)) {
      continue;
    } else if (shmctl(entry.ident, IPC_RMID, nullptr) == 0) {
      std::cout << tr("{} : enlevée\n", {what});
    } else {
      std::cerr << "nettoyer_zones: " << what << ": " << std::strerror(errno) << "\n";
      as = not_done;
    }
  }
  return std::cout.flush() ? as : not_done;
}
