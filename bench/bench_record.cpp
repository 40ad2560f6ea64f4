// Recording one batch, and opening a recording.

#include <benchmark/benchmark.h>
#include <sys/shm.h>

#include <cstdlib>
#include <list>
#include <string>

#include "bibliocpp/area_recorder.h"
#include "bibliocpp/signal_files.h"

namespace {

// A look when a batch has come with two changes; 43 signals, as in the sorting plant.
void record_one_batch(benchmark::State& state) {
  std::list<std::string> inputs, outputs;
  for (int i = 0; i < 25; ++i) inputs.push_back("input_" + std::to_string(i));
  for (int k = 0; k < 18; ++k) outputs.push_back("output_" + std::to_string(k));
  IOsharemem_server plant(inputs, outputs);
  area_recorder recorder(area_view(plant.memory_ident()));
  int n = 0;
  for (auto _ : state) {
    state.PauseTiming();
    ++n;
    plant.setreset_input(n % 25, n);
    plant.setreset_input((n + 1) % 25, n);
    plant.inputs_go();
    state.ResumeTiming();
    recorder.look();
  }
  shmctl(plant.memory_ident(), IPC_RMID, nullptr);
}
BENCHMARK(record_one_batch);

// A look when there is nothing new: what the journal does four times of five.
void look_without_news(benchmark::State& state) {
  std::list<std::string> inputs(25, "input"), outputs(18, "output");
  IOsharemem_server plant(inputs, outputs);
  area_recorder recorder(area_view(plant.memory_ident()));
  for (auto _ : state) recorder.look();
  shmctl(plant.memory_ident(), IPC_RMID, nullptr);
}
BENCHMARK(look_without_news);

signal_record a_million_changes() {
  std::vector<recorded_signal> signals;
  for (int s = 0; s < 43; ++s) signals.push_back({"signal_" + std::to_string(s), s >= 25});
  signal_record record(std::move(signals));
  for (int n = 0; n < 1'000'000; ++n)
    record.add(static_cast<std::size_t>(n % 43), {std::int64_t{n / 2} * 5000, n / 2, n / 43 % 2});
  return record;
}

void write_a_million_changes(benchmark::State& state) {
  const signal_record record = a_million_changes();
  for (auto _ : state) write_vcd("bench_record.vcd", record);
  std::remove("bench_record.vcd");
}
BENCHMARK(write_a_million_changes)->Unit(benchmark::kMillisecond);

void open_a_million_changes(benchmark::State& state) {
  write_vcd("bench_record.vcd", a_million_changes());
  for (auto _ : state) {
    const signal_record record = read_vcd("bench_record.vcd");
    if (record.size() < 990'000) std::abort();
  }
  std::remove("bench_record.vcd");
}
BENCHMARK(open_a_million_changes)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
