#include "outils/examen/evidence.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>

#include "bibliocpp/language.h"
#include "outils/examen/harmless.h"
#include "outils/examen/number_text.h"
#include "outils/examen/scenario.h"

namespace {

constexpr std::streamoff most_read = 64 * 1024;

}  // namespace

std::vector<std::string> happened(const verdict& v, std::size_t most) {
  std::vector<std::string> lines;
  const std::size_t first = v.events.size() - std::min<std::size_t>(v.events.size(), most);
  if (first > 0) lines.push_back(tr("... ({} avant)", {std::to_string(first)}));
  for (std::size_t i = first; i < v.events.size(); ++i) {
    const std::string time = with_decimals(seconds_of(v.events[i].cycle), 3);
    lines.push_back(std::string(10 - std::min<std::size_t>(10, time.size()), ' ') + time + " s  " +
                    harmless(v.events[i].text));
  }
  return lines;
}

// Whatever its size, and though one line may be all of it.
std::vector<std::string> last_errors(const verdict& v, std::size_t most) {
  std::ifstream file(std::filesystem::path(v.evidence) / evidence_files::errors, std::ios::binary);
  if (v.evidence.empty() || !file) return {};
  file.seekg(0, std::ios::end);
  const std::streamoff size = file.tellg();
  file.seekg(std::max<std::streamoff>(0, size - most_read));
  std::deque<std::string> last;
  for (std::string line; std::getline(file, line);) {
    last.push_back(harmless(line));
    if (last.size() > most) last.pop_front();
  }
  return {last.begin(), last.end()};
}
