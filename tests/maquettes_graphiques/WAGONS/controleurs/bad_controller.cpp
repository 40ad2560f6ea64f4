// bad_controller <vice> -automemlink <ident>: every way in which a controller may go wrong.
#include <sys/shm.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>

#include "bibliocpp/IOshare.h"

int main(int, char** argv) {
  const std::string vice = argv[1];
  const int ident = std::atoi(argv[3]);
  if (vice == "attaches_twice") {
    IOsharemem_client one(ident);
    IOsharemem_client two(ident);
    while (one.receive() >= 0 && two.receive() >= 0) two.outputs_refresh();
    return 0;
  }
  auto* const area = static_cast<IO_controleur*>(shmat(ident, nullptr, 0));
  if (vice == "dies_holding_the_lock") {
    sem_wait(&area->mutex);
    std::raise(SIGKILL);
  }
  if (vice == "floods_the_outputs" || vice == "keeps_the_lock") {
    for (int value = 0; area->clock >= 0; ++value) {
      if (vice == "keeps_the_lock") sem_trywait(&area->mutex);
      for (int& output : area->output) output = value << 1;  // never 1
    }
    return 0;
  }
  if (vice == "fills_the_record_with_garbage") std::memset(area, 0x5a, sizeof *area);
  if (vice == "fills_the_record_with_ones") std::memset(area, 0xff, sizeof *area);
  if (vice == "fills_the_record_with_zeros") std::memset(area, 0, sizeof *area);
}
