// What an exam leaves to read: the pages of a report, and the file for a pipeline.
#include <gtest/gtest.h>

#include <csignal>

#include "bibliocpp/signal_files.h"
#include "outils/examen/junit.h"
#include "outils/examen/report.h"
#include "tests/support/a_directory.h"
#include "tests/support/process.h"

namespace {

const bool in_english = setenv("LC_ALL", "en", 1) == 0;

std::string output_of(const std::vector<std::string>& words) {
  process program(words);
  EXPECT_EQ(program.wait(), 0) << program.errors();
  return program.output();
}

// A run of 10 s: `dc` rises at 7 s, `A(1)` is 1 from 8 s to 9 s, `B` is always 1, `n` flutters.
signal_record a_record() {
  signal_record record({{"dc", false}, {"B", false}, {"A(1)", true}, {"n", true}});
  for (const std::size_t s : {0U, 1U, 2U}) record.add(s, {0, 1, s == 1});
  record.add(0, {7'000'000, 1400, 1});
  record.add(2, {8'000'000, 1600, 1});
  for (int i = 0; i < 40; ++i) record.add(3, {8'500'000 + 5000 * i, 1700 + i, i % 2});
  record.add(2, {9'000'000, 1800, 0});
  record.extend(10'000'000);
  return record;
}

// A controller of whose name, command and standard error everything is hostile.
verdict a_bad_one(const std::string& report) {
  verdict v;
  v.candidate = "../<b>&\"é\" #(x)\\\x1b]0;";
  v.command = "sh -c 'kill $$'";
  v.what = outcome::crashed;
  v.number = SIGSEGV;
  v.cycle = v.cycles = 2000;
  v.unanswered = 3;
  v.wall_seconds = 0.25;
  for (int i = 1; i <= 60; ++i) v.events.push_back({i * 10, "event " + std::to_string(i) + "."});
  v.remarks = {"runs unprotected"};
  v.evidence = evidence_folder(report, 7, v.candidate);
  std::filesystem::create_directories(v.evidence);
  write_vcd(v.evidence + "/signaux.vcd", a_record());
  std::ofstream errors(v.evidence + "/erreurs.txt", std::ios::binary);
  errors << std::string(1 << 20, 'x') << "\n]]>\xff \\ Tj (first) #T\n#P T3 \nlast\n";
  return v;
}

}  // namespace

TEST(report, tells_on_paper_what_happened_and_shows_the_last_seconds) {
  const a_directory here;
  const verdict v = a_bad_one(".");
  EXPECT_EQ(std::filesystem::path(v.evidence).filename(), "007-____b_________x____0_");
  verdict nothing_left = v;
  nothing_left.what = outcome::not_found;
  nothing_left.evidence.clear();
  write_report(".", "Haul & <stop>", {v, nothing_left});
  const std::string text = output_of({"pdftotext", "-layout", v.evidence + "/rapport.pdf", "-"});
  for (const char* const told :
       {"Haul & <stop>", "../<b>&\"é\" *[x]//x1b]0;", "sh -c 'kill $$'",
        "crashed at 10.000 s [cycle 2000]: SIGSEGV", "Batches of inputs unanswered: 3.", "runs unprotected",
        "... [20 before]", "event 60.", "]]>/xff / Tj [first] *T", "*P T3", "last", "1 all the time: B",
        "6.000", "A[1]", "..."}) {
    EXPECT_NE(text.find(told), std::string::npos) << told << "\n" << text;
  }
  EXPECT_EQ(text.find("event 20."), std::string::npos) << "only the last ones";
  EXPECT_NE(output_of({"pdffonts", v.evidence + "/rapport.pdf"}).find("WinAnsi"), std::string::npos);
  const std::string page = contents(v.evidence + "/rapport.txt");
  EXPECT_NE(page.find("#C T20 T22 T66 T\ndc#  # ———"), std::string::npos)
      << "rises after a quarter of the chart\n"
      << page;
  EXPECT_NE(page.find("#C T20 T44 T22 T22 T\nA[1]#  # "), std::string::npos);
  const std::string index = contents("index.html");
  EXPECT_NE(index.find("&lt;b&gt;&amp;&quot;é&quot; #(x)\\\\x1b]0;<td>crashed at"), std::string::npos)
      << index;
  EXPECT_NE(index.find("href=\"007-____b_________x____0_/signaux.vcd\""), std::string::npos);
  EXPECT_EQ(index.find("scene.png"), std::string::npos) << "there is none";
  EXPECT_THROW(write_report("/no/such", "x", {}), report_error);
}

TEST(junit, is_understood_by_a_reader_of_pipelines) {
  const a_directory here;
  verdict good, broken;
  good.candidate = "good";
  good.what = outcome::passed;
  good.wall_seconds = 1.5;
  broken.candidate = "x";
  broken.sentence = "no display";
  std::ofstream file("exam.xml");
  write_junit(file, "Haul", "wagons", {a_bad_one("."), good, broken});
  file.close();
  EXPECT_EQ(output_of({"/usr/bin/python3", "-c", R"(
import junitparser
xml = junitparser.JUnitXml.fromfile('exam.xml')
print(xml.name, xml.tests, xml.failures, xml.errors, xml.time)
for suite in xml:
    print(suite.name, suite.tests, suite.failures, suite.errors)
    for case in suite:
        print(case.classname, case.name, case.time, [(type(r).__name__, r.type, r.message) for r in case.result])
        print('event 60.' in str(case.result and case.result[0].text), (case.system_err or '').split('\n')[-3:-1])
)"}),
            "examen 3 1 1 1.75\nHaul 3 1 1\n"
            "wagons ../<b>&\"é\" #(x)\\\\x1b]0; 0.25 [('Failure', 'crashed', 'crashed at 10.000 s (cycle "
            "2000): SIGSEGV "
            "(Segmentation fault)')]\nTrue ['#P T3 ', 'last']\nwagons good 1.5 []\nFalse []\n"
            "wagons x 0.0 [('Error', 'not judged', 'not judged: no display')]\nFalse []\n");
}
