// trieuse [controleur]: a parcel sorter, run by the given controller command.

#include "maquettes_graphiques/TRIEUSE/sorter.h"

int main(int argc, char** argv) {
  sorter_plant signals(argc, argv);
  sorter run(signals);
  signals.run(run.window, run.operators, [&run] { run.cycle(); });
}
