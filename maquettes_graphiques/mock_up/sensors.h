#pragma once
// Sensors: each looks at something of the scene once a cycle, writes what it sees to a variable, usually an
// input of the controller, and is drawn with its state: a dot, yellow while it sees something.

#include <functional>
#include <vector>

#include "maquettes_graphiques/objgraphiques/movepart_manager.h"

// A state that follows a value with hysteresis: on from `on` upwards, and from then on until the value is
// below `off`.
class threshold {
 public:
  threshold(double an_on, double an_off) : on(an_on), off(an_off) {}
  bool operator()(double value) { return is_on = value >= (is_on ? off : on); }

 private:
  double on, off;
  bool is_on = false;
};

class sensor_set {
 public:
  // Positions and distances are pixels. What is looked at, and the variables, are to live as long as read()
  // is called; (x, y) is where the dot is drawn.

  // A beam from (x, top) down to (x, bottom): something of the registry interrupts it. Parts that only
  // touch it do not. Drawn whole, the dot above it.
  void light_gate(bool& seen, const movepart_manager& registry, int x, int top, int bottom);
  // Something of the registry overlaps the rectangle. The dot is in its middle.
  void part_in_zone(bool& seen, const movepart_manager& registry, int x, int y, int w, int h);
  // A position nearer to `place` than `reach`; once seen, until it is `release` away.
  void proximity(bool& seen, int x, int y, std::function<double()> position, double place, double reach,
                 double release);
  void proximity(bool& seen, int x, int y, std::function<double()> position, double place, double reach);
  // A level at `mark` or above; once seen, until it is below `release`.
  void level(bool& seen, int x, int y, std::function<double()> height, double mark, double release);
  // The end of a travel, or whatever else can be asked: eyes.add(seen, x, y, [&] { return jack.in_stop(); }).
  void add(bool& seen, int x, int y, std::function<bool()> look);

  // Once a cycle: all of them look.
  void read();
  // Paints all of them into whatever is current.
  void paint() const;

 private:
  struct sensor {
    bool& seen;
    int x, y;
    int beam;  // its length; 0: none
    std::function<bool()> look;
  };
  std::vector<sensor> all;
};
