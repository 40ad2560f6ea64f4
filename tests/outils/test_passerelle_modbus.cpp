// The gateway with real clients, and with such as no gateway would wish for.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <csignal>
#include <thread>

#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/outils/controller_script.h"
#include "tests/support/forked_plant.h"

namespace {

std::vector<std::string> words(int ident, std::vector<std::string> options = {}) {
  options.insert(options.begin(), {built("passerelle_modbus"), "--port", "0"});
  options.insert(options.end(), {"-automemlink", std::to_string(ident)});
  return options;
}

bool tells(const process& gateway, const std::string& what) {
  return wait_until([&] { return gateway.errors().find(what) != std::string::npos; });
}

// Where it serves, waited for.
int port_of(const process& gateway) {
  EXPECT_TRUE(tells(gateway, ".1:"));
  const std::string told = gateway.errors();
  return std::stoi(told.substr(told.find(".1:") + 3));
}

// This process is the plant; it has four inputs and three outputs.
struct served_plant {
  std::list<std::string> inputs{"a", "b", "c", "d"}, outputs{"X", "Y", "Z"};
  IOsharemem_server plant{inputs, outputs};
  open_area area{plant.memory_ident()};
  process gateway;
  int port = port_of(gateway);

  explicit served_plant(const std::vector<std::string>& options = {})
      : gateway(words(plant.memory_ident(), options), {"LC_ALL=en"}) {}
  std::array<int, 3> written() {
    return {plant.output_value(0), plant.output_value(1), plant.output_value(2)};
  }
};

using values = std::array<int, 3>;

// A Modbus client that also sends what no honest one does. Requests and answers are hexadecimal digits,
// without the header.
class modbus_client {
 public:
  explicit modbus_client(int port) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<std::uint16_t>(port));
    const timeval patience{.tv_sec = 20, .tv_usec = 0};  // only there to end a test that has failed
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    const int bytes = 4096;  // so that one who does not read soon keeps the gateway from sending
    setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
    EXPECT_EQ(connect(socket, reinterpret_cast<const sockaddr*>(&to), sizeof to), 0);
  }
  ~modbus_client() { close(socket); }
  modbus_client(const modbus_client&) = delete;
  modbus_client& operator=(const modbus_client&) = delete;

  bool send(const std::string& bytes, int flags = MSG_NOSIGNAL) const {
    return ::send(socket, bytes.data(), bytes.size(), flags) == static_cast<ssize_t>(bytes.size());
  }
  bool is_cut_off() const {
    char byte = 0;
    const ssize_t come = recv(socket, &byte, 1, 0);
    return come == 0 || (come < 0 && errno == ECONNRESET);
  }
  static std::string frame(const std::string& request) {
    std::string bytes = {0x12, 0x34, 0, 0, 0, static_cast<char>(request.size() / 2 + 1), 7};
    for (std::size_t i = 0; i < request.size(); i += 2)
      bytes += static_cast<char>(std::stoi(request.substr(i, 2), nullptr, 16));
    return bytes;
  }
  std::string answer() const {
    std::string bytes(7, 0);
    if (recv(socket, bytes.data(), 7, MSG_WAITALL) != 7) return "none";
    std::string digits(2 * static_cast<std::size_t>(bytes[5] - 1), '0');
    bytes.resize(7 + digits.size() / 2);
    recv(socket, &bytes[7], digits.size() / 2, MSG_WAITALL);
    for (std::size_t i = 0; i < digits.size(); ++i)
      digits[i] = "0123456789ABCDEF"[bytes[7 + i / 2] >> (i % 2 == 0 ? 4 : 0) & 15];
    return frame(digits) == bytes ? digits : "wrong header";
  }
  std::string ask(const std::string& request) const { return send(frame(request)) ? answer() : "not sent"; }

 private:
  int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

}  // namespace

TEST(passerelle_modbus, lets_other_peoples_clients_haul) {
  for (const auto& [client, told] : {std::pair("exec sh haul_mbpoll.sh ", "hauled\n"),
                                     std::pair("exec /usr/bin/python3 haul_pymodbus.py ", "hauled in ")}) {
    running_mine mine(built("passerelle_modbus") + " --port 0 --sur-perte garder");
    // So that a client on a busy machine sees the wagon pass.
    ASSERT_TRUE(mine.turn(0, 5) && mine.turn(2, 10));
    std::filesystem::current_path(PAGE_FOLDER);
    process haul({"sh", "-c", client + std::to_string(port_of(mine.simulator))});
    EXPECT_EQ(haul.wait(std::chrono::seconds(80)), 0) << haul.errors();
    EXPECT_TRUE(haul.output().starts_with(told) && mine.shows({entree::wAvide, entree::pdC, entree::wCvide}));
    EXPECT_EQ(mine.quit(), 0);
  }
}

