#pragma once
// Between a plant and a controller that does not share the plant's area but has one of its own with the same
// signals: what is forced reaches one side only, and whatever a controller writes over its area stays there.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "bibliocpp/IOshare.h"
#include "bibliocpp/area_view.h"

// No lock is taken on either side: values are written one by one as a plant does, while neither the plant,
// which is led, nor a controller that has answered looks at them, and a controller that keeps its lock holds
// up nobody.
class relay {
 public:
  // Throws an area_error when the plant's area cannot be had. Both areas are marked for removal: they go with
  // the last process that has them attached, and can be attached until then.
  explicit relay(int plant_area);
  ~relay();
  relay(const relay&) = delete;
  relay& operator=(const relay&) = delete;

  const std::vector<std::string>& input_names() const { return plant.input_names(); }
  const std::vector<std::string>& output_names() const { return plant.output_names(); }
  // The identifier for the controller.
  int ident() { return area.memory_ident(); }
  // Whether a process besides this one has the controller's area attached.
  bool attached() const;

  void read_inputs(std::span<std::int32_t> values) const;   // of the plant
  void publish(std::span<const std::int32_t> values);       // to the controller, as a batch
  std::int64_t answers() const;                             // batches of outputs it has announced
  void read_outputs(std::span<std::int32_t> values) const;  // of the controller
  void drive(std::span<const std::int32_t> values) const;   // the plant
  // Tells the controller that the run is over.
  void end() { area.sharing_terminate(); }

 private:
  area_view plant;
  IOsharemem_server area;
  IO_controleur *plant_record, *record;
};
