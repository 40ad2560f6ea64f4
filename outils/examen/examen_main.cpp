// examen [options] CONTROLLER...: judges controllers on a plant, without a screen or a person.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "bibliocpp/language.h"
#include "outils/child_processes/programs.h"
#include "outils/examen/acceleration.h"
#include "outils/examen/command_line.h"
#include "outils/examen/exams.h"
#include "outils/examen/guardian.h"
#include "outils/examen/harmless.h"
#include "outils/examen/junit.h"
#include "outils/examen/report.h"
#include "outils/examen/sandbox.h"
#include "outils/examen/scenario.h"

namespace fs = std::filesystem;

namespace {

struct mistake : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::string full_path(const std::string& path) {
  return path.empty() ? "" : fs::absolute(path).lexically_normal().string();
}

std::string plant_program(const std::string& plant) {
  const auto found = find_program(plant);
  if (!found) throw mistake(tr("maquette introuvable : {}", {plant}));
  return full_path(*found);
}

exam_order order_for(const command_line& wanted, const candidate& one, std::size_t number) {
  exam_order order;
  order.plant = wanted.plant;
  order.plant_program = plant_program(wanted.plant);
  order.scenario = full_path(wanted.scenario);
  order.real_time = wanted.real_time;
  order.acceleration = wanted.acceleration;
  order.patience_ms = wanted.patience_ms;
  order.most_seconds = wanted.most_seconds;
  order.memory_mib = wanted.memory_mib;
  order.random_seed = wanted.random_seed;
  order.name = one.name;
  order.command = one.words;
  if (!one.words.empty()) order.command[0] = find_program(one.words[0]).value_or(one.words[0]);
  order.missing = one.missing;
  if (wanted.report.empty()) return order;
  order.evidence = full_path(evidence_folder(wanted.report, number + 1, one.name));
  fs::create_directories(order.evidence);
  return order;
}

std::vector<std::string> needed_paths(const command_line& wanted, const std::string& self) {
  std::vector<std::string> needed{self, plant_program(wanted.plant), full_path(wanted.scenario)};
  for (const candidate& one : wanted.candidates)
    for (const std::string& word : one.words)
      if (word.starts_with('/')) needed.push_back(word);
  return needed;
}

std::string as_typed(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += (text.empty() ? "" : " ") + (word.find_first_of(" \t\n'\"\\$*?[]<>|&;()`~#!") == std::string::npos
                                             ? word
                                             : quoted_for_shell(word));
  return text;
}

// The scenario, and with it the plant where the command line names none.
scenario scenario_for(command_line& wanted) {
  if (wanted.scenario.empty()) {
    if (wanted.plant.empty()) wanted.plant = "wagons";
    return default_scenario_for(wanted.plant);
  }
  scenario asked = read_scenario(wanted.scenario);
  const std::string meant = asked.plant.empty() ? "wagons" : asked.plant;
  if (wanted.plant.empty()) wanted.plant = meant;
  if (!asked.plant.empty() && fs::path(wanted.plant).filename() != fs::path(meant).filename())
    throw mistake(tr("{} est pour {}, pas pour {}", {asked.file, meant, wanted.plant}));
  return asked;
}

int judge(command_line wanted, const std::string& self) {
  const scenario asked = scenario_for(wanted);
  const std::vector<std::string> needed = needed_paths(wanted, self);
  const bool boxed = sandbox(needed).works(self);
  const std::string unprotected = tr("sans protection : bwrap ne fonctionne pas sur cette machine");
  if (!boxed) std::cerr << "examen: " + unprotected + "\n";
  std::vector<exam_order> orders;
  for (std::size_t n = 0; n < wanted.candidates.size(); ++n) {
    orders.push_back(order_for(wanted, wanted.candidates[n], n));
    orders.back().boxed = boxed;
  }
  remove_traces_of_acceleration();  // of an examen that was killed
  std::vector<verdict> verdicts = hold_exams(orders, wanted.at_once, self, needed, [](const verdict& v) {
    std::cout << line_of(v) << std::endl;
    for (const std::string& remark : v.remarks) std::cout << "    " + harmless(remark) + "\n";
  });
  for (std::size_t n = 0; n < verdicts.size(); ++n) {
    verdicts[n].command = as_typed(wanted.candidates[n].words);
    if (!boxed) verdicts[n].remarks.push_back(unprotected);
  }
  std::cout << "\n" << table_of(verdicts) << std::flush;
  if (!wanted.report.empty()) write_report(wanted.report, asked.title, verdicts);
  if (!wanted.junit.empty()) {
    std::ofstream file(wanted.junit);
    write_junit(file, asked.title, wanted.plant, verdicts);
    if (!file.flush()) throw mistake(tr("{} : l'écriture échoue", {wanted.junit}));
  }
  return exit_status(verdicts);
}

}  // namespace

int main(int argc, char** argv) try {
  const std::string self = fs::read_symlink("/proc/self/exe");
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (!words.empty() && words[0] == guardian_option) return guard({words.begin() + 1, words.end()});
  if (!words.empty() && words[0] == exam_option) return hold_one_exam({words.begin() + 1, words.end()}, self);
  const command_line wanted = read_command_line(argc, argv);
  if (!wanted.answer.empty()) {
    std::cout << wanted.answer;
    return 0;
  }
  return judge(wanted, self);
} catch (const std::exception& why) {
  std::cerr << std::string("examen: ") + why.what() + "\n";
  return 2;
}
