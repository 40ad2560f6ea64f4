// What an exam asks, follows and says, without running one.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <cstring>
#include <sstream>

#include "outils/examen/command_line.h"
#include "outils/examen/course.h"
#include "outils/examen/harmless.h"
#include "tests/support/a_directory.h"
#include "tests/support/process.h"

namespace {

const bool in_english = setenv("LC_ALL", "en", 1) == 0;

const std::vector<std::string> inputs{"go", "stop", "home", "empty"}, outputs{"MOVE", "FILL"};

std::string wrong_in(const std::string& text) {
  try {
    const course checked(parse_scenario(text, "s"), inputs, outputs);
    return "nothing";
  } catch (const scenario_error& why) {
    return why.what();
  }
}

// Runs a scenario of 100 cycles beside signals that change as told, "12 go=1 MOVE=1 13 go=0 ...": a number is
// the cycle of what follows. Gives the operator's lines, and what was found: "12 hold x | failed 34 text".
std::string found_by(const std::string& text, const std::string& trace, const std::string& fault = "") {
  course beside(parse_scenario("duree = 0.5\n" + text, "s.toml"), inputs, outputs);
  std::vector<std::int32_t> in(inputs.size()), out(outputs.size());
  std::istringstream words(trace);
  std::string word, said;
  std::int64_t next = 1, cycle = 0;
  while (!beside.over()) {
    for (++cycle; next <= cycle && words >> word;) {
      const std::size_t equals = word.find('=');
      const std::string name = word.substr(0, equals);
      if (equals == std::string::npos) next = std::stol(word);
      for (auto [names, values] : {std::pair(&inputs, &in), std::pair(&outputs, &out)})
        for (std::size_t i = 0; i < names->size() && equals != std::string::npos; ++i)
          if (names->at(i) == name) values->at(i) = std::stoi(word.substr(equals + 1));
    }
    if (!fault.empty() && cycle == 50) beside.fault(cycle, fault);
    for (const std::string& line : beside.advance(cycle, in, out))
      said += std::to_string(cycle) + " " + line + " ";
  }
  const finding end = beside.end(cycle);
  return said + "| " + (end.what == finding::kind::passed ? "passed " : "failed ") +
         std::to_string(end.cycle) + " " + end.sentence;
}

verdict a_verdict(const std::string& name, outcome what, int number = 0, const std::string& sentence = "") {
  verdict v;
  v.candidate = name;
  v.what = what;
  v.number = number;
  v.sentence = sentence;
  v.cycle = 2469;
  return v;
}

}  // namespace

