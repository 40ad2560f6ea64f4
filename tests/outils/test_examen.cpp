// examen with real plants and controllers: what it makes of every kind of them, and what it leaves.
#include <gtest/gtest.h>
#include <sched.h>

#include <csignal>
#include <set>
#include <sstream>

#include "bibliocpp/area_view.h"
#include "bibliocpp/signal_files.h"
#include "outils/child_processes/descendants.h"
#include "tests/outils/controller_script.h"
#include "tests/support/a_directory.h"
#include "tests/support/process.h"
#include "tests/support/wait.h"

namespace {

using namespace std::chrono_literals;
using words = std::vector<std::string>;

const std::string strange = "'" + built("strange_controller") + "' ";
const words in_english{"LC_ALL=en_GB"};

// Not by iterators, which throw when the process ends meanwhile.
std::string command_of(pid_t pid) {
  std::ostringstream text;
  text << std::ifstream("/proc/" + std::to_string(pid) + "/cmdline").rdbuf();
  return text.str();
}

// Areas of other tests come and go beside ours, unless this process has a list of its own.
const bool has_own_areas = unshare(CLONE_NEWIPC) == 0;

// What is there of ours that must not stay: processes, areas, displays and scratch files.
std::set<std::string> things_of_ours() {
  std::set<std::string> found;
  for (const pid_t pid : descendants()) found.insert(command_of(pid));
  for (const area_entry& area : areas())
    if (has_own_areas && !creator_runs(area)) found.insert("area " + std::to_string(area.ident));
  for (const auto& entry : std::filesystem::directory_iterator("/tmp"))
    if (entry.path().string().find("examen") != std::string::npos) found.insert(entry.path());
  for (const auto& entry : std::filesystem::directory_iterator("/dev/shm")) found.insert(entry.path());
  return found;
}

// In a folder of the test's own, with a scenario of two seconds in which nothing is expected of a controller
// but that it does not empty C.
struct examen : testing::Test {
  a_directory here;
  const std::set<std::string> before = (adopt_descendants(), things_of_ours());

