// What clients of Modbus TCP get from the gateway, which serves an area, and from the library's own plain
// server, which serves a table in its memory: each is a process of its own. An exchange is a read of 16
// discrete inputs and a write of 11 coils.

#include <benchmark/benchmark.h>
#include <modbus.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/select.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include "bench/distribution.h"
#include "bibliocpp/IOshare.h"
#include "maquettes_graphiques/WAGONS/mine_signals.h"

namespace {

[[noreturn]] void give_up(const char* what) {
  std::cerr << what << ": " << modbus_strerror(errno) << '\n';
  std::exit(1);
}

// A process that ends with this object, and at the latest with the benchmark.
class child {
 public:
  template <typename Work>
  explicit child(const Work& work) : pid(fork()) {
    if (pid != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    work();
    _exit(1);
  }
  ~child() {
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
  }
  child(const child&) = delete;
  child& operator=(const child&) = delete;

 private:
  pid_t pid;
};

// As in the library's example of a server for several clients.
[[noreturn]] void serve_plainly(modbus_t* server, int listener) {
  modbus_mapping_t* const signals = modbus_mapping_new(sortie::count, entree::count, 0, 0);
  std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> query{};
  fd_set open;
  FD_ZERO(&open);
  FD_SET(listener, &open);
  for (int most = listener;;) {
    fd_set ready = open;
    select(most + 1, &ready, nullptr, nullptr, nullptr);
    for (int one = 0; one <= most; ++one) {
      if (!FD_ISSET(one, &ready)) continue;
      if (one == listener) {
        const int client = accept(listener, nullptr, nullptr);
        FD_SET(client, &open);
        most = std::max(most, client);
        continue;
      }
      modbus_set_socket(server, one);
      const int size = modbus_receive(server, query.data());
      if (size > 0) {
        modbus_reply(server, query.data(), size, signals);
      } else if (size < 0) {
        close(one);
        FD_CLR(one, &open);
      }
    }
  }
}

class plain_server {
  modbus_t* const context = modbus_new_tcp("127.0.0.1", 0);
  const int listener = modbus_tcp_listen(context, 32);
  const child process{[this] { serve_plainly(context, listener); }};

 public:
  ~plain_server() {
    close(listener);
    modbus_free(context);
  }
  int port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
  }
};

class gateway {
  std::list<std::string> inputs{table_signaux, table_signaux + entree::count};
  std::list<std::string> outputs{table_signaux + entree::count,
                                 table_signaux + entree::count + sortie::count};
  IOsharemem_server plant{inputs, outputs};
  std::jthread cycle{[this](const std::stop_token& end) { announce(end); }};
  std::array<int, 2> errors = a_pipe();
  const child process{[this] {
    dup2(errors[1], STDERR_FILENO);
    const std::string program =
        std::filesystem::read_symlink("/proc/self/exe").parent_path() / "passerelle_modbus";
    execl(program.c_str(), program.c_str(), "--port", "0", "-automemlink",
          std::to_string(plant.memory_ident()).c_str(), nullptr);
  }};

  // Inputs that change in every cycle of 5 ms, as a plant has them.
  void announce(const std::stop_token& end) {
    for (int value = 0; !end.stop_requested(); value ^= 1) {
      for (int i = 0; i < entree::count; ++i) plant.setreset_input(i, value);
      plant.inputs_go();
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
  static std::array<int, 2> a_pipe() {
    std::array<int, 2> ends{};
    return pipe(ends.data()) == 0 ? ends : std::array{-1, -1};
  }

 public:
  ~gateway() {
    cycle.request_stop();
    cycle.join();
    plant.sharing_terminate();
    shmctl(plant.memory_ident(), IPC_RMID, nullptr);
    for (const int end : errors) close(end);
  }
  // The number at the end of the line that tells it.
  int port() const {
    std::string told;
    char byte = 0;
    while (told.find(" 127.0.0.1:") == std::string::npos || byte != '\n') {
      if (read(errors[0], &byte, 1) != 1) give_up("passerelle_modbus");
      told += byte;
    }
    return std::stoi(told.substr(told.rfind(':') + 1));
  }
};

using clock_type = distribution::clock;

std::vector<clock_type::duration> exchange(modbus_t* client, int times) {
  std::array<std::uint8_t, entree::count> inputs{};
  const std::array<std::uint8_t, sortie::count> outputs{};
  std::vector<clock_type::duration> taken;
  while (times-- > 0) {
    const auto start = clock_type::now();
    if (modbus_read_input_bits(client, 0, entree::count, inputs.data()) != entree::count ||
        modbus_write_bits(client, 0, sortie::count, outputs.data()) != sortie::count)
      give_up("exchange");
    taken.push_back(clock_type::now() - start);
  }
  return taken;
}

template <typename Server>
void exchanges(benchmark::State& state) {
  constexpr int times = 500;
  const Server server;
  const int port = server.port();
  std::vector<modbus_t*> clients;
  for (std::int64_t n = 0; n < state.range(0); ++n) {
    clients.push_back(modbus_new_tcp("127.0.0.1", port));
    if (modbus_connect(clients.back()) != 0) give_up("connect");
  }
  distribution latency;
  for (auto _ : state) {
    std::vector<std::vector<clock_type::duration>> taken(clients.size());
    {
      std::vector<std::jthread> at_work;
      for (std::size_t n = 0; n < clients.size(); ++n)
        at_work.emplace_back([&, n] { taken[n] = exchange(clients[n], times); });
    }
    for (const auto& of_one : taken)
      for (const auto one : of_one) latency.add(one);
  }
  state.SetItemsProcessed(state.iterations() * times * state.range(0));
  latency.report(state);
  for (modbus_t* const client : clients) {
    modbus_close(client);
    modbus_free(client);
  }
}
BENCHMARK(exchanges<plain_server>)
    ->ArgName("clients")
    ->Arg(1)
    ->Arg(8)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(exchanges<gateway>)
    ->ArgName("clients")
    ->Arg(1)
    ->Arg(8)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