TEST(scenario, tells_every_mistake_with_its_line_and_what_was_meant) {
  const std::pair<const char*, const char*> cases[] = {
      {"duree = 1\njamais = [{signal = 'MOVE'}]", "nothing"},
      {"titre = 'x'",
       "s:1: \"duree\" is missing\n"
       "s:1: nothing is expected: [[livraisons]], [[repos]], [[arret]], [[jamais]] or [defaut] is needed"},
      {"duree = 1\nduree = 2", "s:2: this is not TOML: "},
      {"duree = '1 s'\ntitre = 3\nmaquete = 'wagons'\ndefaut = {attendu = ''}",
       "s:1: \"duree\": a number from 0.005 to 604800 is needed\ns:2: \"titre\": a text in quotes is needed\n"
       "s:3: unknown key \"maquete\"; the nearest is \"maquette\"\ns:4: \"attendu\": a text in quotes is "
       "needed"},
      {"duree = 1\n[[action]]\napuyer = 'dc'\n\n[[action]]\nappuyer = 'a'\ntenir = 'b'\n[[jamais]]\nsignal = "
       "'go'",
       "s:2: an action is \"appuyer\", \"tenir\", \"lacher\" or \"regler\", one thing only\n"
       "s:3: unknown key \"apuyer\"; the nearest is \"appuyer\"\ns:5: an action is "},
      {"duree = 1\n[[action]]\nregler = 'V'\npendant = 1\nfois = 1.5\n[[jamais]]\nsignal = 'go'",
       "s:2: \"valeur\" is missing\ns:4: \"pendant\": means something with \"appuyer\" only\n"
       "s:5: \"fois\": a whole number is needed\ns:5: \"fois\": means something with \"quand\" only"},
      {"duree = 1\naction = [{appuyer = 'x', a = 0.5, quand = 'go'},\n{appuyer = 'y', a = 0.4},\n"
       "{appuyer = 'z', a = 2}]\njamais = [{signal = 'go'}]",
       "s:2: \"a\": a fixed moment excludes \"quand\" and \"apres\"\n"
       "s:3: the action before comes at 0.5 s: the operator does one thing after the other\n"
       "s:4: 2 s: that is after the end, 1 s"},
      {"duree = 1\nvitesses = 3\naction = 4\nforcer = [{signal = 'go', de = 0.5, jusqu_a = 0.5}]\njamais = "
       "[]",
       "s:2: \"vitesses\": [vitesses] is needed, and below it lines \"Vitesse A\" = 1.5\n"
       "s:3: [[action]] is needed, and its keys below\ns:4: \"valeur\" is missing\n"
       "s:4: \"jusqu_a\" must come after \"de\"\n"},
      {"duree = 1\nlivraisons = [{signal = 'Home', au_moins = 2, avant = 1.5}]\n[[repos]]\nsignaux = []\n",
       "s:2: 1.5 s: that is after the end, 1 s\ns:3: \"delai\" is missing\ns:3: \"apres\" is missing\n"
       "s:4: \"signaux\": a list of texts is needed: [\"one\", \"two\"]"},
      {"duree = 1\n[[repos]]\nsignaux = ['home',\n 'emty']\napres = 'STOP'\ndelai = 1\n[[jamais]]\nsignal = "
       "'move'",
       "s:4: no signal is named \"emty\"; the nearest is \"empty\"\n"
       "s:5: no signal is named \"STOP\"; the nearest is \"stop\"\n"
       "s:8: no signal is named \"move\"; the nearest is \"MOVE\""}};
  for (const auto& [text, told] : cases) EXPECT_EQ(wrong_in(text).substr(0, strlen(told)), told);
  EXPECT_THROW(read_scenario("/no/such"), scenario_error);
  EXPECT_THROW(read_scenario("/tmp"), scenario_error);
  EXPECT_THROW(default_scenario_for("poussoir"), scenario_error);
}

TEST(scenario, every_one_that_comes_along_is_right) {
  for (const auto& file : std::filesystem::directory_iterator(in_repository("share/scenarios")))
    EXPECT_NO_THROW(EXPECT_GT(read_scenario(file.path()).cycles, 0)) << file.path();
  EXPECT_EQ(default_scenario_for("build/bin/wagons").plant, "wagons");
}

TEST(course, the_operator_does_one_thing_after_the_other_at_its_moment) {
  const std::array<const char*, 3> cases[] = {
      {"vitesses = {'V B' = 1.5, 'V A' = 2}\naction = [{appuyer = 'x', a = 0.05, pendant = 0.01}, {tenir = "
       "'y'},"
       "{lacher = 'y', apres = 0.02}]",
       "", "1 set 1.5 V B 1 set 2 V A 10 hold x 12 release x 12 hold y 16 release y | passed 100 "},
      {"action = [{tenir = 'x', a = 0.1}, {tenir = 'y', quand = 'go', fois = 2, apres = 0.05}]",  // since x
       "3 go=1 25 go=0 26 go=1 28 go=0 31 go=1 33 go=0", "20 hold x 41 hold y | passed 100 "},
      {"action = [{tenir = 'x', quand = 'go', vaut = 7}]", "8 go=1 9 go=7", "9 hold x | passed 100 "},
      {"action = [{tenir = 'x', quand = 'go', delai = 0.1}]", "",
       "| failed 20 go has not become 1 in 0.1 s; the operator was waiting for it (line 2)"},
      {"action = [{tenir = 'x', quand = 'go'}]", "", "| failed 100 the operator was still waiting (line 2)"}};
  for (const auto& [actions, trace, found] : cases)
    EXPECT_EQ(found_by(actions + std::string("\njamais = [{signal = 'FILL'}]"), trace), found);
}

