#include <gtest/gtest.h>

#include "bibliocpp/signal_files.h"
#include "tests/support/a_directory.h"
#include "tests/support/forked_plant.h"
#include "tests/support/process.h"
#include "tests/support/wait.h"

namespace {

struct a_journal : process {
  explicit a_journal(const std::string& words)
      : process({"/bin/sh", "-c", "exec " + built("signal_journal") + " " + words}, {"LC_ALL=en_GB.UTF-8"}) {}
  bool tells(const std::string& text) const {
    return wait_until([&] { return output().find(text) != std::string::npos; });
  }
};

// This process is the plant, for the second time: it has left an area before, where the run is over.
struct a_plant {
  std::list<std::string> inputs{"a", "b"}, outputs{"x"};
  IOsharemem_server before{inputs, outputs}, server{inputs, outputs};
  open_area left{before.memory_ident()}, area{server.memory_ident()};
  const std::string pid = std::to_string(getpid());

  a_plant() { before.sharing_terminate(); }
  void publish(int a) {
    server.setreset_input(0, a);
    server.inputs_go();
  }
};

TEST(journal, tells_initial_values_then_changes_and_keeps_them_in_files_until_it_is_ended) {
  const a_directory here;
  a_plant plant;
  plant.publish(1);
  a_journal journal("--vcd j.vcd " + plant.pid + " --csv j.csv");
  ASSERT_TRUE(journal.tells("x = 0\n"));
  plant.publish(7);
  ASSERT_TRUE(journal.tells(" s  a 7\n")) << journal.output();
  plant.area.output(0, 1);
  ASSERT_TRUE(journal.tells(" s  x 1\n"));
  journal.signal(SIGTERM);
  EXPECT_EQ(journal.wait(), 0) << journal.errors();
  std::string all = "area " + std::to_string(plant.area.ident()) + ": 2 inputs, 1 outputs\n";
  for (const char* const line : {"a = 1", "b = 0", "x = 0", "a 7", "x 1"})
    all += std::string("[0-2][0-9](:[0-5][0-9]){2}[.][0-9]{3} +[0-9]+[.][0-9]{3} s  ") + line + "\n";
  EXPECT_TRUE(testing::internal::RE::FullMatch(journal.output(), testing::internal::RE(all)))
      << journal.output();
  const signal_record kept = read_vcd("j.vcd");
  EXPECT_EQ(kept.changes(0).back().clock, 2);
  EXPECT_GT(kept.end_us(), kept.changes(2).back().time_us) << "it reaches to the end of the journal";
  EXPECT_NE(contents("j.csv").find(",2,input,a,7\n"), std::string::npos);
}

TEST(journal, ends_when_what_is_waited_for_has_come_or_cannot_come_any_more) {
  a_plant plant;
  forked_plant killed;
  const open_area area_of_killed(wait_for_area_of(killed.pid));
  // The number of the process may come last: then it is not taken for the number of times.
  a_journal until("--until a 1 " + plant.pid), twice(plant.pid + " --until a 1 2"),
      never("--until b 1 1 " + plant.pid), all(plant.pid), dead(std::to_string(killed.pid));
  for (const a_journal* const journal : {&until, &twice, &never, &all, &dead})
    ASSERT_TRUE(journal->tells("x = 0\n"));
  plant.publish(1);
  EXPECT_EQ(until.wait(), 0);
  ASSERT_TRUE(twice.tells(" a 1\n"));
  plant.publish(0);
  ASSERT_TRUE(twice.tells(" a 0\n"));
  EXPECT_TRUE(twice.runs());
  plant.publish(1);
  EXPECT_EQ(twice.wait(), 0);
  plant.server.sharing_terminate();
  EXPECT_EQ(never.wait(), 1);
  EXPECT_EQ(all.wait(), 0);
  EXPECT_TRUE(all.tells(" s  end of the run\n"));
  killed.kill_it();
  EXPECT_EQ(dead.wait(), 1);
  EXPECT_TRUE(dead.tells(" s  the plant has gone without ending its run\n"));
}

TEST(journal, refuses_what_it_cannot_do) {
  a_plant plant;
  struct refusal {
    std::string words;
    int status;
    std::string error;
  };
  for (const auto& [words, status, error] :
       {refusal{"", 2, "of which process?"}, refusal{"1", 2, "no area of process 1\n"},
        refusal{"x", 2, "not a number: x"}, refusal{"0", 2, "must be above 0: 0"},
        refusal{"1 2", 2, "cannot make sense of: 2"}, refusal{"1 --vcd", 2, "--vcd: a word is missing"},
        refusal{plant.pid + " --until c 1", 2, "the area has no signal c"},
        refusal{plant.pid + " --vcd /dev/full", 1, "/dev/full: No space left on device"},
        refusal{plant.pid + " >/dev/full", 1, "the output cannot be written"}}) {
    a_journal journal(words);
    EXPECT_EQ(journal.wait(), status) << words;
    EXPECT_EQ(journal.errors().rfind("signal_journal: " + error, 0), 0U) << journal.errors();
  }
  a_journal zone(plant.pid + " --zone");
  EXPECT_EQ(zone.wait(), 0);
  EXPECT_EQ(zone.output(), std::to_string(plant.area.ident()) + "\n");
}

}  // namespace
