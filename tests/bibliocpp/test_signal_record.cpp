#include <gtest/gtest.h>
#include <sys/resource.h>

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
  for (const std::int64_t time_us : {5000, 6000}) record.add(0, {time_us, 2, 1});
  record.miss({7000, 3});
  record.add(1, {7000, 6, -7});
  record.add(1, {9000, 7, 1});
  record.miss({1'009'000, 2});
  record.extend(1'012'345);
  return record;
}

TEST(signal_record, keeps_changes_and_finds_the_one_valid_at_a_moment) {
  const signal_record record = a_record();
  EXPECT_EQ(told(record),
            "a b 1:0@0 2:1@5000\nn 1:0@0 6:-7@7000 7:1@9000\nx,\"y\"! 1:1@0\n3@7000 2@1009000 end 1012345");
  std::string found;
  for (const std::int64_t t : {-1, 0, 6999, 7000, 8999, 9000, INT32_MAX})
    found += std::to_string(record.last_change_at(1, t)) + " ";
  EXPECT_EQ(found, "-1 0 0 1 1 2 2 ");
}

TEST(signal_record, forgets_the_oldest_and_keeps_what_was_valid) {
  signal_record record({{"fast", false}, {"slow", false}, {"idle", true}}, 64);
  record.add(2, {0, 0, 3});
  for (int t = 0; t < 1000; ++t) {
    record.add(0, {t, t, t});
    record.add(1, {t, t, t / 40});
    if (t % 100 == 0) record.miss({t, 2});
    const std::size_t all = record.size() + record.missed().size();
    ASSERT_TRUE(all <= 64 && (record.forgotten_until_us() == 0 || all > 50))
        << "an eighth is dropped at once";
    for (const std::int64_t moment : {record.forgotten_until_us(), std::int64_t{t}})
      for (const std::int64_t expected[] = {moment, moment / 40, 3}; const std::size_t s : {0U, 1U, 2U})
        ASSERT_EQ(record.changes(s)[static_cast<std::size_t>(record.last_change_at(s, moment))].value,
                  expected[s]);
  }
  EXPECT_EQ(record.missed_in_all(), 20);
}

