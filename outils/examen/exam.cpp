#include "outils/examen/exam.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <thread>

#include "bibliocpp/language.h"
#include "bibliocpp/signal_files.h"
#include "outils/child_processes/descendants.h"
#include "outils/child_processes/programs.h"
#include "outils/examen/acceleration.h"
#include "outils/examen/course.h"
#include "outils/examen/guarded_controller.h"
#include "outils/examen/lock_step.h"
#include "outils/examen/operator_at_random.h"
#include "outils/examen/recording.h"
#include "outils/examen/relay.h"
#include "outils/examen/sandbox.h"
#include "outils/examen/virtual_display.h"
#include "outils/led_plant/led_plant.h"
#include "outils/pictures/png_file.h"
#include "outils/pictures/window_picture.h"

namespace {

using namespace std::chrono_literals;
using clock_type = std::chrono::steady_clock;

volatile std::sig_atomic_t end_asked = 0;

void heed_signals() {
  struct sigaction action {};
  action.sa_handler = [](int) { end_asked = 1; };
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) sigaction(number, &action, nullptr);
  signal(SIGPIPE, SIG_IGN);
}

// Why nothing can be said about the controller.
struct no_verdict {
  std::string reason;
};

scenario scenario_for(const exam_order& order) {
  return order.scenario.empty() ? default_scenario_for(order.plant) : read_scenario(order.scenario);
}

std::string last_line(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

// What plant, display and box have to say; of interest only when they fail.
class machine_log {
 public:
  int descriptor() const { return file; }
  machine_log() = default;
  ~machine_log() { close(file); }
  machine_log(const machine_log&) = delete;
  machine_log& operator=(const machine_log&) = delete;
  std::string last_line() const {
    std::array<char, 1024> end{};
    const off_t size = lseek(file, 0, SEEK_END), from = std::max<off_t>(0, size - std::ssize(end));
    const ssize_t count = pread(file, end.data(), end.size(), from);
    return ::last_line({end.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))});
  }

 private:
  int file = memfd_create("log", MFD_CLOEXEC);
};

class exam {
 public:
  exam(const exam_order& an_order, const std::string& a_self, verdict& a_verdict)
      : order(an_order), self(a_self), v(a_verdict), asked(scenario_for(an_order)) {}

  void hold() {
    const virtual_display screen(log.descriptor());
    setenv("DISPLAY", screen.name().c_str(), 1);
    led_plant the_plant({order.plant_program, ":"}, log.descriptor());
    unsetenv("DISPLAY");  // none of the controller's business
    plant = &the_plant;
    while (!done) heed(next_line());
    v.events = its->events();
    try {
      if (!order.evidence.empty()) keep_picture(screen.name());
      between->end();
      const std::string written = controller->end();
      if (v.what == outcome::ended_early || v.what == outcome::crashed) add_last_words(last_line(written));
      if (!order.evidence.empty()) keep_evidence(written);
    } catch (const no_verdict& why) {  // there is one
      v.remarks.push_back(why.reason);
    } catch (const std::runtime_error& why) {
      v.remarks.emplace_back(why.what());
    }
  }

 private:
  plant_line next_line() {
    // A plant does nothing but its cycle, and starts up before the first one.
    const auto patience =
        std::chrono::milliseconds(order.patience_ms) * (cycle == 0 ? 2 : 1) * first_patience;
    const auto deadline = clock_type::now() + patience;
    for (;;) {
      if (auto line = plant->next(patience)) return *line;
      if (end_asked != 0) throw no_verdict{tr("interrompu")};
      if (clock_type::now() > deadline) throw no_verdict{tr("la maquette ne répond plus")};
    }
  }

  void heed(const plant_line& line) {
    using kind = plant_line::kind;
    switch (line.what) {
      case kind::area:
        return meet(static_cast<int>(line.number));
      case kind::fault:
        return faults.push_back(line.text);
      case kind::error:
        return refuse(line.text);
      case kind::pause:
        if (!between) throw no_verdict{tr("la maquette n'a pas de zone")};
        cycle = v.cycles = line.number;
        return step();
      case kind::other:
        throw no_verdict{tr("la maquette dit « {} »", {line.text})};
      default:
        throw no_verdict{with_last_line(tr("la maquette s'est terminée"))};
    }
  }

  // Of what has been written to the standard error stream.
  std::string with_last_line(const char* reason) const {
    return log.last_line().empty() ? reason : tr("{} : {}", {reason, log.last_line()});
  }

