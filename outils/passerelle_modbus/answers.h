#pragma once
// What a Modbus request is answered with. The library builds the answers; a request that it would handle
// beyond the address table, or make everybody wait for, is refused before.

#include <modbus.h>

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "outils/passerelle_modbus/process_image.h"

class answers {
 public:
  // Throws a std::system_error when the system gives no sockets.
  explicit answers(process_image& an_image);
  ~answers();
  answers(const answers&) = delete;
  answers& operator=(const answers&) = delete;

  // The answer, header included, to a whole frame: 7 bytes of header and at least one of request. What is to
  // be written is in the area when this returns. Good until the next call.
  std::span<const std::uint8_t> to(std::span<const std::uint8_t> frame);

 private:
  struct free_context {
    void operator()(modbus_t* its) const { modbus_free(its); }
  };

  process_image& image;
  std::unique_ptr<modbus_t, free_context> context;
  // The library can only send: it does so into this pair, never to a client. So nothing is answered before it
  // is done, and no client that does not read makes the library wait.
  std::array<int, 2> pair{-1, -1};
  std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> answer{};
};
