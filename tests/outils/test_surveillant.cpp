// A controller under watch: what is told of it, and that nothing of it is left.
#include <gtest/gtest.h>
#include <sys/shm.h>

#include <csignal>

#include "outils/surveillant/unanswered_batches.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/outils/controller_script.h"

namespace {

std::vector<std::string> watched(int ident, std::vector<std::string> words) {
  words.insert(words.begin(), built("surveillant"));
  words.insert(words.end(), {"-automemlink", std::to_string(ident)});
  return words;
}

bool tells(const process& teller, const std::string& line) {
  return wait_until([&] { return teller.errors().find("surveillant: " + line) != std::string::npos; });
}

}  // namespace

TEST(surveillant, tells_why_a_controller_has_ended_and_ends_with_its_status) {
  const controller_script here;
  const running_mine mine;
  std::ofstream("plain") << "no program";
  std::ofstream(here.name) << "#!/no/such/interpreter\n";
  const auto expect = [id = mine.area.ident()](const std::vector<std::string>& words, int status,
                                               const std::string& told, const std::string& language = "en") {
    expect_end(watched(id, words), status, "surveillant: " + told, language);
  };
  expect({"./no such"}, 127, "controller not found: ./no such\n");
  expect({"./no such"}, 127, "contrôleur introuvable : ./no such\n", "fr_FR");
  expect({"./plain"}, 126, "controller not executable: ./plain\n");
  expect({here.name}, 126, "the controller does not start: ./a 'controller': the interpreter ");
  expect({"sh", "-c", "trap '' TERM; sleep 900 & exit 3"}, 3, "the controller has ended with status 3\n");
  expect({"sh", "-c", "kill -SEGV $$"}, 139, "the controller was killed by SIGSEGV (forbidden ");
  expect_end(watched(2147483647, {"true"}), 2, "surveillant: the area cannot be used: there is no area");
  expect_end(watched(7, {}), 2, "usage: ");
  expect_end(watched(7, {"--a-l-arret", "jamais", "true"}), 2, "usage: ");
  expect_end({built("surveillant"), "true"}, 2, "usage : ", "");
}

TEST(surveillant, tells_of_a_controller_that_takes_no_part_and_ends_it_with_the_plant) {
  running_mine mine;
  const std::string only_watches =
      "import ctypes, sys, time; c = ctypes.CDLL(None); c.shmat.restype = ctypes.c_void_p\n"
      "clock = ctypes.c_int64.from_address(c.shmat(int(sys.argv[-1]), None, 0))\n"
      "while clock.value >= 0: time.sleep(0.01)";
  process silent(watched(mine.area.ident(), {"python3", "-c", only_watches}), {"LC_ALL=en"});
  process deaf(watched(mine.area.ident(), {"sh", "-c", "trap '' TERM; while :; do sleep 1; done"}));
  EXPECT_TRUE(tells(silent, "the controller is attached, but has announced no outputs for 2 s\n"));
  EXPECT_TRUE(tells(deaf, "depuis 2 s, le contrôleur ne s'est pas attaché à la zone "));
  EXPECT_EQ(mine.quit(), 0);
  EXPECT_EQ(silent.wait(), 0) << "sees the end of the run within its second";
  EXPECT_EQ(deaf.wait(), 128 + SIGKILL) << "heeds neither the run nor SIGTERM";
  EXPECT_TRUE(tells(deaf, "la maquette s'est terminée\n"));
  EXPECT_EQ(silent.errors().find("announced"), silent.errors().rfind("announced")) << "told once";
}

TEST(unanswered_batches, count_only_what_the_controller_could_have_answered) {
  unanswered_batches watch(0, 0);
  // At a time, both clocks; what is told then.
  for (const auto& [ms, clock, answers, batches, longest] : std::initializer_list<std::array<int, 5>>{
           {0, 2, 0, 0, 0},
           {150, 3, 1, 0, 0},   // not looked at for long, and answered at the next look
           {1000, 5, 1, 0, 0},  // a box was open: the plant announced nothing
           {1090, 6, 1, 0, 0},
           {1150, 6, 1, 0, 0},  // two are late, and still unanswered
           {1160, 6, 2, 2, 150},
           {1200, 7, 2, 0, 0},
           {1400, 7, 2, 0, 0},
           {1410, 7, 3, 0, 0},    // a second has not passed since the last report
           {2170, 8, 3, 1, 200},  // while the next batch waits, but is not late
           {2271, 8, 3, 0, 0},
           {3271, 8, 3, 1, 1101}}) {  // not for ever kept back for an answer
    const unanswered_batches::time now{std::chrono::milliseconds(ms)};
    watch.look(clock, answers, now);
    const auto due = watch.due(now).value_or(unanswered_batches::report{});
    EXPECT_EQ(due.batches, batches) << ms;
    EXPECT_EQ(due.longest.count(), longest) << ms;
  }
}

TEST(surveillant, drops_the_outputs_of_a_dead_controller_when_asked) {
  for (const std::string choice : {"garder", "zero"}) {
    const running_mine mine;
    for (const int k : {0, 10}) mine.area.output(k, 1);
    mine.area->output_clock = 5;
    process watch(watched(mine.area.ident(), {"--a-l-arret", choice, "sh", "-c", "kill -KILL $$"}));
    EXPECT_EQ(watch.wait(), 128 + SIGKILL);
    EXPECT_EQ(mine.area->output[0] + mine.area->output[10], choice == "zero" ? 0 : 2);
    EXPECT_EQ(mine.area->output_clock, 5) << "announces nothing";
  }
}

// p: the plant, s: surveillant, g: its second process, c: the controller, which has a child. h: surveillant
// is only asked to end.
TEST(surveillant, leaves_nothing_whatever_is_killed_and_in_which_order) {
  const controller_script script;
  for (const std::string order :
       {"h", "s", "g", "p", "psc", "pcs", "spc", "scp", "cps", "csp", "pgc", "gpc", "gcp", "cgp"}) {
    std::filesystem::remove("pids");
    process plant({built("wagons"), built("surveillant"), "\"" + script.name + "\""});
    const open_area area(wait_for_area_of(plant.pid()));
    auto pids = script.pids();
    if (order == "h") {
      EXPECT_TRUE(wait_until([&] { return area->output_clock > 0; }));
      kill(pids['d'], SIGSTOP);
      EXPECT_TRUE(area.cycles(60));
      kill(pids['d'], SIGCONT);
      EXPECT_TRUE(tells(plant, "lots d'entrées sans réponse pendant plus de 100 ms : "));
      kill(pids['s'], SIGHUP);
    }
    for (const char role : order) {
      if (role != 'h') kill(role == 'p' ? plant.pid() : pids[role], SIGKILL);
      if (role == 'p') plant.wait();
    }
    for (const auto& [role, pid] : pids) EXPECT_TRUE(ends(pid)) << order << ": " << role << " runs on";
    // A watcher that has seen the plant die has removed its area; this test still has it attached.
    shmid_ds state{};
    const bool there = shmctl(area.ident(), IPC_STAT, &state) == 0 && (state.shm_perm.mode & SHM_DEST) == 0;
    EXPECT_FALSE(there && order.find('p') < order.find('c')) << order;
    EXPECT_TRUE(order.find('p') != std::string::npos || (there && area.cycles(2))) << order;
  }
}
