// A controller under watch: what is told of it, and that nothing of it is left.
#include <gtest/gtest.h>

#include <sys/shm.h>

#include <csignal>
#include <map>

#include "outils/surveillant/unanswered_batches.h"
#include "tests/maquettes_graphiques/WAGONS/running_mine.h"
#include "tests/outils/controller_script.h"

using namespace std::chrono_literals;

namespace {

// surveillant with these words, beside a mine.
struct a_watch : process {
  a_watch(const running_mine& mine, std::vector<std::string> words, const std::string& locale = "en_GB")
      : process(
            [&] {
              words.insert(words.begin(), built("surveillant"));
              words.insert(words.end(), {"-automemlink", std::to_string(mine.area.ident())});
              return words;
            }(),
            {"LC_ALL=" + locale}) {}
  bool tells(const std::string& line) const {
    return wait_until([&] { return errors().find("surveillant: " + line) != std::string::npos; });
  }
};

}  // namespace

TEST(surveillant, tells_why_a_controller_has_ended_and_ends_with_its_status) {
  const a_directory here;
  const running_mine mine;
  std::ofstream("plain") << "no program";
  script("of nobody", "", "/no/such/interpreter");
  script("three", "exit 3");
  script("crash", "kill -SEGV $$");
  script("arguments", "printf '<%s>' \"$@\" >arguments_seen");
  const struct {
    std::vector<std::string> words;
    int status;
    std::string line, locale = "en_GB";
  } ends[]{
      {{"./no such"}, 127, "controller not found: ./no such"},
      {{"./no such"}, 127, "contrôleur introuvable : ./no such", "fr_FR"},
      {{"./plain"}, 126, "controller not executable: ./plain"},
      {{"./of nobody"},
       126,
       "the controller does not start: ./of nobody: the interpreter that its first "
       "line names is not found"},
      {{"./three"}, 3, "the controller has ended with status 3"},
      {{"./three"}, 3, "le contrôleur s'est terminé avec le code 3", ""},
      {{"./crash"}, 139, "the controller was killed by SIGSEGV (forbidden access to memory)"},
      {{"--a-l-arret", "garder", "./arguments", "a  b", "--help", "$x"},
       0,
       "the controller has ended with status 0"},
  };
  for (const auto& end : ends) {
    a_watch watch(mine, end.words, end.locale);
    EXPECT_EQ(watch.wait(), end.status) << end.line;
    EXPECT_EQ(watch.errors(), "surveillant: " + end.line + "\n");
  }
  EXPECT_EQ(contents("arguments_seen"),
            "<a  b><--help><$x><-automemlink><" + std::to_string(mine.area.ident()) + ">");
}

TEST(surveillant, refuses_what_it_cannot_watch) {
  const struct {
    std::vector<std::string> words;
    int status;
    std::string told;
  } calls[]{{{}, 2, "usage: "},
            {{"true"}, 2, "usage: "},
            {{"-automemlink", "7"}, 2, "usage: "},
            {{"--a-l-arret", "jamais", "true", "-automemlink", "7"}, 2, "usage: "},
            {{"--other", "true", "-automemlink", "7"}, 2, "usage: "},
            {{"true", "-automemlink", "2147483647"}, 2, "surveillant: the area cannot be used: there is no"}};
  for (const auto& call : calls) {
    std::vector<std::string> words{built("surveillant")};
    words.insert(words.end(), call.words.begin(), call.words.end());
    process refused(words, {"LC_ALL=en"});
    EXPECT_EQ(refused.wait(), call.status);
    EXPECT_EQ(refused.errors().find(call.told), 0U) << refused.errors();
  }
}

TEST(surveillant, tells_of_a_controller_that_takes_no_part_and_ends_it_with_the_plant) {
  const a_directory here;
  script("deaf", "trap '' TERM; while :; do sleep 1; done");
  running_mine mine;
  a_watch silent(mine, {built("bad_controller"), "floods_the_outputs"}), absent(mine, {"./deaf"});
  EXPECT_TRUE(silent.tells("the controller is attached, but has announced no outputs for 2 s\n"));
  EXPECT_TRUE(absent.tells("for 2 s the controller has not attached to area "));
  EXPECT_EQ(mine.quit(), 0);
  EXPECT_EQ(silent.wait(), 0) << "sees the end of the run within its second";
  EXPECT_EQ(absent.wait(), 128 + SIGKILL) << "heeds neither the run nor SIGTERM";
  EXPECT_TRUE(absent.tells("the plant has ended\n"));
  EXPECT_EQ(silent.errors().find("announced"), silent.errors().rfind("announced")) << "told once";
}

TEST(surveillant, tells_of_late_answers) {
  const a_directory here;
  script("slow", "exec " + built("controleur_mine") + " \"$@\"");
  const running_mine mine;
  const a_watch watch(mine, {"./slow"});
  ASSERT_TRUE(wait_until([&] { return mine.area->output_clock > 0; }));
  const pid_t controller = pids_of_script().at('c');
  kill(controller, SIGSTOP);
  EXPECT_TRUE(mine.area.cycles(60));
  kill(controller, SIGCONT);
  EXPECT_TRUE(watch.tells("batches of inputs unanswered for more than 100 ms: "));
}

