#pragma once
// The parcel sorter, seen from above. Belt 1 brings parcels from a tunnel through a gate that measures
// them. Short ones are pushed onto belt 2; long ones go on to a turntable, and from there by belt 3.

#include "maquettes_graphiques/TRIEUSE/sorter_signals.h"
#include "maquettes_graphiques/mock_up/scene_view.h"
#include "maquettes_graphiques/mock_up/sensors.h"
#include "maquettes_graphiques/mock_up/source.h"
#include "maquettes_graphiques/objgraphiques.h"

enum kind : std::size_t { short_parcel, long_parcel, kinds };

class sorter {
 public:
  // Builds window, desk and scene around the signals; shows nothing yet.
  explicit sorter(sorter_plant& its_signals);
  sorter(const sorter&) = delete;
  sorter& operator=(const sorter&) = delete;

  // One cycle, after a look at the desk.
  void cycle();

  Fl_Double_Window window{930, 375, "trieuse"};
  desk operators{775, 14, 145};

 private:
  void bring_parcels();
  void push();
  void turn();
  void carry_away(hbelt& belt, bool runs, sink& bin, kind expected, const char* mistake);
  void paint() const;

  sorter_plant& signals;
  double belt_speed = 1.5, interval = 100;
  scene_view* scene;
  movepart_manager registry;
  source parcels;
  sink short_ones, long_ones;
  hbelt belt_1, belt_2, belt_3;
  bdjack pusher;
  rbelt table;
  sensor_set sensors;
};
