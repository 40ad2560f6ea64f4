#include "bibliocpp/signal_record.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <sstream>

#include "bibliocpp/area_recorder.h"
#include "bibliocpp/signal_files.h"
#include "tests/support/a_directory.h"
#include "tests/support/area.h"
#include "tests/support/process.h"

namespace {

const bool in_english = setenv("LC_ALL", "en", 1) == 0;

// "signal clock:value@time ..." and what was missed: the whole of a record, to be compared at once.
std::string told(const signal_record& record) {
  std::ostringstream text;
  for (std::size_t s = 0; s < record.signals().size(); ++s) {
    text << record.signals()[s].name << (record.signals()[s].is_output ? "!" : "");
    for (const auto& c : record.changes(s)) text << ' ' << c.clock << ':' << c.value << '@' << c.time_us;
    text << '\n';
  }
  for (const auto& gap : record.missed()) text << gap.count << '@' << gap.time_us << ' ';
  text << "end " << record.end_us();
  return text.str();
}

signal_record a_record() {
  signal_record record({{"a b", false}, {"n", false}, {"x,\"y\"", true}});
  for (const std::size_t s : {0U, 1U, 2U}) record.add(s, {0, 1, s == 2});
  record.add(0, {5000, 2, 1});
  record.add(0, {6000, 3, 1});  // the same value: no change
  record.miss({7000, 3});
  record.add(1, {7000, 6, -7});
  record.add(1, {9000, 7, 1});
  record.miss({1'009'000, 2});
  record.extend(1'012'345);
  return record;
}

TEST(signal_record, finds_the_change_that_is_valid_at_a_moment) {
  const signal_record record = a_record();
  EXPECT_EQ(told(record),
            "a b 1:0@0 2:1@5000\nn 1:0@0 6:-7@7000 7:1@9000\nx,\"y\"! 1:1@0\n3@7000 2@1009000 end 1012345");
  EXPECT_EQ(record.size(), 6U);
  EXPECT_EQ(record.missed_in_all(), 5);
  const std::ptrdiff_t found[] = {-1, 0, 0, 1, 1, 2, 2};
  const std::int64_t moments[] = {-1, 0, 6999, 7000, 8999, 9000, INT64_MAX};
  for (std::size_t n = 0; n < std::size(found); ++n)
    EXPECT_EQ(record.last_change_at(1, moments[n]), found[n]) << moments[n];
}

TEST(signal_record, forgets_the_oldest_and_keeps_what_was_valid) {
  signal_record record({{"fast", false}, {"slow", false}, {"idle", true}}, 64);
  record.add(2, {0, 0, 3});
  for (int t = 0; t < 1000; ++t) {
    record.add(0, {t, t, t});
    record.add(1, {t, t, t / 40});
    if (t % 100 == 0) record.miss({t, 2});
    const std::int64_t from = record.forgotten_until_us();
    ASSERT_LE(record.size() + record.missed().size(), 64U);
    for (const std::int64_t moment : {from, (from + t) / 2, std::int64_t{t}}) {
      const auto value = [&](std::size_t s) {
        return record.changes(s)[static_cast<std::size_t>(record.last_change_at(s, moment))].value;
      };
      ASSERT_EQ(value(0), moment) << t;
      ASSERT_EQ(value(1), moment / 40) << t;
      ASSERT_EQ(value(2), 3) << t;
    }
  }
  EXPECT_GT(record.size(), 50U) << "more than an eighth was dropped at once";
  EXPECT_EQ(record.missed_in_all(), 20);
}

TEST(recorder, takes_announced_batches_only_and_counts_the_others) {
  std::list<std::string> inputs{"a", "b"}, outputs{"x"};
  IOsharemem_server plant(inputs, outputs);
  const open_area area(plant.memory_ident());
  IOsharemem_client controller(area.ident());
  const auto publish = [&](int a, int batches = 1) {
    plant.setreset_input(0, a);
    while (batches-- > 0) plant.inputs_go();
  };
  area_recorder recorder(area_view(area.ident()));
  EXPECT_EQ(recorder.news().changes.size(), 3U);
  plant.setreset_input(0, 9);
  area.output(0, 4);
  EXPECT_EQ(recorder.look_at(1000).changes.size(), 1U) << "the output, not the batch being written";
  publish(5);
  recorder.look_at(2000);
  EXPECT_EQ(recorder.unanswered_for_us(), 0);
  publish(6, 3);
  EXPECT_EQ(recorder.look_at(3000).missed, 2);
  EXPECT_EQ(recorder.unanswered_for_us(), 1000);
  EXPECT_EQ(recorder.median_answer_us(), -1);
  controller.outputs_refresh();
  EXPECT_EQ(recorder.look_at(4500).missed, 0);
  EXPECT_EQ(recorder.unanswered_for_us(), -1);
  for (int n = 0; n < 2; ++n) {
    publish(7);
    controller.outputs_refresh();
    recorder.look_at(5000 + n * 100);
  }
  EXPECT_EQ(recorder.median_answer_us(), 500);
  EXPECT_EQ(recorder.longest_answer_us(), 2500);
  EXPECT_EQ(recorder.answers(), 3);
  area->clock = INT64_MAX;  // a stranger's hand: no batches of the plant's
  EXPECT_EQ(recorder.look_at(6000).missed, 0);
  area->clock = 6;
  recorder.look_at(7000);
  publish(7, 10);
  recorder.look_at(400'000);
  recorder.look_at(800'000);
  EXPECT_EQ(recorder.state(), plant_state::running);
  publish(7, 84);
  recorder.look_at(1'000'000);
  EXPECT_EQ(recorder.batches(), 100);
  EXPECT_DOUBLE_EQ(recorder.cycles_a_second(), 100.0);
  recorder.look_at(1'500'000);
  EXPECT_EQ(recorder.state(), plant_state::suspended);
  EXPECT_DOUBLE_EQ(recorder.cycles_a_second(), 0.0);
  publish(8);
  plant.sharing_terminate();
  recorder.look_at(1'600'000);
  EXPECT_EQ(recorder.state(), plant_state::over);
  EXPECT_EQ(told(recorder.record()),
            "a 0:0@0 1:5@2000 4:6@3000 5:7@5000 100:8@1600000\nb 0:0@0\nx! 0:0@0 0:4@1000\n"
            "2@3000 9@400000 83@1000000 end 1600000");
}

TEST(vcd, comes_back_as_it_was_written_and_loads_in_another_reader) {
  const a_directory here;
  write_vcd("a.vcd", a_record());
  std::string expected = told(a_record());
  expected[1] = '_';  // a blank cannot stand in a name
  EXPECT_EQ(told(read_vcd("a.vcd")), expected);
  process to_fst({"/bin/sh", "-c", "vcd2fst a.vcd a.fst && fst2vcd a.fst"});
  ASSERT_EQ(to_fst.wait(), 0) << to_fst.errors();
  for (const char* const part :
       {"1us", "module entrees $end\n$var wire 1 ", " a_b $end", "$var integer 32 ", " n $end",
        "module sorties $end\n$var wire 1 ", "#5000\n", "b11111111111111111111111111111001 "})
    EXPECT_NE(to_fst.output().find(part), std::string::npos) << part << " in " << to_fst.output();
}

// What others write, and what is read from it; or where it goes wrong.
TEST(vcd, of_others_is_read_or_refused_by_line) {
  const a_directory here;
  const std::string head =
      "$date\nnow $end $timescale 10ns $end\n$scope module top $end $var reg 8 # bus [7:0] $end\n"
      "$scope module sorties $end $var wire 1 $ y $end $upscope $end\n$var real 64 r r $end $upscope $end "
      "$var wire 1 $ alias $end\n$enddefinitions $end\n";  // 6 lines
  const auto with = [](const char* bus, const char* y, const char* r, const char* alias, const char* end) {
    return std::string("top.bus[7:0]") + bus + "\ntop.sorties.y!" + y + "\ntop.r" + r + "\nalias" + alias +
           "\nend " + end;
  };
  const std::string cases[][2] = {
      {head + "$dumpvars bx # 0$ r1.6 r $end #100\nB101 #\n1$ #250 x$ r-3 r",
       with(" 0:5@1", " 0:0@0 0:1@1 0:-2147483648@2", " 0:2@0 0:-3@2", " 0:0@0 0:1@1 0:-2147483648@2", "2")},
      {head + "#100 $comment 1$ $end b" + std::string(33, '1') + " #\nr9e9 r #200 sABC # b" +
           std::string(32, '1') + " #",
       with(" 0:2147483647@1 0:-1@2", "", " 0:2147483647@1", "", "2")},
      {head + "#1\n1%", ":8: no variable has the code %"},
      {head + "#1\n\n#0", "end 0"},  // both in the same microsecond
      {head + "#200\n\n#0", ":9: time runs backwards"},
      {head + "#18446744073709551616", ":7: this is no moment"},
      {head + "b12 #", ":7: this is no value: b12"},
      {head + "rx r", ":7: this is no number"},
      {head + "hello", ":7: no variable has the code"},
      {head + "1", ":7: no variable has the code "},
      {head + "b #", ":7: a value is missing"},
      {head + std::string(1, '\0'), ":7: neither a moment nor a value"},
      {"$timescale 3 us $end", ":1: unknown unit of time: 3us"},
      {"\n$var wire 1 $end", ":2: $var without"},
      {"\n\n$date", ":3: an $end is missing"},
      {"", ":1: this is no VCD file"},
      {"time_s,batch", ":1: this is no VCD file"},
  };
  for (const auto& [text, expected] : cases) {
    std::ofstream("b.vcd") << text;
    std::string result;
    try {
      result = told(read_vcd("b.vcd"));
    } catch (const signal_file_error& error) {
      result = error.what();
    }
    EXPECT_NE(result.find(expected), std::string::npos) << text << "\n" << result;
  }
  EXPECT_THROW(read_vcd("none.vcd"), signal_file_error);
}

TEST(record_file, is_whole_or_not_there_and_an_existing_one_keeps_its_identity) {
  const a_directory here;
  std::ofstream("old.csv") << "what was there before";
  std::filesystem::create_hard_link("old.csv", "link.csv");
  const std::string before = contents("old.csv");
  rlimit usual{};
  getrlimit(RLIMIT_FSIZE, &usual);
  const rlimit tight{.rlim_cur = 100, .rlim_max = usual.rlim_max};
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &tight);
  EXPECT_THROW(write_csv("old.csv", a_record()), signal_file_error);
  EXPECT_THROW(write_csv("new.csv", a_record()), signal_file_error);
  setrlimit(RLIMIT_FSIZE, &usual);
  std::signal(SIGXFSZ, handler);
  EXPECT_THROW(write_vcd("/dev/full", a_record()), signal_file_error);
  EXPECT_EQ(contents("old.csv"), before);
  EXPECT_FALSE(std::filesystem::exists("new.csv"));
  std::ofstream("old.csv") << std::string(1000, '.');
  write_csv("old.csv", a_record());
  EXPECT_EQ(contents("link.csv"),
            "time_s,batch,direction,signal,value\n0.000000,1,input,a b,0\n0.000000,1,input,n,0\n"
            "0.000000,1,output,\"x,\"\"y\"\"\",1\n0.005000,2,input,a b,1\n0.007000,2,missed,,3\n"
            "0.007000,6,input,n,-7\n0.009000,7,input,n,1\n1.009000,7,missed,,2\n");
}

TEST(growing_vcd, is_whole_at_every_moment) {
  struct : std::stringbuf {
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
  } one_way;
  std::ostream pipe(&one_way);
  std::ostringstream file;
  for (std::ostream* const out : {static_cast<std::ostream*>(&file), &pipe}) {
    vcd_writer writer(*out, {{"a", false}, {"x", true}});
    for (const std::int32_t value : {1, 0, 5, 1}) writer.add(0, {value * 0, 1, value});
  }
  EXPECT_NE(file.str().find("integer 32 # a $end"), std::string::npos);
  EXPECT_NE(file.str().find("wire     1 $ x $end"), std::string::npos);
  EXPECT_NE(file.str().find("b1 #\nb0 #\nb101 #\nb1 #\n"), std::string::npos);
  EXPECT_NE(one_way.str().find("integer 32 $ x $end"), std::string::npos);
}

}  // namespace
