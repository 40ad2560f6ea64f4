#include "outils/passerelle_modbus/answers.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace {

enum class shape { read, write_one, write_several };

struct function {
  std::uint8_t code;
  modbus_table table;
  shape form;
  int most;  // values in a request
};

constexpr std::array<function, 8> functions{{
    {MODBUS_FC_READ_COILS, modbus_table::coils, shape::read, MODBUS_MAX_READ_BITS},
    {MODBUS_FC_READ_DISCRETE_INPUTS, modbus_table::discrete_inputs, shape::read, MODBUS_MAX_READ_BITS},
    {MODBUS_FC_READ_HOLDING_REGISTERS, modbus_table::holding_registers, shape::read,
     MODBUS_MAX_READ_REGISTERS},
    {MODBUS_FC_READ_INPUT_REGISTERS, modbus_table::input_registers, shape::read, MODBUS_MAX_READ_REGISTERS},
    {MODBUS_FC_WRITE_SINGLE_COIL, modbus_table::coils, shape::write_one, 1},
    {MODBUS_FC_WRITE_SINGLE_REGISTER, modbus_table::holding_registers, shape::write_one, 1},
    {MODBUS_FC_WRITE_MULTIPLE_COILS, modbus_table::coils, shape::write_several, MODBUS_MAX_WRITE_BITS},
    {MODBUS_FC_WRITE_MULTIPLE_REGISTERS, modbus_table::holding_registers, shape::write_several,
     MODBUS_MAX_WRITE_REGISTERS},
}};

constexpr std::size_t header_size = 7;

// A request behind its header: function, address, then a count or the one value, then the values.
struct request {
  std::span<const std::uint8_t> bytes;

  int word(std::size_t at) const { return bytes[at] << 8 | bytes[at + 1]; }
  int address() const { return word(1); }
  int count(const function& f) const { return f.form == shape::write_one ? 1 : word(3); }
};

const function* function_of(const request& asked) {
  const auto* const known = std::find_if(functions.begin(), functions.end(),
                                         [&](const function& f) { return f.code == asked.bytes[0]; });
  return known == functions.end() ? nullptr : known;
}

// As many bytes as the function, the count and the count of bytes say.
bool is_well_formed(const request& asked, const function& f) {
  constexpr std::size_t fixed_part = 5;
  if (f.form != shape::write_several) return asked.bytes.size() == fixed_part;
  if (asked.bytes.size() <= fixed_part) return false;
  const int values = asked.count(f), needed = f.table == modbus_table::coils ? (values + 7) / 8 : 2 * values;
  return asked.bytes[fixed_part] == needed &&
         asked.bytes.size() == fixed_part + 1 + static_cast<std::size_t>(needed);
}

// The exception that the request must be answered with; 0 for none. The order is the protocol's.
unsigned exception(const request& asked, const function* f, const process_image& image) {
  if (f == nullptr) return MODBUS_EXCEPTION_ILLEGAL_FUNCTION;
  if (!is_well_formed(asked, *f) || asked.count(*f) < 1 || asked.count(*f) > f->most)
    return MODBUS_EXCEPTION_ILLEGAL_DATA_VALUE;
  if (!image.has(f->table, asked.address(), asked.count(*f))) return MODBUS_EXCEPTION_ILLEGAL_DATA_ADDRESS;
  return 0;
}

}  // namespace

answers::answers(process_image& an_image) : image(an_image), context(modbus_new_tcp(nullptr, 0)) {
  if (!context || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair.data()) != 0)
    throw std::system_error(errno, std::generic_category(), "socketpair");
  modbus_set_socket(context.get(), pair[0]);
}

answers::~answers() {
  for (const int end : pair) close(end);
}

std::span<const std::uint8_t> answers::to(std::span<const std::uint8_t> frame) {
  const request asked{frame.subspan(header_size)};
  const function* const f = function_of(asked);
  if (const unsigned refused = exception(asked, f, image); refused != 0)
    modbus_reply_exception(context.get(), frame.data(), refused);
  else
    modbus_reply(context.get(), frame.data(), static_cast<int>(frame.size()), image.tables());
  const ssize_t size = recv(pair[1], answer.data(), answer.size(), 0);
  if (size <= static_cast<ssize_t>(header_size)) return {};
  const bool done = answer[header_size] == frame[header_size];
  if (done && f != nullptr && f->form != shape::read) image.write(f->table, asked.address(), asked.count(*f));
  return {answer.data(), static_cast<std::size_t>(size)};
}