TEST(passerelle_modbus, answers_as_the_protocol_has_it) {
  served_plant with;
  modbus_client client(with.port);
  for (const auto& [k, value] : {std::pair(1, 2), {2, 1}}) with.area.output(k, value);
  with.area->clock = 0x1234'5677;
  for (const auto& [i, value] : {std::pair(0, 1), {1, -2}, {2, 70000}}) with.plant.setreset_input(i, value);
  with.plant.inputs_go();
  ASSERT_TRUE(wait_until([&] { return client.ask("0403E80002") == "040412345678"; }));
  with.plant.setreset_input(0, 0);  // of the next batch
  EXPECT_EQ(client.ask("0200000004"), "020107");
  EXPECT_EQ(client.ask("0400000004"), "04080001FFFE7FFF0000");
  EXPECT_EQ(client.ask("0100000003"), "010104");
  EXPECT_EQ(client.ask("0300000003"), "0306000000020001");
  EXPECT_EQ(client.ask("0403E80009"), "0412123456780000000000010001FFFE7FFF0000");
  // By the exception: functions that are not served, addresses, counts and values.
  for (const auto& [code, requests] : std::map<std::string, std::vector<std::string>>{
           {"01", {"2B0E0100", "07", "11", "160000FFFF0001", "1700000001000000010200FF"}},
           {"02",
            {"0100000004", "0200040001", "0403E70001", "0403F10001", "050003FF00", "06FFFF0001",
             "0F0002000201FF"}},
           {"03",
            {"02000007D1", "040000007E", "0300000000", "0500001234", "010000", "0F0000000302FF",
             "1000000002040001", "1000000001"}}})
    for (const std::string& one : requests)
      EXPECT_EQ(client.ask(one), (one[0] == '0'   ? "8"
                                  : one[0] == '1' ? "9"
                                                  : "A") +
                                     one.substr(1, 1) + code)
          << one;
  EXPECT_EQ(with.written(), (values{0, 2, 1})) << "nothing has been written";
  struct {
    const char *request, *answer;
    values written;
  } const writes[] = {{"050000FF00", "050000FF00", {1, 2, 1}},
                      {"060001FFFF", "060001FFFF", {1, -1, 1}},
                      {"0F000000020102", "0F00000002", {0, 1, 1}},
                      {"1000010002048000FFFE", "1000010002", {0, -32768, -2}}};
  for (const auto& one : writes) {
    EXPECT_EQ(client.ask(one.request), one.answer);
    EXPECT_EQ(with.written(), one.written) << one.request << ": is there when it is answered";
  }
  EXPECT_EQ(client.ask("0403EA0002"), "040400000004") << "a request is one batch of outputs";
  EXPECT_TRUE(wait_until([&] { return client.ask("0403EC0001") == "04020000"; })) << "the plant stands still";
}

TEST(passerelle_modbus, lets_no_client_delay_another) {
  served_plant with;
  modbus_client honest(with.port), half(with.port), garbage(with.port), too_long(with.port), deaf(with.port),
      flood(with.port);
  EXPECT_EQ(honest.ask("0200000004"), "020100");
  EXPECT_TRUE(half.send(half.frame("0200000004").substr(0, 9)));
  EXPECT_TRUE(garbage.send("GET / HTTP/1.0\r\n\r\n"));
  EXPECT_TRUE(too_long.send(std::string("\0\1\0\0\0\377\7\2", 8)));
  const std::string request = deaf.frame("0400000004");
  std::string many;
  for (int n = 0; n < 500; ++n) many += request;
  while (deaf.send(many, MSG_NOSIGNAL | MSG_DONTWAIT)) continue;
  const std::jthread flooding([&](const std::stop_token& end) {
    while (!end.stop_requested() && flood.send(many))
      for (int n = 0; n < 500; ++n) flood.answer();
  });
  std::list<modbus_client> idle;
  for (int n = 0; n < 40; ++n) {
    idle.emplace_back(with.port);
    EXPECT_EQ(honest.ask("060000000" + std::to_string(n % 10)), "060000000" + std::to_string(n % 10));
  }
  for (int n = 0; n < 100; ++n) EXPECT_EQ(honest.ask("0200000004"), "020100");
  EXPECT_TRUE(garbage.is_cut_off() && too_long.is_cut_off());
  EXPECT_TRUE(idle.front().is_cut_off()) << "there are more than 32";
  EXPECT_EQ(idle.back().ask("0200000004"), "020100");
  modbus_client stalled(with.port);
  EXPECT_TRUE(stalled.send("\1"));
  EXPECT_TRUE(stalled.is_cut_off()) << "five seconds later";
  for (const char byte : request) {  // who has been quiet for as long may take his time
    EXPECT_EQ(idle.back().ask("0200000004"), "020100");
    EXPECT_TRUE(honest.send({byte}));
  }
  EXPECT_EQ(honest.answer(), "04080000000000000000");
}

