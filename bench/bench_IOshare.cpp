// What the exchange of signals costs each side, without contention.

#include <benchmark/benchmark.h>
#include <sys/shm.h>

#include <list>
#include <string>

#include "bibliocpp/IOshare.h"

namespace {

constexpr int most_names = 41;

struct exchange {
  std::list<std::string> inputs, outputs;
  IOsharemem_server server;
  IOsharemem_client client;

  explicit exchange(int nb_inputs, int nb_outputs)
      : inputs(names("entree_numero_", nb_inputs)),
        outputs(names("sortie_numero_", nb_outputs)),
        server(inputs, outputs),
        client(server.memory_ident()) {}
  ~exchange() { shmctl(server.memory_ident(), IPC_RMID, nullptr); }
  exchange(const exchange&) = delete;
  exchange& operator=(const exchange&) = delete;

  static std::list<std::string> names(const std::string& prefix, int count) {
    std::list<std::string> all;
    for (int i = 0; i < count; ++i) all.push_back(prefix + std::to_string(i));
    return all;
  }
};

void publish_16_inputs(benchmark::State& state) {
  exchange e(16, 11);
  int value = 0;
  for (auto _ : state) {
    value ^= 1;
    for (int i = 0; i < 16; ++i) e.server.setreset_input(i, value);
    e.server.inputs_go();
  }
}
BENCHMARK(publish_16_inputs);

void receive_when_new(benchmark::State& state) {
  exchange e(16, 11);
  for (auto _ : state) {
    e.server.inputs_go();
    benchmark::DoNotOptimize(e.client.receive());
  }
}
BENCHMARK(receive_when_new);

void input_is_set_last_of_41(benchmark::State& state) {
  exchange e(most_names, most_names);
  const std::string name = e.inputs.back();
  for (auto _ : state) benchmark::DoNotOptimize(e.client.input_is_set(name));
}
BENCHMARK(input_is_set_last_of_41);

void setreset_output_last_of_41(benchmark::State& state) {
  exchange e(most_names, most_names);
  const std::string name = e.outputs.back();
  for (auto _ : state) e.client.setreset_output(name, 1);
}
BENCHMARK(setreset_output_last_of_41);

}  // namespace

BENCHMARK_MAIN();
