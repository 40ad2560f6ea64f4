#pragma once
// One Modbus client. Its socket never blocks: what has come is kept until it is a whole request, and a
// request is only taken up when the answer to the one before has gone.

#include <modbus.h>

#include <array>
#include <chrono>
#include <cstdint>

#include "outils/passerelle_modbus/answers.h"

class connection {
 public:
  using time = std::chrono::steady_clock::time_point;
  enum class state { open, gone, no_modbus };

  // Owns the socket, which must not block.
  connection(int a_socket, time now) : socket(a_socket), last_answer(now), begun(now) {}
  ~connection();
  connection(const connection&) = delete;
  connection& operator=(const connection&) = delete;

  int descriptor() const { return socket; }
  // The events of poll() that let it go on.
  short awaits() const;
  // Whether it can go on without any.
  bool has_request() const;
  // Answers one request at most, however many have come: others have their turn.
  state turn(answers& to, time now);

  // When it was answered last, or else when it came.
  time quiet_since() const { return last_answer; }
  bool has_asked() const { return asked; }
  // Since a while half a request has come, or an answer is not fetched.
  bool is_stuck(time now) const;

 private:
  bool receive();
  bool send_rest();
  std::size_t frame_size() const;
  bool is_no_modbus() const;
  void answer_first(answers& to);

  int socket;
  time last_answer, begun;  // begun: what it is in the middle of
  bool asked = false;
  std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> in{}, out{};
  std::size_t held = 0;                // bytes in `in`
  std::size_t answered = 0, sent = 0;  // bytes in `out`, and how many of them have gone
};