TEST(course, finds_what_is_missed_and_when) {
  const std::string
      rest = "repos = [{signaux = ['home', 'empty'], apres = 'stop', delai = 0.1, jusqu_a = 'go'}]",
      fault = "defaut = {attendu = \"A n'etait pas\"}\n", sentence = "ERREUR:\n A n'etait pas là !!!";
  const auto deliveries = [](const char* more) {
    return "livraisons = [{signal = 'empty', au_moins = 2" + std::string(more) + "}]";
  };
  const auto stop = [](const char* more) {
    return "arret = [{signal = 'stop', delai = 0.01" + std::string(more) + "}]";
  };
  const auto never = "jamais = [{signal = 'MOVE', avec = 'FILL'}]";
  // clang-format off
  const std::array<std::string, 4> cases[] = {
      {deliveries(""), "1 empty=1 5 empty=0 6 empty=1 7 empty=0 9 empty=1", "", "passed 100 empty: 2 times"},
      {deliveries(""), "1 empty=1 5 empty=0 6 empty=1", "", "failed 100 empty has become 1 1 times instead of 2 in 0.5 s"},
      {deliveries(", avant = 0.2"), "6 empty=1 7 empty=0 41 empty=1", "", "failed 40 empty has become 1 1 times instead of 2 in 0.2 s"},
      {rest, "10 stop=1 20 stop=0 home=1 29 empty=1", "", "passed 100 "},
      {rest, "10 stop=1 20 stop=0 home=1 31 empty=1", "", "failed 30 empty is not 1, 0.1 s after stop"},
      {rest, "10 stop=1 12 stop=0 home=1 empty=1 60 home=0", "", "failed 60 home is not 1, 0.25 s after stop"},
      {rest, "10 stop=1 12 stop=0 home=1 empty=1 60 home=0 go=1", "", "passed 100 "},
      {rest, "10 stop=1 12 stop=0 home=1 empty=1 60 go=1 62 go=0 home=0 70 stop=1", "", "failed 90 home is not 1, 0.1 s after stop"},
      {rest, "95 stop=1", "", "failed 100 the end has come before 0.1 s after stop"},
      {stop(""), "5 MOVE=1 10 stop=1 12 MOVE=0 20 stop=0 21 MOVE=1", "", "passed 100 "},
      {stop(""), "5 MOVE=1 10 stop=1 13 MOVE=0", "", "failed 12 MOVE is not 0, 0.01 s after stop"},
      {stop(""), "10 stop=1 15 MOVE=7 FILL=1", "", "failed 15 MOVE is not 0, 0.025 s after stop; FILL is not 0, 0.025 s after stop"},
      {stop(", jusqu_a = 'go'"), "10 stop=1 12 stop=0 30 MOVE=1", "", "failed 30 MOVE is not 0, 0.1 s after stop"},
      {stop(", sauf = ['FILL']"), "10 stop=1 15 FILL=1", "", "passed 100 "},
      {never, "10 MOVE=1 20 MOVE=0 FILL=1", "", "passed 100 "},
      {never, "10 MOVE=1 20 FILL=1", "", "failed 20 MOVE is 1 at the same time as FILL"},
      {never, "10 MOVE=2 20 FILL=1", "", "passed 100 "},
      {never, "", sentence, "failed 50 ERREUR: A n'etait pas là !!!"},
      {fault, "", sentence, "passed 50 ERREUR: A n'etait pas là !!!"},
      {fault, "", "another", "failed 50 another"},
      {fault, "", "", "failed 100 the expected fault has not come: A n'etait pas"},
      {fault + deliveries(""), "", sentence, "failed 50 empty has become 1 0 times instead of 2 in 0.5 s"}};
  // clang-format on
  for (const auto& [text, trace, told, found] : cases)
    EXPECT_EQ(found_by(text, trace, told), "| " + found) << text << trace;
}