TEST(passerelle_modbus, drops_or_keeps_the_outputs_when_the_last_client_has_gone) {
  for (const std::string choice : {"zero", "garder"}) {
    served_plant with({"--sur-perte", choice});
    process client(
        {"/usr/bin/python3", "-c",
         "import signal, sys; from pymodbus.client import ModbusTcpClient as c\n"
         "mine = c('127.0.0.1', port=int(sys.argv[1])); mine.write_coils(0, [True] * 3); signal.pause()",
         std::to_string(with.port)});
    EXPECT_TRUE(wait_until([&] { return with.written() == values{1, 1, 1}; })) << client.errors();
    {
      modbus_client other(with.port);
      EXPECT_EQ(other.ask("0200000001"), "020100");
      client.signal(SIGKILL);
      client.wait();
      EXPECT_EQ(other.ask("0100000003"), "010107") << "there is another";
    }
    EXPECT_TRUE(choice == "garder" || tells(with.gateway, "last client has gone: all outputs have been "));
    modbus_client next(with.port);
    EXPECT_EQ(next.ask("0100000003"), choice == "zero" ? "010100" : "010107");
    EXPECT_EQ(next.ask("0403EB0001"), choice == "zero" ? "04020002" : "04020001");
    EXPECT_EQ(next.ask("060000FFFF"), "060000FFFF");
    with.gateway.signal(SIGTERM);
    EXPECT_EQ(with.gateway.wait(), 0);
    EXPECT_EQ(with.written()[0], choice == "zero" ? 0 : -1);
  }
}

TEST(passerelle_modbus, ends_with_the_plant_and_says_what_keeps_it_from_serving) {
  const forked_plant killed;
  served_plant with;
  const int ident = with.area.ident(), left = wait_for_area_of(killed.pid);
  const auto gateway = [&](const std::vector<std::string>& options) { return words(ident, options); };
  expect_end(gateway({"--port", std::to_string(with.port)}), 1,
             "passerelle_modbus: 127.0.0.1, port " + std::to_string(with.port) + ": another program ");
  expect_end(gateway({"--adresse", "192.0.2.1"}), 1, "passerelle_modbus: 192.0.2.1, port 0: ");
  expect_end(gateway({"--port", "65536"}), 2, "passerelle_modbus: a port is 0 to 65535, not 65536; ");
  expect_end(gateway({"--sur-perte", "un"}), 2, "passerelle_modbus: --sur-perte veut zero ou garder", "fr");
  expect_end(gateway({"--vite"}), 2, "passerelle_modbus: cannot make sense of: --vite; ");
  expect_end(words(2147483647), 2, "passerelle_modbus: there is no area 2147483647\n");
  process table(gateway({"--table"}), {"LC_ALL=en"}), open(gateway({"--adresse", "0.0.0.0"})),
      orphan(words(left), {"LC_ALL=en"});
  EXPECT_EQ(table.wait(), 0);
  EXPECT_NE(table.output().find(" registers (3, 6, 16)\n     0  X\n     1  Y\n"), std::string::npos);
  EXPECT_TRUE(tells(open, "attention : "));
  EXPECT_EQ(with.gateway.errors().find("warning"), std::string::npos);
  EXPECT_TRUE(tells(orphan, "serving"));
  killed.kill_it();
  EXPECT_EQ(orphan.wait(), 1);
  EXPECT_TRUE(orphan.errors().ends_with("area removed: " + std::to_string(left) + "\n"));
  EXPECT_EQ(area_of(killed.pid), -1);
  with.plant.sharing_terminate();
  for (process* const one : {&with.gateway, &open}) EXPECT_EQ(one->wait(), 0);
}
