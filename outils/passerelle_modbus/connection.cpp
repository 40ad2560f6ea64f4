#include "outils/passerelle_modbus/connection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <span>

namespace {

// A frame: transaction, protocol (always 0) and the count of the bytes behind, each a big-endian word; then
// the unit and the request.
constexpr std::size_t protocol_at = 2, length_at = 4, counted_from = 6;
constexpr std::size_t least_length = 2, most_length = MODBUS_TCP_MAX_ADU_LENGTH - counted_from;

bool is_over(ssize_t transferred) {
  return transferred == 0 || (transferred < 0 && errno != EAGAIN && errno != EINTR);
}

}  // namespace

connection::~connection() { close(socket); }

short connection::awaits() const {
  if (sent < answered) return POLLOUT;
  return has_request() ? 0 : POLLIN;
}

bool connection::has_request() const {
  return sent == answered && held >= counted_from && held >= frame_size();
}

connection::state connection::turn(answers& to, time now) {
  if (sent < answered) return send_rest() ? state::open : state::gone;
  if (held == 0) begun = now;
  if (!has_request() && !receive()) return state::gone;
  if (is_no_modbus()) return state::no_modbus;
  if (!has_request()) return state::open;
  last_answer = begun = now;
  asked = true;
  answer_first(to);
  return send_rest() ? state::open : state::gone;
}

bool connection::is_stuck(time now) const {
  constexpr auto patience = std::chrono::seconds(5);
  return (held > 0 || sent < answered) && now - begun > patience;
}

bool connection::receive() {
  const ssize_t come = recv(socket, in.data() + held, in.size() - held, 0);
  if (is_over(come)) return false;
  if (come > 0) held += static_cast<std::size_t>(come);
  return true;
}

bool connection::send_rest() {
  const ssize_t gone = send(socket, out.data() + sent, answered - sent, MSG_NOSIGNAL);
  if (is_over(gone)) return false;
  if (gone > 0) sent += static_cast<std::size_t>(gone);
  return true;
}

std::size_t connection::frame_size() const {
  return counted_from + static_cast<std::size_t>(in[length_at] << 8 | in[length_at + 1]);
}

// Nothing tells where the next frame would begin.
bool connection::is_no_modbus() const {
  if (held >= length_at && (in[protocol_at] | in[protocol_at + 1]) != 0) return true;
  return held >= counted_from &&
         (frame_size() < counted_from + least_length || frame_size() > counted_from + most_length);
}

void connection::answer_first(answers& to) {
  const std::size_t size = frame_size();
  const std::span<const std::uint8_t> answer = to.to({in.data(), size});
  std::copy(answer.begin(), answer.end(), out.begin());
  answered = answer.size();
  sent = 0;
  std::copy(in.data() + size, in.data() + held, in.data());
  held -= size;
}