TEST(course, forces_signals_for_their_time_and_judges_what_the_plant_and_the_controller_say) {
  course c(parse_scenario("duree = 1\nforcer = [{signal = 'home', valeur = 7, de = 0.05, jusqu_a = 0.1},"
                          "{signal = 'FILL', valeur = 0}]\njamais = [{signal = 'home'}]",
                          "s.toml"),
           inputs, outputs);
  std::string seen;
  for (const int cycle : {9, 10, 19, 20}) {
    std::vector<std::int32_t> in{1, 1, 0, 1}, out{1, 1};
    c.force_inputs(cycle, in);
    c.force_outputs(cycle, out);
    for (const std::int32_t value : in) seen += std::to_string(value);
    seen += std::to_string(out[0]) + std::to_string(out[1]) + " ";
  }
  EXPECT_EQ(seen, "110110 117110 117110 110110 ");
  c.refused(3, "hold dcc", "no button");
  EXPECT_EQ(c.end(3).sentence, "s.toml:1: the plant refuses \"hold dcc\": no button");
}

TEST(verdict, is_told_in_a_line_and_in_a_table_whatever_the_name_holds) {
  const std::pair<verdict, const char*> cases[] = {
      {a_verdict("a", outcome::failed, 0, "ERREUR: x"), "a: failed at 12.345 s (cycle 2469): ERREUR: x"},
      {a_verdict("b\x1b[2Jé\n", outcome::crashed, SIGSEGV),
       "b\\x1b[2Jé\\n: crashed at 12.345 s (cycle 2469): SIGSEGV (Segmentation fault)"},
      {a_verdict("c", outcome::not_executable, EACCES), "c: not executable: Permission denied"},
      {a_verdict("d", outcome::ended_early, 3), "d: ended early at 12.345 s (cycle 2469): status 3"},
      {a_verdict("e", outcome::silent), "e: silent at 12.345 s (cycle 2469): no outputs announced"},
      {a_verdict("é", outcome::passed), "é: passed"}};
  std::vector<verdict> all;
  for (const auto& [v, told] : cases) EXPECT_EQ(line_of(all.emplace_back(v)), told);
  std::istringstream table(table_of(all));
  std::vector<std::string> lines;
  for (std::string line; std::getline(table, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), all.size() + 2);
  EXPECT_EQ(lines[7], "1 passed of 6");
  for (std::size_t i = 1; i <= all.size(); ++i)
    EXPECT_EQ(characters_in(lines[i]), characters_in(lines[0])) << lines[i];
  EXPECT_EQ(exit_status({all[5]}), 0);
  EXPECT_EQ(exit_status(all), 1);
  all.push_back(a_verdict("g", outcome::not_judged));
  EXPECT_EQ(exit_status(all), 2);
  EXPECT_EQ(exit_status({}), 2);
}

TEST(harmless, lets_nothing_through_that_acts_on_a_reader) {
  const std::pair<std::string, const char*> cases[] = {
      {"a\tb\r\n\x7f", "a\\tb\\x0d\\n\\x7f"},
      {"é—𝄞", "é—𝄞"},
      {"\xc2\x9b"
       "31m",
       "\\x9b31m"},
      // NOLINTNEXTLINE(misc-misleading-bidirectional)
      {"\xe2\x80\xaegpj", "\\u202egpj"},
      {"\xff\xc3(\xed\xa0\x80\xe0\x80\xaf\xf4\x90\x80\x80\xe2\x82",
       "\\xff\\xc3(\\xed\\xa0\\x80\\xe0\\x80\\xaf\\xf4\\x90\\x80\\x80\\xe2\\x82"},
      {"\uffff\ufeff", "\\uffff\\ufeff"},
      {"1234567890", "1234567890"},
      {"12345678901", "123456789…"},
      {std::string(1, '\0'), "\\x00"}};
  for (const auto& [text, safe] : cases)
    EXPECT_EQ(harmless(text, text.size() < 12 ? 10 + 8 * (text[0] != '1') : 80), safe);
  EXPECT_EQ(as_markup("<a b=\"&\">"), "&lt;a b=&quot;&amp;&quot;&gt;");
}

