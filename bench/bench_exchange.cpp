// One exchange of all 27 signals of the mine with its controller: through the area, and as a field bus
// would do it, over Modbus TCP on the loopback. The area is worked from both sides here, by name and by
// handle; Modbus needs two requests, one that reads 16 bits and one that writes 11.

#include <benchmark/benchmark.h>
#include <modbus.h>
#include <netinet/in.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/signal_handles.h"
#include "maquettes_graphiques/WAGONS/mine_signals.h"

namespace {

struct mine_area {
  std::list<std::string> inputs{table_signaux, table_signaux + entree::count};
  std::list<std::string> outputs{table_signaux + entree::count,
                                 table_signaux + entree::count + sortie::count};
  IOsharemem_server plant{inputs, outputs};
  IOsharemem_client client{plant.memory_ident()};

  ~mine_area() { shmctl(plant.memory_ident(), IPC_RMID, nullptr); }

  // The plant publishes, the controller reads and answers, the plant looks.
  template <typename Controller>
  void exchange_over_and_over(benchmark::State& state, const Controller& answer) {
    int value = 0;
    for (auto _ : state) {
      value ^= 1;
      for (int i = 0; i < entree::count; ++i) plant.setreset_input(i, value);
      plant.inputs_go();
      client.receive();
      answer();
      client.outputs_refresh();
      for (int k = 0; k < sortie::count; ++k) benchmark::DoNotOptimize(plant.output_value(k));
    }
  }
};

void area_by_name(benchmark::State& state) {
  mine_area mine;
  const std::vector<std::string> inputs(mine.inputs.begin(), mine.inputs.end());
  const std::vector<std::string> outputs(mine.outputs.begin(), mine.outputs.end());
  mine.exchange_over_and_over(state, [&] {
    int sum = 0;
    for (const std::string& name : inputs) sum += mine.client.input_is_set(name);
    for (const std::string& name : outputs) mine.client.setreset_output(name, sum);
  });
}
BENCHMARK(area_by_name);

void area_by_handle(benchmark::State& state) {
  mine_area mine;
  std::vector<input_signal> inputs;
  for (const std::string& name : mine.inputs) inputs.emplace_back(mine.client, name);
  std::vector<output_signal> outputs;
  for (const std::string& name : mine.outputs) outputs.emplace_back(mine.client, name);
  mine.exchange_over_and_over(state, [&] {
    int sum = 0;
    for (const input_signal& input : inputs) sum += input;
    for (output_signal& output : outputs) output = sum;
  });
}
BENCHMARK(area_by_handle);

[[noreturn]] void give_up(const char* what) {
  std::cerr << what << ": " << modbus_strerror(errno) << '\n';
  std::exit(1);
}

// The plant as a Modbus server with 16 discrete inputs and 11 coils, and a client connected to it.
class modbus_plant {
 public:
  modbus_plant() {
    const int listener = modbus_tcp_listen(server, 1);
    if (listener < 0) give_up("listen");
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    client = modbus_new_tcp("127.0.0.1", ntohs(address.sin_port));
    serving = std::thread([this, listener] { serve(listener); });
    if (modbus_connect(client) != 0) give_up("connect");
  }
  ~modbus_plant() {
    modbus_close(client);
    serving.join();
    modbus_free(client);
    modbus_mapping_free(signals);
    modbus_free(server);
  }
  modbus_plant(const modbus_plant&) = delete;
  modbus_plant& operator=(const modbus_plant&) = delete;

  modbus_t* client = nullptr;

 private:
  void serve(int listener) {
    if (modbus_tcp_accept(server, &listener) < 0) give_up("accept");
    std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> query{};
    for (int size = 0; (size = modbus_receive(server, query.data())) >= 0;)
      if (size > 0) modbus_reply(server, query.data(), size, signals);
    close(listener);
    modbus_close(server);
  }

  modbus_t* server = modbus_new_tcp("127.0.0.1", 0);
  modbus_mapping_t* signals = modbus_mapping_new(sortie::count, entree::count, 0, 0);
  std::thread serving;
};

void modbus_tcp(benchmark::State& state) {
  modbus_plant plant;
  std::array<std::uint8_t, entree::count> inputs{};
  std::array<std::uint8_t, sortie::count> outputs{};
  for (auto _ : state)
    if (modbus_read_input_bits(plant.client, 0, entree::count, inputs.data()) != entree::count ||
        modbus_write_bits(plant.client, 0, sortie::count, outputs.data()) != sortie::count)
      give_up("exchange");
}
BENCHMARK(modbus_tcp)->UseRealTime()->Unit(benchmark::kNanosecond);

}  // namespace

BENCHMARK_MAIN();
