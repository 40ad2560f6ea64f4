// strange_controller HOW -automemlink N: a controller of the mine that does nothing but answer, and goes
// wrong in the way it is told.

#include <sys/shm.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <thread>

#include "bibliocpp/automemlink.h"
#include "bibliocpp/signal_handles.h"

namespace {

// Not by a function of the library, whose pauses an exam makes shorter.
void sleep_really(long milliseconds) {
  timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
  syscall(SYS_nanosleep, &time, nullptr);
}

// Many, but not for ever: a test that fails must not bring the machine to a halt.
void fork_often() {
  for (int n = 0; n < 300; ++n)
    if (fork() == 0) pause();
}

// Over the whole area, the lock and both clocks included; no value that counts.
void scribble(IO_controleur* area, int how_often) {
  for (int n = 0; n < how_often; ++n) std::memset(static_cast<void*>(area), 2 + n % 100, sizeof *area);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string how = argc > 1 ? argv[1] : "";
  if (how == "crash-at-start") abort();
  if (how == "never-attach") pause();
  IOsharemem_client mine(automemlink(argc, argv));
  if (how == "never-announce") pause();
  if (how == "wrong-name") output_signal(mine, "A_GAUCH");
  if (how == "ignore-sigterm") signal(SIGTERM, SIG_IGN);
  if (how == "fork") fork_often();
  if (how == "flood")
    std::thread([] {
      while (true) std::cerr << "a line that nobody wants to read, and then another one\n";
    }).detach();
  auto* const area = static_cast<IO_controleur*>(shmat(automemlink(argc, argv), nullptr, 0));
  for (int batch = 0;;) {
    const int news = mine.receive();
    if (news < 0 && how != "ignore-sigterm") return 0;
    if (news <= 0) continue;
    ++batch;
    if (how == "fault") mine.setreset_output("REMPLIR_A", batch >= 100);
    if (how == "other-fault") mine.setreset_output("REMPLIR_B", batch >= 60);
    if (how == "crash" && batch == 100) {
      signal(SIGSEGV, SIG_DFL);  // a sanitizer would turn it into a status
      raise(SIGSEGV);
    }
    if (how == "leave" && batch == 100) {
      std::fputs("out of luck\n", stderr);
      return 3;
    }
    if (how == "slow") sleep_really(1200);
    if (how == "late") sleep_really(400);
    constexpr std::size_t portion = std::size_t{16} << 20;
    if (how == "hungry" && batch >= 100) std::memset(malloc(portion), 1, portion);
    if (how == "scribble" && batch == 100) scribble(area, 1000);
    mine.outputs_refresh();
  }
}