TEST(recorder, takes_announced_batches_only_counts_the_others_and_times_the_answers) {
  std::list<std::string> inputs{"a", "b"}, outputs{"x"};
  IOsharemem_server plant(inputs, outputs);
  const open_area area(plant.memory_ident());
  IOsharemem_client controller(area.ident());
  area_recorder recorder(area_view(area.ident()));
  std::ostringstream seen;
  const auto look = [&](std::int64_t time_us, int a, int batches, int answers) {
    plant.setreset_input(0, a);
    while (batches-- > 0) plant.inputs_go();
    while (answers-- > 0) controller.outputs_refresh();
    recorder.look_at(time_us);
    seen << recorder.unanswered_for_us() << ":" << static_cast<int>(recorder.state()) << " ";
  };
  area.output(0, 4);
  look(1000, 9, 0, 0);  // the output is taken, not the batch being written
  look(2000, 5, 1, 0);
  look(3000, 6, 3, 0);
  look(4500, 6, 0, 1);
  for (const int t : {5000, 5100}) look(t, 7, 1, 1);
  area->clock = INT64_MAX;  // a stranger's hand: no batches of the plant's
  look(6000, 7, 0, 0);
  area->clock = 6;
  look(7000, 7, 0, 0);
  look(506'000, 7, 94, 1);
  look(1'000'000, 7, 0, 0);
  EXPECT_DOUBLE_EQ(recorder.cycles_a_second(), 100.0);
  look(1'006'000, 7, 0, 0);
  EXPECT_DOUBLE_EQ(recorder.cycles_a_second(), 0.0);
  plant.setreset_input(0, 8);
  plant.inputs_go();
  plant.sharing_terminate();
  look(1'600'000, 8, 0, 0);
  EXPECT_EQ(seen.str(), "-1:0 0:0 1000:0 -1:0 -1:0 -1:0 -1:0 -1:0 -1:0 -1:0 -1:1 -1:2 ");
  EXPECT_EQ(told(recorder.record()),
            "a 0:0@0 1:5@2000 4:6@3000 5:7@5000 100:8@1600000\nb 0:0@0\nx! 0:0@0 0:4@1000\n"
            "2@3000 93@506000 end 1600000");
  EXPECT_EQ(std::tuple(recorder.batches(), recorder.answers()), std::tuple(100, 4));
  EXPECT_EQ(std::tuple(recorder.median_answer_us(), recorder.longest_answer_us()), std::tuple(2500, 499'000));
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
       {"1us", "entrees $end\n$var wire 1 # a_b $end\n$var integer 32 $ n $end", "sorties $end\n$var wire 1 ",
        "#5000\n", "b11111111111111111111111111111001 $"})
    EXPECT_NE(to_fst.output().find(part), std::string::npos) << part << " in " << to_fst.output();
}

// What others write, and what is read from it; or where it goes wrong.
TEST(vcd, of_others_is_read_or_refused_by_line) {
  const a_directory here;
  const std::string
      top = "$date\nnow $end $timescale 10ns $end\n$scope module top $end $var reg 8 # bus [7:0] $end ",
      head = top +
             "$scope module sorties $end $var wire 1 $ y $end $upscope $end $var real 64 r r $end "
             "$upscope $end $var wire 1 $ alias $end\n\n\n$enddefinitions $end\n",
      ones(32, '1');
  const std::string cases[][2] = {
      {head + "$dumpvars bx # 0$ r1.6 r $end #100\nB101 #\n1$ #250 x$ r-3 r",
       "top.bus[7:0] 0:5@1\ntop.sorties.y! 0:0@0 0:1@1 0:-2147483648@2\ntop.r 0:2@0 0:-3@2\n"
       "alias 0:0@0 0:1@1 0:-2147483648@2\nend 2"},
      {head + "#100 $comment 1$ $end b1" + ones + " #\nr9e9 r #200 sABC # b" + ones + " #",
       "top.bus[7:0] 0:2147483647@1 0:-1@2\ntop.sorties.y!\ntop.r 0:2147483647@1\nalias\nend 2"},
      {head + "#1\n\n#0", "end 0"},  // both in the same microsecond
      {head + "#1\n1%", ":8: no variable has the code %"},
      {head + "#200\n\n#0", ":9: time runs backwards"},
      {head + "#18446744073709551616", ":7: this is no moment"},
      {head + "b12 #", ":7: this is no value: b12"},
      {head + "b #", ":7: a value is missing"},
      {head + "rx r", ":7: this is no number"},
      {head + std::string(1, '\0'), ":7: neither a moment nor a value"},
      {"$timescale 3 us $end", ":1: unknown unit of time: 3us"},
      {"\n$var wire 1 $end", ":2: $var without"},
      {"\n\n$date", ":3: an $end is missing"},
      {"time_s,batch", ":1: this is no VCD file"}};
  for (const auto& [text, expected] : cases) try {
      std::ofstream("b.vcd") << text;
      EXPECT_NE(told(read_vcd("b.vcd")).find(expected), std::string::npos) << text;
    } catch (const signal_file_error& error) {
      EXPECT_NE(std::string(error.what()).find("b.vcd" + expected), std::string::npos) << error.what();
    }
  EXPECT_THROW(read_vcd("none.vcd"), signal_file_error);
}

TEST(record_file, is_whole_or_not_there_and_an_existing_one_keeps_its_identity) {
  const a_directory here;
  std::ofstream("old.csv") << "before";
  std::filesystem::create_hard_link("old.csv", "link.csv");
  rlimit usual{};
  getrlimit(RLIMIT_FSIZE, &usual);
  const rlimit tight{.rlim_cur = 100, .rlim_max = usual.rlim_max};
  std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &tight);
  for (const char* const file : {"old.csv", "new.csv", "/dev/full"})
    EXPECT_THROW(write_csv(file, a_record()), signal_file_error) << file;
  setrlimit(RLIMIT_FSIZE, &usual);
  EXPECT_EQ(contents("old.csv"), "before");
  EXPECT_FALSE(std::filesystem::exists("new.csv"));
  std::ofstream("old.csv") << std::string(1000, '.');
  write_csv("old.csv", a_record());
  EXPECT_EQ(contents("link.csv"),
            "time_s,batch,direction,signal,value\n0.000000,1,input,a b,0\n0.000000,1,input,n,0\n"
            "0.000000,1,output,\"x,\"\"y\"\"\",1\n0.005000,2,input,a b,1\n0.007000,2,missed,,3\n"
            "0.007000,6,input,n,-7\n0.009000,7,input,n,1\n1.009000,7,missed,,2\n");
}

TEST(growing_vcd, declares_a_wire_anew_where_one_can_go_back) {
  struct : std::stringbuf {
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
  } one_way;
  std::ostream pipe(&one_way);
  std::ostringstream file;
  for (std::ostream* const out : {&pipe, static_cast<std::ostream*>(&file)}) {
    vcd_writer writer(*out, {{"a", false}, {"x", true}});
    for (const std::int32_t value : {1, 0, 5, 1}) writer.add(0, {0, 1, value});
  }
  for (const char* const part : {"integer 32 # a $end", "wire     1 $ x $end", "b1 #\nb0 #\nb101 #\nb1 #\n"})
    EXPECT_NE(file.str().find(part), std::string::npos) << file.str();
  EXPECT_NE(one_way.str().find("integer 32 $ x $end"), std::string::npos);
}

}  // namespace
