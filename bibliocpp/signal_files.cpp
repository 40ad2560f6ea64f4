#include "bibliocpp/signal_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <queue>
#include <sstream>
#include <tuple>
#include <utility>

#include "bibliocpp/language.h"

namespace {

// The same length, so that one can be written over the other.
constexpr const char *wire_type = "wire     1", *integer_type = "integer 32";
const std::string batch_code = "!", missed_code = "\"";

// Printable characters make up the short names by which a VCD calls its variables; the first two are taken.
std::string code_of(std::size_t signal) {
  constexpr std::size_t first = '!', characters = '~' - '!' + 1;
  std::string code;
  for (std::size_t rest = signal + 2; code.empty() || rest > 0; rest /= characters)
    code += static_cast<char>(first + rest % characters);
  return code;
}

std::string vcd_name(std::string name) {
  for (char& c : name)
    if (static_cast<unsigned char>(c) <= ' ' || c == '\x7f') c = '_';
  return name.empty() || name[0] == '$' ? "_" + name : name;
}

std::string csv_field(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

std::string seconds(std::int64_t time_us) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%lld.%06lld", static_cast<long long>(time_us / 1'000'000),
                static_cast<long long>(time_us % 1'000'000));
  return text.data();
}

// Hands a record to a writer in the order of time; batches are missed before what came of them is seen.
template <typename writer>
void hand_over(const signal_record& record, writer& to) {
  using next_of = std::tuple<std::int64_t, std::ptrdiff_t, std::size_t>;  // time, signal or -1, index
  std::priority_queue<next_of, std::vector<next_of>, std::greater<>> next;
  const auto push = [&](std::ptrdiff_t signal, std::size_t n) {
    if (signal < 0) {
      if (n < record.missed().size()) next.emplace(record.missed()[n].time_us, signal, n);
      return;
    }
    const auto& changes = record.changes(static_cast<std::size_t>(signal));
    if (n < changes.size()) next.emplace(changes[n].time_us, signal, n);
  };
  for (std::ptrdiff_t signal = -1; signal < std::ssize(record.signals()); ++signal) push(signal, 0);
  std::int64_t clock = 0;
  while (!next.empty()) {
    const auto [time_us, signal, n] = next.top();
    next.pop();
    if (signal < 0) {
      to.miss(record.missed()[n], clock);
    } else {
      const signal_change& change = record.changes(static_cast<std::size_t>(signal))[n];
      clock = change.clock;
      to.add(static_cast<std::size_t>(signal), change);
    }
    push(signal, n + 1);
  }
  to.reach(record.end_us());
}

// Room is made before a byte is changed, so that a full disk is known while all can still be undone.
void write_whole(const std::string& path, const std::string& bytes) {
  constexpr mode_t mode = 0666;
  int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  const bool is_new = file >= 0;
  if (!is_new && errno == EEXIST) file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, mode);
  struct stat before {};
  int error = file < 0 || fstat(file, &before) != 0 ? errno : 0;
  const bool on_disk = S_ISREG(before.st_mode);
  const auto size = static_cast<off_t>(bytes.size());
  if (error == 0 && on_disk && (error = posix_fallocate(file, 0, size)) != 0 &&
      ftruncate(file, before.st_size) != 0)
    error = errno;
  for (std::size_t done = 0; error == 0 && done < bytes.size();) {
    const ssize_t n = write(file, bytes.data() + done, bytes.size() - done);
    if (n > 0)
      done += static_cast<std::size_t>(n);
    else if (n < 0 && errno != EINTR)
      error = errno;
  }
  if (error == 0 && on_disk && ftruncate(file, size) != 0) error = errno;
  if (file >= 0 && close(file) != 0 && error == 0) error = errno;
  if (error != 0 && is_new) unlink(path.c_str());
  if (error != 0) throw signal_file_error(path + ": " + std::strerror(error));
}

}  // namespace

vcd_writer::vcd_writer(std::ostream& a_stream, const std::vector<recorded_signal>& signals) : out(a_stream) {
  const std::streamoff start = out.tellp();
  std::string head = "$version wagons $end\n$timescale 1 us $end\n$scope module zone $end\n$var integer 64 " +
                     batch_code + " lot $end\n$var integer 64 " + missed_code +
                     " manques $end\n$upscope $end\n";
  for (std::size_t s = 0; s < signals.size(); ++s)
    variables.push_back({.code = code_of(s), .declared_at = -1, .is_wire = start >= 0});
  for (const bool are_outputs : {false, true}) {
    head += std::string("$scope module ") + (are_outputs ? "sorties" : "entrees") + " $end\n";
    for (std::size_t s = 0; s < signals.size(); ++s) {
      if (signals[s].is_output != are_outputs) continue;
      head += "$var ";
      variables[s].declared_at = start + std::ssize(head);
      head += variables[s].is_wire ? wire_type : integer_type;
      head += " " + variables[s].code + " " + vcd_name(signals[s].name) + " $end\n";
    }
    head += "$upscope $end\n";
  }
  out << head << "$enddefinitions $end\n";
}

// As a vector whatever the type, so that it stands when the type is changed.
void vcd_writer::value(const std::string& code, std::int64_t value, int bits) {
  std::string digits = "b";
  int bit = bits - 1;
  while (bit > 0 && (value >> bit & 1) == 0) --bit;
  for (; bit >= 0; --bit) digits += (value >> bit & 1) != 0 ? '1' : '0';
  out << digits << ' ' << code << '\n';
}

void vcd_writer::batch(std::int64_t clock) {
  if (clock == last_clock) return;
  last_clock = clock;
  value(batch_code, std::max<std::int64_t>(clock, 0), 64);
}

void vcd_writer::add(std::size_t signal, const signal_change& change) {
  variable& it = variables[signal];
  if (it.is_wire && change.value != 0 && change.value != 1) {
    it.is_wire = false;
    out.seekp(it.declared_at);
    out << integer_type;
    out.seekp(0, std::ios::end);
  }
  reach(change.time_us);
  batch(change.clock);
  value(it.code, change.value, 32);
}

void vcd_writer::miss(const missed_batches& some, std::int64_t clock) {
  reach(some.time_us);
  batch(clock);
  value(missed_code, missed += some.count, 64);
}

void vcd_writer::reach(std::int64_t time_us) {
  if (time_us <= time) return;
  const bool is_first = time < 0;
  time = time_us;
  out << '#' << time << '\n';
  if (is_first) value(missed_code, 0, 64);
}

csv_writer::csv_writer(std::ostream& a_stream, std::vector<recorded_signal> some_signals)
    : out(a_stream), signals(std::move(some_signals)) {
  out << "time_s,batch,direction,signal,value\n";
}

void csv_writer::add(std::size_t signal, const signal_change& change) {
  const recorded_signal& it = signals[signal];
  out << seconds(change.time_us) << ',' << change.clock << ',' << (it.is_output ? "output" : "input") << ','
      << csv_field(it.name) << ',' << change.value << '\n';
}

void csv_writer::miss(const missed_batches& some, std::int64_t clock) {
  out << seconds(some.time_us) << ',' << clock << ",missed,," << some.count << '\n';
}

void write_vcd(const std::string& path, const signal_record& record) {
  std::ostringstream text;
  vcd_writer writer(text, record.signals());
  hand_over(record, writer);
  write_whole(path, text.str());
}

void write_csv(const std::string& path, const signal_record& record) {
  std::ostringstream text;
  csv_writer writer(text, record.signals());
  hand_over(record, writer);
  write_whole(path, text.str());
}