  // The plant has its area: now the controller can have its own, and begin.
  void meet(int plant_area) {
    between.emplace(plant_area);
    its.emplace(asked, between->input_names(), between->output_names());
    signals.emplace(between->input_names(), between->output_names());
    inputs.resize(between->input_names().size());
    seen = inputs;
    outputs.resize(between->output_names().size());
    driven = outputs;
    std::vector<std::string> command = order.command;
    command.insert(command.end(), {"-automemlink", std::to_string(between->ident())});
    std::vector<std::string> box, needed = order.command;
    needed.push_back(self);
    if (order.boxed) box = sandbox(needed).for_controller();
    controller.emplace(self, box,
                       controller_limits{.memory_mib = order.memory_mib, .acceleration = acceleration()},
                       command, log.descriptor());
  }

  int acceleration() {
    if (order.real_time || order.acceleration == 1) return 1;
    if (!can_be_accelerated())
      v.remarks.emplace_back(tr("libfaketime manque : ses pauses ne sont pas accélérées"));
    else if (is_statically_linked(find_program(order.command[0]).value_or("")))
      v.remarks.emplace_back(tr("lié statiquement : ses pauses ne sont pas accélérées"));
    return can_be_accelerated() ? order.acceleration : 1;
  }

  // Which of several lines it was, the plant does not say; its text names what it could not find.
  void refuse(const std::string& text) {
    const auto named = std::find_if(said.begin(), said.end(), [&](const std::string& line) {
      return text.find('"' + line.substr(line.find(' ') + 1) + '"') != std::string::npos;
    });
    if (!said.empty()) its->refused(cycle, named == said.end() ? said.front() : *named, text);
  }

  void step() {
    if (end_asked != 0) throw no_verdict{tr("interrompu")};
    between->read_inputs(inputs);
    seen = inputs;
    its->force_inputs(cycle, seen);
    for (const std::string& text : faults) its->fault(cycle, text);
    if (its->over() || !(order.real_time ? exchange_in_real_time() : exchange())) {
      signals->add(cycle, seen, outputs);
      if (its->over()) conclude();
      done = true;
      return;
    }
    signals->add(cycle, seen, outputs);
    driven = outputs;
    its->force_outputs(cycle, driven);
    between->drive(driven);
    said = its->advance(cycle, inputs, outputs);
    if (its->over()) {
      conclude();
      done = true;
      return;
    }
    const std::vector<std::string> more = at_random();
    said.insert(said.end(), more.begin(), more.end());
    std::string lines;
    for (const std::string& line : said) lines += line + "\n";
    if (cycle == 1) lines = "blind\n" + lines;  // nobody looks before the end
    plant->say(lines + "go\n");
  }

  // Until the scenario's own operator comes at a given time.
  std::vector<std::string> at_random() {
    if (order.random_seed < 0) return {};
    const auto first = std::find_if(asked.actions.begin(), asked.actions.end(),
                                    [](const operator_action& each) { return each.at.has_value(); });
    return first == asked.actions.end() || cycle < *first->at - 1 ? hands.advance() : hands.leave();
  }

  void conclude() {
    const finding found = its->end(cycle);
    using kind = finding::kind;
    settle(found.what == kind::passed   ? outcome::passed
           : found.what == kind::failed ? outcome::failed
                                        : outcome::not_judged,
           0, found.sentence);
    v.cycle = found.cycle;
  }

  void settle(outcome what, int number, const std::string& sentence) {
    v.what = what;
    v.number = number;
    v.sentence = sentence;
    v.cycle = cycle;
  }

  // The controller sees the inputs and answers. False when there is no more to be seen of it.
  bool exchange() {
    const std::int64_t before = between->answers();
    between->publish(seen);
    const auto patience = std::chrono::milliseconds(order.patience_ms) * (has_answered ? 1 : first_patience);
    const answer its_answer = waiting.wait(*between, before, patience, [this] { return may_answer(); });
    if (its_answer == answer::stop) return tell_end(), false;
    if (its_answer == answer::none) {
      if (!has_answered) return tell_silence(), false;
      if (++v.unanswered > most_unanswered) return settle(outcome::too_slow, 0, ""), false;
    }
    has_answered = true;
    between->read_outputs(outputs);
    if (!time_is_up()) return true;
    settle(outcome::too_slow, 0, tr("{} s sont passées", {std::to_string(order.most_seconds)}));
    return false;
  }

  // As a plant at its own pace, which waits for nobody; outputs are what they are after its pause.
  bool exchange_in_real_time() {
    const std::int64_t before = between->answers();
    if (cycle == 1) last_answer = clock_type::now();
    between->publish(seen);
    std::this_thread::sleep_for(std::chrono::microseconds(cycle_us));
    if (!may_answer()) return tell_end(), false;
    between->read_outputs(outputs);
    const auto now = clock_type::now();
    if (between->answers() != before) {
      has_answered = true;
      last_answer = now;
    } else if (now - last_answer >
               std::chrono::milliseconds(order.patience_ms) * (has_answered ? 1 : first_patience)) {
      if (!has_answered) return tell_silence(), false;
      if (++v.unanswered > most_unanswered) return settle(outcome::too_slow, 0, ""), false;
      last_answer = now;
    }
    return true;
  }

