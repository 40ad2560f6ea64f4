// From a sensor's change to the actuator's answer, over two processes. The floor is in the pauses: a
// controller that has nothing new to read sleeps 10 ms, and the plant looks every 5 ms.

#include <benchmark/benchmark.h>
#include <sys/prctl.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <list>
#include <random>
#include <string>

#include "bench/distribution.h"
#include "bibliocpp/IOshare.h"

namespace {

pid_t start_controller(int ident) {
  const pid_t controller = fork();
  if (controller != 0) return controller;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  IOsharemem_client area(ident);
  for (int news = 0; (news = area.receive()) >= 0;)
    if (news == 1) {
      area.setreset_output("answer", area.input_is_set("question"));
      area.outputs_refresh();
    }
  _exit(0);
}

// `pause_us` is what the plant sleeps between two looks: 5000 as the mine does, 0 for the controller's
// share alone.
void round_trip(benchmark::State& state) {
  const auto pause_us = static_cast<useconds_t>(state.range(0));
  std::list<std::string> inputs{"question"}, outputs{"answer"};
  IOsharemem_server area(inputs, outputs);
  const pid_t controller = start_controller(area.memory_ident());
  std::mt19937 random(1);
  distribution times;
  int question = 0;
  for (auto _ : state) {
    usleep(20'000 + random() % 10'000);  // not in step with the controller's sleep
    question = !question;
    const auto start = distribution::clock::now();
    area.setreset_input(0, question);
    area.inputs_go();
    while (area.output_value(0) != question)
      if (pause_us != 0) usleep(pause_us);
    const auto time = distribution::clock::now() - start;
    times.add(time);
    state.SetIterationTime(std::chrono::duration<double>(time).count());
  }
  times.report(state);
  area.sharing_terminate();
  waitpid(controller, nullptr, 0);
  shmctl(area.memory_ident(), IPC_RMID, nullptr);
}
BENCHMARK(round_trip)->UseManualTime()->Arg(5000)->Arg(0)->Iterations(500)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
