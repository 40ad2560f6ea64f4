#pragma once
// The address that a server listens on.

#include <stdexcept>
#include <string>

struct listener_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class listener {
 public:
  // `address` is a number or a name, of IPv4 or IPv6; port 0 lets the system choose. Throws a listener_error
  // that says why it is not possible.
  listener(const std::string& address, int port);
  ~listener();
  listener(const listener&) = delete;
  listener& operator=(const listener&) = delete;

  int descriptor() const { return socket; }
  // "127.0.0.1:1502", as it came to be.
  std::string name() const;
  // Whether programs of this machine only can reach it.
  bool is_local() const;
  // The next client's socket, which does not block; -1 when there is none.
  int accept() const;

 private:
  int socket = -1;
};
