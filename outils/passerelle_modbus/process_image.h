#pragma once
// The area as Modbus sees it: its tables of bits and registers, at the addresses of address_table.h.
//
// A bit of an input is 1 unless the input is 0; a bit of an output is 1 when the output is exactly 1, for
// only that counts in a plant. A register holds -32768 to 32767 as a signed value of 16 bits; what lies
// beyond is shown as the nearer of the two.

#include <modbus.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/area_recorder.h"
#include "bibliocpp/area_view.h"
#include "bibliocpp/signal_handles.h"

enum class modbus_table { coils, discrete_inputs, holding_registers, input_registers };

class process_image {
 public:
  using time = std::chrono::steady_clock::time_point;

  // Attaches to the area as its controller; ends the process as IOsharemem_client does. The area must outlive
  // this object.
  explicit process_image(const area_view& an_area);

  // Takes over the batch of inputs that was announced last, if it is a new one, and tells what the plant
  // does. To be called every few milliseconds: a batch is whole when it has just been announced, and the
  // plant writes the next one into the same place. Never sleeps.
  plant_state look(time now);

  // Whether the table has all these addresses. Only the input registers have a gap.
  bool has(modbus_table table, int first, int count) const;
  // With outputs and counters as they are now, and the inputs of the last look; for modbus_reply().
  modbus_mapping_t* tables();
  // Hands what has been written into coils or holding registers to the plant, as one batch of outputs.
  void write(modbus_table table, int first, int count);
  // All outputs to 0, as one batch; false, and nothing is announced, when they are 0 already.
  bool drop_outputs();

 private:
  struct free_tables {
    void operator()(modbus_mapping_t* tables) const { modbus_mapping_free(tables); }
  };

  void copy_inputs();
  void set_counter(int first, std::int64_t value);

  const area_view& area;
  IOsharemem_client plant;
  std::vector<output_signal> outputs;
  std::unique_ptr<modbus_mapping_t, free_tables> mapping;
  std::int64_t batch = 0;  // that the inputs in the tables are of
  time last_batch = std::chrono::steady_clock::now();
  time last_check{};  // that the plant runs, though it announces nothing
};