  examen() {
    write("brief.toml",
          "duree = 2.0\n[[action]]\nappuyer = \"dc\"\na = 0.5\n[[jamais]]\nsignal = \"VIDER_C\"\n");
  }
  ~examen() override {
    EXPECT_TRUE(wait_until([this] {
      wait_for_descendants(0ms);
      return left().empty();
    })) << left();
  }
  std::string left() const {
    std::string text;
    for (const std::string& thing : things_of_ours())
      if (before.count(thing) == 0) text += thing + "\n";
    return text;
  }
  // What shortens pauses leaves names in memory when nobody is left to remove them; the next exam does.
  bool only_traces() const {
    const auto all = things_of_ours();
    return std::all_of(all.begin(), all.end(), [this](const std::string& thing) {
      return before.count(thing) != 0 || thing.find("faketime_s") != std::string::npos;
    });
  }
  static void write(const std::string& file, const std::string& text, bool executable = false) {
    std::ofstream(file) << text;
    if (executable) std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  }
  // With a PATH that has no bwrap.
  words without_a_box() const {
    const std::filesystem::path bin = here.path / "bin";
    if (std::filesystem::create_directory(bin))
      for (const char* const program : {"Xvfb", "sh", "sleep"})
        std::filesystem::create_symlink(std::filesystem::path("/usr/bin") / program, bin / program);
    return {"PATH=" + bin.string(), "LC_ALL=en_GB"};
  }
  static words command(const words& options, const std::string& scenario = "brief.toml") {
    words all{built("examen"), "--scenario", scenario};
    all.insert(all.end(), options.begin(), options.end());
    return all;
  }
};

struct run {
  int status;
  std::string output, errors;
};

run ends(const words& command, words environment = in_english) {
  process program(command, environment);
  const int status = program.wait(250s);
  return {status, program.output(), program.errors()};
}

constexpr const char* judged[][2] = {
    {"", "passed"},
    {"fault", "failed at 0.505 s (cycle 101): ERREUR: Le wagon A n'etait pas à son poste de chargement"},
    {"other-fault", "failed at 0.305 s (cycle 61): ERREUR: Le wagon B n'etait pas à son poste de chargement"},
    {"crash-at-start", "crashed at 0.005 s (cycle 1): SIGABRT"},
    {"crash", "crashed at 0.500 s (cycle 100): SIGSEGV"},
    {"leave", "ended early at 0.500 s (cycle 100): status 3: out of luck"},
    {"wrong-name", "ended early at 0.005 s (cycle 1): status 1"},
    {"slow", "too slow at "},
    {"hungry", "failed at 0."},
    {"fork", "failed at 0.005 s (cycle 1): "},
    {"flood", "passed"},
    {"ignore-sigterm", "passed"},
    {"scribble", ""},
};

TEST_F(examen, judges_every_kind_of_controller) {
  words options{"-j", "2", "--patience", "1000", "--memoire", "400", "--rapport", "report"};
  for (const auto& [how, verdict] : judged) options.push_back(strange + how);
  write("not_executable", "#!/bin/sh\n");
  write("no_interpreter", "#!/nowhere/sh\n", true);
  write("script", "#!/bin/sh\n" + strange + " '' \"$@\" &\n", true);
  for (const char* const file : {"./missing", "./not_executable", "./no_interpreter", "./script"})
    options.emplace_back(file);
  options.push_back(built("grafcet") + " " + in_repository("share/grafcets/mine.grafcet"));
  const auto [status, output, errors] = ends(command(options));
  EXPECT_EQ(status, 1) << errors;
  int number = 1;
  for (const auto& [how, verdict] : judged) {
    const std::string name =
        number == 1 ? "strange_controller" : "strange_controller (" + std::to_string(number) + ")";
    EXPECT_NE(output.find(name + ": " + verdict), std::string::npos) << how << "\n" << output;
    ++number;
  }
  for (const char* const line :
       {"missing: not found", "not_executable: not executable",
        "no_interpreter: not executable: the interpreter", "script: passed", "mine.grafcet: passed"})
    EXPECT_NE(output.find(line), std::string::npos) << line << "\n" << output;
  EXPECT_LT(std::filesystem::file_size("report/011-strange_controller__11_/erreurs.txt"), 200'000U);

  // They cost the whole of the first patience.
  const run silent =
      ends(command({"-j", "2", "--patience", "250", strange + "never-attach", strange + "never-announce"}));
  EXPECT_NE(silent.output.find(
                "controller: silent at 0.005 s (cycle 1): no outputs announced: it has not attached"),
            std::string::npos)
      << silent.output;
  EXPECT_NE(silent.output.find("(2): silent at 0.005 s (cycle 1): no outputs announced\n"), std::string::npos)
      << silent.output;
}

// Inputs as the controller gets them, outputs as it writes them: what is forced is seen by one side only.
TEST_F(examen, records_every_run_to_the_same_byte_and_forces_signals) {
  write("forced.toml",
        "duree = 60.0\n[[action]]\nappuyer = \"dc\"\na = 0.5\n[[forcer]]\nsignal = \"pcC\"\nvaleur = 0\n"
        "de = 1.0\njusqu_a = 3.0\n[[forcer]]\nsignal = \"REMPLIR_B\"\nvaleur = 1\nde = 15.0\njusqu_a = 16.0\n"
        "[defaut]\nattendu = \"wagon B\"\n");
  std::string recorded[2];
  for (int n = 0; n < 2; ++n) {
    const std::string report = "report" + std::to_string(n);
    // The second beside another one.
    const run its = ends(command({"-j", "2", "--patience", "10000", "--rapport", report,
                                  built("controleur_mine"), n == 0 ? "./missing" : built("controleur_mine")},
                                 "forced.toml"));
    EXPECT_NE(its.output.find("controleur_mine: passed"), std::string::npos) << its.output << its.errors;
    recorded[n] = contents(report + "/001-controleur_mine/signaux.vcd");
    EXPECT_GT(std::filesystem::file_size(report + "/001-controleur_mine/scene.png"), 5000U);
  }
  EXPECT_GT(recorded[0].size(), 2000U);
  EXPECT_EQ(recorded[0], recorded[1]);
  const signal_record record = read_vcd("report0/001-controleur_mine/signaux.vcd");
  const auto value = [&](const std::string& name, std::int64_t time_us) {
    std::size_t n = 0;
    while (record.signals().at(n).name != name) ++n;
    return record.changes(n).at(static_cast<std::size_t>(record.last_change_at(n, time_us))).value;
  };
  EXPECT_EQ(value("pcC", 995'000), 1);
  EXPECT_EQ(value("pcC", 1'000'000), 0);
  EXPECT_EQ(value("pcC", 3'000'000), 1);
  EXPECT_EQ(value("REMPLIR_B", record.end_us()), 0);
}

TEST_F(examen, goes_on_at_the_pace_of_the_plant) {
  const run its = ends(command({"--temps-reel", strange + "x", strange + "late", "--patience", "100"}));
  EXPECT_NE(its.output.find("controller: passed"), std::string::npos) << its.output << its.errors;
  EXPECT_NE(its.output.find("(2): too slow"), std::string::npos) << its.output;
}

TEST_F(examen, does_not_judge_without_a_plant_that_plays) {
  write("dies", "#!/bin/sh\necho no fuel >&2\nexit 3\n", true);
  write("hangs", "#!/bin/sh\nsleep 1000\n", true);
  write("babbles", "#!/bin/sh\necho hello >/proc/self/fd/${MOCK_UP_LED#*,}\nsleep 1000\n", true);
  for (const auto& [plant, reason] : {std::pair{"dies", "the plant has ended: no fuel"},
                                      {"hangs", "the plant no longer answers"},
                                      {"babbles", "the plant says \"hello\""}}) {
    const run its =
        ends(command({"--patience", "50", "--maquette", std::string("./") + plant, strange + "x"}));
    EXPECT_EQ(its.status, 2);
    EXPECT_NE(its.output.find(std::string("not judged: ") + reason), std::string::npos) << its.output;
  }
  EXPECT_EQ(ends(command({"--maquette", "./nowhere", strange + "x"})).status, 2);
  // Nor does one stay whose plant must be killed without having told of it.
  write("deaf", "#!/bin/sh\nunset MOCK_UP_LED\nexec " + built("wagons") + " :\n", true);
  EXPECT_EQ(
      ends(command({"--patience", "50", "--maquette", "./deaf", strange + "x"}), without_a_box()).status, 2);
}

// Without bwrap and with it: it is asked to end, or killed.
TEST_F(examen, takes_everything_along_when_it_is_ended_in_the_middle) {
  write("long.toml", "duree = 100000.0\n[[jamais]]\nsignal = \"VIDER_C\"\n");
  for (const words& environment : {without_a_box(), in_english})
    for (const int signal : {SIGTERM, SIGKILL}) {
      process program(
          command({"-j", "2", strange + "ignore-sigterm", strange + "ignore-sigterm"}, "long.toml"),
          environment);
      EXPECT_TRUE(wait_until([] {
        int playing = 0;
        for (const pid_t pid : descendants())
          playing += command_of(pid).find("-automemlink") != std::string::npos;
        return playing >= 2;
      }));
      program.signal(signal);
      EXPECT_EQ(program.wait(), signal == SIGTERM ? 2 : -SIGKILL);
      EXPECT_TRUE(wait_until([this] {
        wait_for_descendants(0ms);
        return only_traces();
      })) << environment.size()
          << signal << "\n"
          << left();
    }
  const run its = ends(command({strange + "x", strange + "crash", strange + "fork"}), without_a_box());
  EXPECT_NE(its.errors.find("unprotected"), std::string::npos);
  EXPECT_NE(its.output.find("controller: passed"), std::string::npos) << its.output << its.errors;
  EXPECT_NE(its.output.find("(2): crashed"), std::string::npos) << its.output;
  EXPECT_NE(its.output.find("(3): failed"), std::string::npos) << its.output;
}

}  // namespace
