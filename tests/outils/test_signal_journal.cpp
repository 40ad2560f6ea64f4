#include <gtest/gtest.h>

#include <csignal>

#include "bibliocpp/signal_files.h"
#include "tests/support/a_directory.h"
#include "tests/support/forked_plant.h"
#include "tests/support/process.h"
#include "tests/support/wait.h"

namespace {

struct a_journal : process {
  explicit a_journal(std::vector<std::string> words)
      : process(with_program(std::move(words)), {"LC_ALL=en_GB.UTF-8"}) {}
  static std::vector<std::string> with_program(std::vector<std::string> words) {
    words.insert(words.begin(), built("signal_journal"));
    return words;
  }
  bool tells(const std::string& text) const {
    return wait_until([&] { return output().find(text) != std::string::npos; });
  }
};

// This process is the plant, for the second time: it has left an area before, where a run is over.
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
  a_journal journal({"--vcd", "j.vcd", plant.pid, "--csv", "j.csv"});
  ASSERT_TRUE(journal.tells("x = 0\n"));
  plant.publish(7);
  ASSERT_TRUE(journal.tells(" s  a 7\n")) << journal.output();
  plant.area.output(0, 1);
  ASSERT_TRUE(journal.tells(" s  x 1\n"));
  journal.signal(SIGTERM);
  EXPECT_EQ(journal.wait(), 0) << journal.errors();
  const std::string time = "[0-2][0-9]:[0-5][0-9]:[0-5][0-9]\\.[0-9]{3} +[0-9]+\\.[0-9]{3} s  ";
  const std::string lines[] = {"a = 1", "b = 0", "x = 0", "a 7", "x 1"};
  std::string all = "area " + std::to_string(plant.area.ident()) + ": 2 inputs, 1 outputs\n";
  for (const std::string& line : lines) all += time + line + "\n";
  EXPECT_TRUE(testing::internal::RE::FullMatch(journal.output(), testing::internal::RE("(" + all + ")")))
      << journal.output();
  const signal_record kept = read_vcd("j.vcd");
  EXPECT_EQ(kept.size(), 5U);
  EXPECT_EQ(kept.changes(0).back().value, 7);
  EXPECT_EQ(kept.changes(0).back().clock, 2);
  EXPECT_GT(kept.end_us(), kept.changes(2).back().time_us) << "it reaches to the end of the journal";
  EXPECT_NE(contents("j.csv").find(",2,input,a,7\n"), std::string::npos);
}

TEST(journal, ends_when_what_is_waited_for_has_come_or_cannot_come_any_more) {
  a_plant plant;
  // The number of the process may come last: then it is not taken for the number of times.
  a_journal until({"--until", "a", "1", plant.pid}), twice({plant.pid, "--until", "a", "1", "2"}),
      never({plant.pid, "--until", "b", "1"}), all({plant.pid});
  for (const a_journal* const journal : {&until, &twice, &never, &all})
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
}

TEST(journal, ends_when_its_plant_is_killed) {
  forked_plant plant;
  const open_area area(wait_for_area_of(plant.pid));
  a_journal journal({std::to_string(plant.pid)});
  ASSERT_TRUE(journal.tells("x = 0\n"));
  plant.kill_it();
  EXPECT_EQ(journal.wait(), 1);
  EXPECT_TRUE(journal.tells(" s  the plant has gone without ending its run\n"));
}

TEST(journal, refuses_what_it_cannot_do) {
  a_plant plant;
  using words = std::vector<std::string>;
  struct refusal {
    words arguments;
    int status;
    const char* error;
  };
  for (const auto& [arguments, status, error] : {
           refusal{{}, 2, "of which process?"},
           refusal{{"1"}, 2, "no area of process 1\n"},
           refusal{{"x"}, 2, "not a number: x"},
           refusal{{"0"}, 2, "must be above 0: 0"},
           refusal{{plant.pid, plant.pid}, 2, "cannot make sense of: "},
           refusal{{plant.pid, "--vcd"}, 2, "--vcd: a word is missing"},
           refusal{{plant.pid, "--until", "c", "1"}, 2, "the area has no signal c"},
           refusal{{plant.pid, "--vcd", "/dev/full"}, 1, "/dev/full: No space left on device"},
           refusal{{plant.pid, "--csv", "/none/j.csv"}, 1, "/none/j.csv: No such file or directory"},
       }) {
    a_journal journal(arguments);
    EXPECT_EQ(journal.wait(), status) << error;
    EXPECT_NE(journal.errors().find(error), std::string::npos) << journal.errors();
  }
  a_journal zone({plant.pid, "--zone"});
  EXPECT_EQ(zone.wait(), 0);
  EXPECT_EQ(zone.output(), std::to_string(plant.area.ident()) + "\n");
}

}  // namespace