namespace {

std::string told(const std::vector<candidate>& all) {
  std::string text;
  for (const candidate& one : all) {
    text += one.name + ":" + (one.missing.empty() ? "" : " missing");
    for (const std::string& word : one.words) text += " " + std::filesystem::path(word).filename().string();
    text += "\n";
  }
  return text;
}

std::string read(std::vector<std::string> words) {
  std::vector<char*> arguments;
  words.insert(words.begin(), "examen");
  for (std::string& word : words) arguments.push_back(word.data());
  try {
    const command_line wanted = read_command_line(static_cast<int>(arguments.size()), arguments.data());
    return wanted.plant + " " + std::to_string(wanted.at_once) + " " + std::to_string(wanted.patience_ms) +
           "\n" + told(wanted.candidates);
  } catch (const std::runtime_error& why) {
    return why.what();
  }
}

}  // namespace

TEST(candidates, are_programs_of_a_folder_or_lines_of_a_class_list) {
  const a_directory here;
  std::filesystem::create_directories("class/Zoé/x");
  std::filesystem::create_directories("class/empty");
  std::ofstream("class/script") << "#!/bin/sh\n";
  std::ofstream("class/p.py") << "print(1)\n";
  std::ofstream("class/notes.txt") << "p.py is mine\n";
  std::ofstream("class/.hidden") << "#!/bin/sh\n";
  std::ofstream("class/Zoé/controleur.py") << "#!/usr/bin/python3\n";
  std::ofstream("class/g.grafcet") << "grafcet G\n";
  std::filesystem::copy("/bin/true", "class/a b");
  EXPECT_EQ(told(candidates_in("class")),
            "Zoé: controleur.py\na b: a b\nempty: missing\ng.grafcet: grafcet --periode 5ms g.grafcet\n"
            "p.py: python3 p.py\nscript: script\n");
  std::ofstream("class/list")
      << "\xef\xbb\xbf# 3A\nAnne  ./script -v \"x y\"\r\n\nBo Li;python3 p.py\nCem\t./none\nDie\n";
  const std::vector<candidate> listed = candidates_on("class/list");
  EXPECT_EQ(told(listed), "Anne: script -v x y\nBo Li: python3 p.py\nCem: none\nDie: missing\n");
  EXPECT_EQ(listed[1].words[1], here.path / "class/p.py") << "found from any folder";
  EXPECT_EQ(listed[2].words[0], here.path / "class/none");
  std::ofstream("bad") << "Anne true\nBo true $(reboot)\n";
  EXPECT_THROW(candidates_in("none"), candidate_error);
  EXPECT_EQ(read({"--liste", "bad"}), "bad:2: this is no command: true $(reboot)");
  EXPECT_EQ(
      read({"--maquette", "galerie", "class/a b", "-j4", "--patience=9", "true", "--", "true",
            "class/g.grafcet"}),
      "galerie 4 9\na b: a b\ntrue: true\ntrue (2): true\ng.grafcet: grafcet --periode 5ms g.grafcet\n");
  EXPECT_EQ(read({"--rapports", "x"}),
            "there is no option --rapports; the nearest is --rapport; see \"examen --help\"");
  EXPECT_EQ(read({"-j", "0", "true"}),
            "-j needs a whole number from 1 to 256, not \"0\"; see \"examen --help\"");
  EXPECT_EQ(read({"--junit"}), "there is no value after --junit; see \"examen --help\"");
  EXPECT_EQ(read({}), "there is no controller to judge; see \"examen --help\"");
}
