#pragma once
// What has been found about one controller.

#include <cstdint>
#include <string>
#include <vector>

enum class outcome {
  passed,
  failed,          // an expectation missed, or the plant told a fault
  crashed,         // killed by a signal: `number`
  ended_early,     // with the status `number`, though the run was not over
  not_found,       // no such program
  not_executable,  // `number` is the errno
  silent,          // announced no outputs within the first patience, or never attached
  too_slow,        // answered too few batches, or --duree-max has passed
  not_judged       // nothing of it can be said: `sentence` tells why (plant, machine, scenario)
};

struct run_event {
  std::int64_t cycle;
  std::string text;
};

struct verdict {
  std::string candidate;  // its name: unique within an exam
  std::string command;    // as a person would type it
  outcome what = outcome::not_judged;
  int number = 0;               // see outcome
  std::string sentence;         // of the finding, or what e.g. the machine says; may be empty
  std::int64_t cycle = 0;       // when; 0: before the first
  std::int64_t cycles = 0;      // the run's length in all
  std::int64_t unanswered = 0;  // batches whose answer did not come within the patience
  double wall_seconds = 0;
  std::vector<run_event> events;
  std::vector<std::string> remarks;  // "runs unprotected", "statically linked: not sped up"
  // The folder in which the run has left what it could of evidence_files; empty: none.
  std::string evidence;
};

// Names within the folder of evidence. The report is made of them.
namespace evidence_files {
constexpr const char *picture = "scene.png",  // at the fault or the end
    *signals = "signaux.vcd",                 // inputs as the controller got them, outputs as it wrote them
        *errors = "erreurs.txt",              // its standard error and output, cut at a limit
            *page = "rapport.txt",            // in the markup of visionneuse (written by the report)
                *pdf = "rapport.pdf";
}  // namespace evidence_files

// All texts are one line without its end, in the locale's language, and harmless (harmless.h).
// The outcome in a word or two: "crashed".
std::string word_of(const verdict& v);
// What became of the controller, without its name: "failed at 12.345 s (cycle 2469): ...".
std::string sentence_of(const verdict& v);
// The candidate's name and the sentence.
std::string line_of(const verdict& v);
// Aligned columns for a terminal, and a last line with the totals. Every line ends with "\n".
std::string table_of(const std::vector<verdict>& all);
// 2 when one could not be judged, else 1 when one did not pass, else 0; 2 for none at all.
int exit_status(const std::vector<verdict>& all);
