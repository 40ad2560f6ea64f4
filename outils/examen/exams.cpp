#include "outils/examen/exams.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <list>

#include "bibliocpp/language.h"
#include "outils/child_processes/descendants.h"
#include "outils/child_processes/launch.h"
#include "outils/child_processes/signal_inbox.h"
#include "outils/examen/sandbox.h"
#include "outils/examen/verdict_lines.h"

namespace {

using namespace std::chrono_literals;

// Both ends of the way into an exam's process: what its order is, word by word.
constexpr std::string exam_order::*texts[] = {&exam_order::plant, &exam_order::plant_program,
                                              &exam_order::scenario, &exam_order::evidence,
                                              &exam_order::name};
constexpr int exam_order::*numbers[] = {&exam_order::acceleration, &exam_order::patience_ms,
                                        &exam_order::most_seconds, &exam_order::memory_mib,
                                        &exam_order::random_seed,  &exam_order::processor};
constexpr bool exam_order::*choices[] = {&exam_order::real_time, &exam_order::boxed};
constexpr std::size_t own_words = 1 + std::size(texts) + std::size(numbers) + std::size(choices);

std::vector<std::string> words_of(const exam_order& order, int result) {
  std::vector<std::string> words{std::to_string(result)};
  for (const auto text : texts) words.push_back(order.*text);
  for (const auto number : numbers) words.push_back(std::to_string(order.*number));
  for (const auto choice : choices) words.emplace_back(order.*choice ? "1" : "0");
  words.insert(words.end(), order.command.begin(), order.command.end());
  return words;
}

exam_order order_from(const std::vector<std::string>& words) {
  exam_order order;
  auto word = words.begin() + 1;
  for (const auto text : texts) order.*text = *word++;
  for (const auto number : numbers) order.*number = std::atoi((word++)->c_str());
  for (const auto choice : choices) order.*choice = *word++ == "1";
  order.command.assign(word, words.end());
  return order;
}

struct running_exam {
  std::size_t number;
  pid_t pid;
  int processor;
  int result;  // what it has to say
  std::string said;
};

class examination {
 public:
  examination(const std::vector<exam_order>& some, const std::string& a_self,
              const std::vector<std::string>& needed, const std::function<void(const verdict&)>& a_listener)
      : orders(some), self(a_self), boxes(needed), tell(a_listener) {
    for (const exam_order& order : orders) {
      verdict v;
      v.candidate = order.name;
      v.evidence = order.evidence;
      v.sentence = tr("interrompu");
      verdicts.push_back(v);
    }
  }

  std::vector<verdict> hold(int at_once) {
    std::size_t next = 0;
    while (!interrupted && (next < orders.size() || !running.empty())) {
      while (next < orders.size() && std::ssize(running) < at_once) start(next++, at_once);
      wait_for_news();
      hear();
    }
    for (const running_exam& one : running) kill(one.pid, orders[one.number].boxed ? SIGKILL : SIGTERM);
    wait_for_descendants(running.empty() ? 0ms : 5s);
    end_descendants(0ms);
    return verdicts;
  }

 private:
  void start(std::size_t number, int at_once) {
    exam_order order = orders[number];
    if (order.command.empty()) {
      verdicts[number].what = outcome::not_found;
      return conclude(number, order.missing);
    }
    while (std::any_of(running.begin(), running.end(),
                       [&](const running_exam& one) { return one.processor == order.processor; }))
      order.processor = (order.processor + 1) % at_once;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return conclude(number, std::strerror(errno));
    std::vector<std::string> words =
        order.boxed ? boxes.for_exam(order.evidence) : std::vector<std::string>{};
    words.insert(words.end(), {self, exam_option});
    const std::vector<std::string> own = words_of(order, ends[1]);
    words.insert(words.end(), own.begin(), own.end());
    const auto [pid, error] =
        launch(words, order.boxed ? SIGKILL : SIGTERM, [&] { fcntl(ends[1], F_SETFD, 0); });
    close(ends[1]);
    if (pid < 0) {
      close(ends[0]);
      return conclude(number, std::strerror(error));
    }
    running.push_back({number, pid, order.processor, ends[0], ""});
  }

  void wait_for_news() {
    std::vector<pollfd> awaited;
    for (const running_exam& one : running) awaited.push_back({one.result, POLLIN, 0});
    poll(awaited.data(), awaited.size(), 100);
    for (int signal = 0; (signal = signals.next(0ms)) != 0;) interrupted = interrupted || signal != SIGCHLD;
  }

  // Of each exam that has closed its end, and has thereby ended.
  void hear() {
    for (auto one = running.begin(); one != running.end();) {
      std::array<char, 4096> some;
      pollfd arrival{.fd = one->result, .events = POLLIN, .revents = 0};
      ssize_t count = -1;
      while (poll(&arrival, 1, 0) == 1 && (count = read(one->result, some.data(), some.size())) > 0)
        one->said.append(some.data(), static_cast<std::size_t>(count));
      if (count != 0) {
        ++one;
        continue;
      }
      close(one->result);
      // Only what its result says counts; but nobody else will take leave of it.
      int status = 0;
      waitpid(one->pid, &status, 0);
      take_verdict(*one, status);
      one = running.erase(one);
    }
  }

  void take_verdict(const running_exam& one, int status) {
    if (!from_lines(one.said, verdicts[one.number]))
      return conclude(one.number, tr("l'examen lui-même s'est arrêté ({})", {std::to_string(status)}));
    tell(verdicts[one.number]);
  }

  void conclude(std::size_t number, const std::string& reason) {
    verdicts[number].sentence = reason;
    tell(verdicts[number]);
  }

  const std::vector<exam_order>& orders;
  const std::string& self;
  const sandbox boxes;
  const std::function<void(const verdict&)>& tell;
  const signal_inbox signals;
  std::vector<verdict> verdicts;
  std::list<running_exam> running;
  bool interrupted = false;
};

}  // namespace

std::vector<verdict> hold_exams(const std::vector<exam_order>& orders, int at_once, const std::string& self,
                                const std::vector<std::string>& needed,
                                const std::function<void(const verdict&)>& tell) {
  adopt_descendants();
  return examination(orders, self, needed, tell).hold(at_once);
}

int hold_one_exam(const std::vector<std::string>& words, const std::string& self) {
  if (words.size() <= own_words) return 2;
  const int result = std::atoi(words[0].c_str());
  fcntl(result, F_SETFD, FD_CLOEXEC);
  const std::string lines = to_lines(hold_exam(order_from(words), self));
  return write(result, lines.data(), lines.size()) == std::ssize(lines) ? 0 : 1;
}