TEST(unanswered_batches, count_only_what_the_controller_could_have_answered) {
  const unanswered_batches::time start{};
  unanswered_batches watch(0, 0);
  const auto report = [&](std::chrono::milliseconds at, std::int64_t clock, std::int64_t answers) {
    watch.look(clock, answers, start + at);
    const auto due = watch.due(start + at);
    return due ? std::pair(due->batches, due->longest.count()) : std::pair(0LL, 0L);
  };
  const std::pair<long long, long> nothing(0, 0);
  EXPECT_EQ(report(0ms, 2, 0), nothing);
  EXPECT_EQ(report(150ms, 3, 1), nothing) << "not looked at for long, and answered at the next look";
  EXPECT_EQ(report(900ms, 3, 1), nothing) << "a box is open: the plant announces nothing";
  EXPECT_EQ(report(1000ms, 5, 1), nothing);
  EXPECT_EQ(report(1090ms, 6, 1), nothing);
  EXPECT_EQ(report(1150ms, 6, 1), nothing) << "two are late, and still unanswered";
  EXPECT_EQ(report(1160ms, 6, 2), std::pair(2LL, 150L));
  EXPECT_EQ(report(1200ms, 7, 2), nothing);
  EXPECT_EQ(report(1400ms, 7, 2), nothing);
  EXPECT_EQ(report(1410ms, 7, 3), nothing) << "late, but a second has not passed since the last report";
  EXPECT_EQ(report(2170ms, 7, 3), std::pair(1LL, 200L));
  EXPECT_EQ(report(3200ms, 8, 3), nothing);
  EXPECT_EQ(report(3301ms, 8, 3), nothing);
  EXPECT_EQ(report(4301ms, 8, 3), std::pair(1LL, 1101L)) << "not for ever kept back for an answer";
}

TEST(surveillant, drops_the_outputs_of_a_dead_controller_when_asked) {
  for (const std::string choice : {"garder", "zero"}) {
    const running_mine mine;
    mine.area.output(0, 1);
    mine.area.output(10, 1);
    mine.area->output_clock = 5;
    a_watch watch(mine, {"--a-l-arret", choice, built("bad_controller"), "dies_holding_the_lock"});
    EXPECT_EQ(watch.wait(), 128 + SIGKILL);
    EXPECT_EQ(mine.area->output[0] + mine.area->output[10], choice == "zero" ? 0 : 2);
    EXPECT_EQ(mine.area->output_clock, 5);
  }
}

// p: the plant, s: surveillant, g: its second process, c: the controller, which is a script with a child.
TEST(surveillant, leaves_nothing_whatever_is_killed_and_in_which_order) {
  const a_directory here;
  script("controller", built("controleur_mine") + " \"$@\" & child=$!; " + note_child + " wait");
  for (const std::string order :
       {"s", "g", "p", "psc", "pcs", "spc", "scp", "cps", "csp", "pgc", "gpc", "gcp", "cgp"}) {
    std::filesystem::remove("pids");
    process plant({built("wagons"), built("surveillant"), "./controller"});
    const open_area area(wait_for_area_of(plant.pid()));
    ASSERT_TRUE(wait_until([&] { return area->output_clock > 0; }));
    const std::map<char, pid_t> pids = pids_of_script();
    for (const char role : order) {
      kill(role == 'p' ? plant.pid() : pids.at(role), SIGKILL);
      if (role == 'p') plant.wait();
    }
    for (const auto& [role, pid] : pids)
      EXPECT_TRUE(wait_until([p = pid] { return !is_running(p); })) << order << ": " << role << " still runs";
    // A watcher that has seen the plant die removes its area, which stays until the last one lets it go.
    const std::size_t plant_dies = order.find('p');
    if (plant_dies < order.find('c')) {
      shmid_ds state{};
      EXPECT_TRUE(shmctl(area.ident(), IPC_STAT, &state) == -1 || (state.shm_perm.mode & SHM_DEST) != 0)
          << order;
    }
    EXPECT_TRUE(plant_dies != std::string::npos || area.cycles(2)) << "the mine goes on";
  }
}

TEST(surveillant, passes_the_end_on_when_it_is_asked_to_end) {
  const a_directory here;
  script("controller", "exec " + built("controleur_mine") + " \"$@\"");
  const running_mine mine;
  a_watch watch(mine, {"./controller"});
  ASSERT_TRUE(wait_until([&] { return mine.area->output_clock > 0; }));
  watch.signal(SIGHUP);
  EXPECT_EQ(watch.wait(), 128 + SIGTERM);
  EXPECT_FALSE(is_running(pids_of_script().at('c')));
}