  bool time_is_up() const { return clock_type::now() - begin > std::chrono::seconds(order.most_seconds); }

  bool may_answer() {
    return end_asked == 0 && controller->look().what == controller_state::kind::runs && !time_is_up();
  }

  void tell_silence() {
    settle(outcome::silent, 0, between->attached() ? "" : tr("il ne s'est pas attaché à la zone"));
  }

  void tell_end() {
    using kind = controller_state::kind;
    if (end_asked != 0) throw no_verdict{tr("interrompu")};
    const auto [what, number] = controller->look();
    const std::string n = std::to_string(number);
    switch (what) {
      case kind::refused:
        return tell_refusal(number);
      case kind::exited:
        return settle(outcome::ended_early, number, "");
      case kind::killed:
        return settle(outcome::crashed, number, "");
      case kind::too_much_memory:
        return settle(outcome::failed, 0, tr("{} Mio de mémoire, plus que permis", {n}));
      case kind::too_many_processes:
        return settle(outcome::failed, 0, tr("{} processus, plus que permis", {n}));
      case kind::runs:
        return settle(outcome::too_slow, 0, tr("{} s sont passées", {std::to_string(order.most_seconds)}));
      default:
        throw no_verdict{with_last_line(tr("le contrôleur n'a pu être lancé"))};
    }
  }

  // Mostly why it has gone. Not the line with which the library greets its area.
  void add_last_words(const std::string& line) {
    if (!line.starts_with("ident_mem=")) v.sentence = line;
  }

  void tell_refusal(int error) {
    const std::string& program = order.command.front();
    const bool there = program.find('/') != std::string::npos && access(program.c_str(), F_OK) == 0;
    if (error != ENOENT) return settle(outcome::not_executable, error, "");
    if (!there) return settle(outcome::not_found, 0, program);
    settle(outcome::not_executable, 0, tr("l'interpréteur que nomme sa première ligne est introuvable"));
  }

  // A plant that cannot draw its scene anew, and refuses to leave it undrawn, has drawn it.
  void keep_picture(const std::string& screen) {
    plant->say("look\n");
    plant_line line{};
    do line = next_line();
    while (line.what == plant_line::kind::error || line.what == plant_line::kind::pause);
    if (line.what != plant_line::kind::seen) return;
    const window_picture seen_last = picture_of_largest_window(screen);
    if (seen_last.width > 0)
      write_png(order.evidence + "/" + evidence_files::picture, seen_last.pixels, seen_last.width,
                seen_last.height);
  }

  void keep_evidence(const std::string& written) const {
    write_vcd(order.evidence + "/" + evidence_files::signals, signals->record());
    std::ofstream(order.evidence + "/" + evidence_files::errors, std::ios::binary) << written;
  }

  // To start and to attach, also beside others on a busy machine.
  static constexpr int first_patience = 20;
  static constexpr int most_unanswered = 10;

  const exam_order& order;
  const std::string& self;
  verdict& v;
  scenario asked;
  const machine_log log;
  const clock_type::time_point begin = clock_type::now();
  led_plant* plant = nullptr;
  std::optional<relay> between;
  std::optional<course> its;
  std::optional<recording> signals;
  std::optional<guarded_controller> controller;
  answer_wait waiting;
  clock_type::time_point last_answer;
  operator_at_random hands{static_cast<unsigned>(order.random_seed)};
  std::vector<std::int32_t> inputs, seen, outputs, driven;
  std::vector<std::string> faults, said;
  std::int64_t cycle = 0;
  bool has_answered = false, done = false;
};

}  // namespace

verdict hold_exam(const exam_order& order, const std::string& self) {
  heed_signals();
  adopt_descendants();
  if (!order.real_time) {
    stay_on_one_processor(order.processor);
    prctl(PR_SET_TIMERSLACK, 1);
  }
  const auto begin = clock_type::now();
  verdict v;
  v.candidate = order.name;
  v.evidence = order.evidence;
  try {
    exam(order, self, v).hold();
  } catch (const no_verdict& why) {
    v.what = outcome::not_judged;
    v.sentence = why.reason;
  } catch (const std::exception& why) {
    v.what = outcome::not_judged;
    v.sentence = why.what();
  }
  end_descendants(0ms);
  v.wall_seconds = std::chrono::duration<double>(clock_type::now() - begin).count();
  return v;
}
