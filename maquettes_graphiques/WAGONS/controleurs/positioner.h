#pragma once
// Brings a wagon to rest at a station, and finds the station again when the wagon has run past it.

enum direction : int { left = -1, none = 0, right = 1 };

constexpr direction opposite(direction d) { return static_cast<direction>(-d); }

// One wagon's drive. Tracks have no end switches and the speed is the operator's, so a wagon that does
// not find its station in time turns round and looks further and further.
class positioner {
 public:
  // `homeward`: where the wagon's home lies as long as nothing is known.
  explicit positioner(direction homeward) : side_of_home(homeward) {}

  // To be called once for every batch of inputs: the home station's sensor.
  void observe(bool at_home);

  // Looks for a station, first in direction d, as long as it is called for every batch.
  void seek(bool at_station, direction d);
  void seek_home(bool at_home) { seek(at_home, side_of_home); }
  // Stops; the next seek() is a new one.
  void stop();

  // At rest, and the station seen since the plant must have heeded the stop.
  bool settled() const { return phase == phases::settled; }
  // Under way as it set out: not searching.
  bool direct() const { return phase == phases::moving && !searching; }
  direction motion() const { return phase == phases::moving ? heading : none; }

 private:
  enum class phases { stopped, moving, braking, settled };

  void turn_round();
  void remember_motion();

  // Batches of inputs, about 10 ms each.
  static constexpr int settling_time = 3;        // covers a batch under way while the stop was written
  static constexpr int longest_journey = 4'000;  // the whole track at the lowest speed
  static constexpr int first_search = 200;       // while it is not known where home lies

  phases phase = phases::stopped;
  direction heading = none;
  direction side_of_home;
  direction last_motion = none;
  bool home_known = false;
  bool was_at_home = false;
  bool searching = false;
  int waited = 0;
  int patience = first_search;
};
