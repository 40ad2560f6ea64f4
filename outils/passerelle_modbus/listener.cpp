#include "outils/passerelle_modbus/listener.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

#include "bibliocpp/language.h"

namespace {

void set(int socket, int level, int option, int value) {
  setsockopt(socket, level, option, &value, sizeof value);
}

std::string why_not(const std::string& address, int port, int error) {
  const char* const why = error == EADDRINUSE
                              ? tr("un autre programme écoute déjà là ; en choisir un autre par --port")
                          : error == EACCES ? tr("réservé à root ; en choisir un à partir de 1024 par --port")
                                            : std::strerror(error);
  return tr("{}, port {} : {}", {address, std::to_string(port), why});
}

sockaddr_storage address_of(int socket, socklen_t& size) {
  sockaddr_storage address{};
  size = sizeof address;
  getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  return address;
}

}  // namespace

listener::listener(const std::string& address, int port) {
  addrinfo wanted{};
  wanted.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (const int error = getaddrinfo(address.c_str(), std::to_string(port).c_str(), &wanted, &found);
      error != 0)
    throw listener_error(tr("{} : {}", {address, gai_strerror(error)}));
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> place(found, freeaddrinfo);
  socket = ::socket(place->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  // Connections of a gateway before us may linger in the system; they are no reason to wait.
  set(socket, SOL_SOCKET, SO_REUSEADDR, 1);
  if (socket < 0 || bind(socket, place->ai_addr, place->ai_addrlen) != 0 || listen(socket, SOMAXCONN) != 0) {
    const int error = errno;
    close(socket);
    throw listener_error(why_not(address, port, error));
  }
}

listener::~listener() { close(socket); }

std::string listener::name() const {
  socklen_t size = 0;
  const sockaddr_storage address = address_of(socket, size);
  std::array<char, NI_MAXHOST> host{};
  std::array<char, NI_MAXSERV> port{};
  getnameinfo(reinterpret_cast<const sockaddr*>(&address), size, host.data(), host.size(), port.data(),
              port.size(), NI_NUMERICHOST | NI_NUMERICSERV);
  const std::string text = host.data();
  return (address.ss_family == AF_INET6 ? "[" + text + "]" : text) + ":" + port.data();
}

bool listener::is_local() const {
  socklen_t size = 0;
  const sockaddr_storage address = address_of(socket, size);
  constexpr unsigned char loopback_network = 127;
  if (address.ss_family == AF_INET6)
    return IN6_IS_ADDR_LOOPBACK(&reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
  const in_addr number = reinterpret_cast<const sockaddr_in&>(address).sin_addr;
  return ntohl(number.s_addr) >> 24 == loopback_network;
}

// Answers are small: little is kept for a client that does not read them. A host that vanishes without a word
// counts as gone after about half a minute.
int listener::accept() const {
  const int client = accept4(socket, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (client < 0) return -1;
  set(client, IPPROTO_TCP, TCP_NODELAY, 1);
  set(client, SOL_SOCKET, SO_SNDBUF, 16384);
  set(client, SOL_SOCKET, SO_KEEPALIVE, 1);
  set(client, IPPROTO_TCP, TCP_KEEPIDLE, 10);
  set(client, IPPROTO_TCP, TCP_KEEPINTVL, 5);
  set(client, IPPROTO_TCP, TCP_KEEPCNT, 3);
  return client;
}
