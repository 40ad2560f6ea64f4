// Prints every change of a running plant's signals, without taking part in the exchange.

#include <csignal>
#include <ctime>

#include <array>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

#include "bibliocpp/area_recorder.h"
#include "bibliocpp/language.h"
#include "outils/signal_journal/command_line.h"
#include "outils/signal_journal/kept_file.h"

namespace {

enum status { as_asked = 0, not_as_asked = 1, bad_input = 2 };

constexpr timespec between_looks{.tv_sec = 0, .tv_nsec = 1'000'000};
constexpr std::size_t changes_in_memory = 10'000;  // nobody looks back here

void tell(const std::string& what) { std::cerr << "signal_journal: " << what << "\n"; }

// The signals that end the journal, but for those it is to ignore ("nohup"): they are waited for, so that
// the files are always ended.
sigset_t wait_for_signals() {
  sigset_t ends;
  sigemptyset(&ends);
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    struct sigaction now {};
    sigaction(number, nullptr, &now);
    if (now.sa_handler != SIG_IGN) sigaddset(&ends, number);
  }
  sigprocmask(SIG_BLOCK, &ends, nullptr);
  return ends;
}

class journal {
 public:
  journal(area_view area, const command_line& what)
      : asked(what), recorder(std::move(area), changes_in_memory) {
    const auto& signals = recorder.record().signals();
    if (!asked.vcd.empty()) vcd.emplace(asked.vcd, signals);
    if (!asked.csv.empty()) csv.emplace(asked.csv, signals);
  }

  status run() {
    const sigset_t ends = wait_for_signals();
    print_start();
    keep();
    while (!recorder.ended()) {
      const bool to_end = sigtimedwait(&ends, nullptr, &between_looks) > 0;
      recorder.look();
      print();
      keep();
      if (seen >= asked.times) return end(as_asked);
      if (to_end) return end(asked.until.empty() ? as_asked : not_as_asked);
      if (!std::cout) return end(not_as_asked);
    }
    const bool killed = recorder.state() == plant_state::killed;
    print_time(recorder.record().end_us());
    std::cout << (killed ? tr("la maquette a disparu sans finir sa marche") : tr("fin de la marche"))
              << std::endl;
    return end(killed || !asked.until.empty() ? not_as_asked : as_asked);
  }

 private:
  void print_start() const {
    const area_view& area = recorder.area();
    std::cout << tr("zone {} : {} entrées, {} sorties\n",
                    {std::to_string(area.ident()), std::to_string(area.input_names().size()),
                     std::to_string(area.output_names().size())});
    for (const look_news::change& one : recorder.news().changes) print(one, " = ");
    std::cout << std::flush;
  }

  void print() {
    const look_news& news = recorder.news();
    if (news.missed > 0) {
      print_time(recorder.record().end_us());
      std::cout << tr("{} lots d'entrées manqués\n", {std::to_string(news.missed)});
    }
    for (const look_news::change& one : news.changes) {
      print(one, " ");
      const std::string& name = recorder.record().signals()[one.signal].name;
      if (name == asked.until && one.what.value == asked.value) ++seen;
    }
    if (news.missed > 0 || !news.changes.empty()) std::cout << std::flush;
  }

  void print(const look_news::change& one, const char* sign) const {
    print_time(one.what.time_us);
    std::cout << recorder.record().signals()[one.signal].name << sign << one.what.value << "\n";
  }

  // Time of day, and seconds since the journal was started.
  void print_time(std::int64_t time_us) const {
    using std::chrono::system_clock;
    const auto moment = recorder.made_at() + std::chrono::microseconds(time_us);
    const std::time_t second = system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(moment));
    const auto part = std::chrono::floor<std::chrono::milliseconds>(moment.time_since_epoch()).count() % 1000;
    tm day{};
    localtime_r(&second, &day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d %9.3f s  ", day.tm_hour, day.tm_min,
                  day.tm_sec, static_cast<int>(part), static_cast<double>(time_us) / 1e6);
    std::cout << text.data();
  }

  void keep() {
    if (vcd) vcd->add(recorder.news(), recorder);
    if (csv) csv->add(recorder.news(), recorder);
  }

  status end(status as) {
    if (vcd) vcd->end(recorder.record().end_us());
    if (csv) csv->end(recorder.record().end_us());
    if (std::cout.flush()) return as;
    tell(tr("la sortie ne peut être écrite"));
    return not_as_asked;
  }

  const command_line& asked;
  area_recorder recorder;
  std::optional<kept_file<vcd_writer>> vcd;
  std::optional<kept_file<csv_writer>> csv;
  int seen = 0;
};

bool has_signal(const area_view& area, const std::string& name) {
  for (const auto* const names : {&area.input_names(), &area.output_names()})
    for (const std::string& one : *names)
      if (one == name) return true;
  return false;
}

status run(const command_line& asked) {
  const int ident = area_of(asked.plant);
  if (ident < 0) throw bad_command_line(tr("pas de zone du processus {}", {std::to_string(asked.plant)}));
  if (asked.only_area) {
    std::cout << ident << std::endl;
    return std::cout ? as_asked : not_as_asked;
  }
  area_view area(ident);
  if (!asked.until.empty() && !has_signal(area, asked.until))
    throw bad_command_line(tr("la zone n'a pas de signal {}", {asked.until}));
  return journal(std::move(area), asked).run();
}

}  // namespace

int main(int argc, char** argv) try {
  return run(read_command_line(argc, argv));
} catch (const bad_command_line& error) {
  tell(error.what());
  if (argc < 2) std::cerr << usage();
  return bad_input;
} catch (const area_error& error) {
  tell(error.what());
  return bad_input;
} catch (const signal_file_error& error) {
  tell(error.what());
  return not_as_asked;
}
