#pragma once
// Who is to be judged: programs named on the command line, found in a folder, or on a class list.

#include <stdexcept>
#include <string>
#include <vector>

struct candidate {
  std::string name;                // unique within an exam
  std::vector<std::string> words;  // the command; empty: there is none, see `missing`
  std::string missing;             // what was looked for in vain
};

// A file or folder that cannot be read, or a line of a class list that is none; its text names both.
struct candidate_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A command as a person types it: a file of exactly that name, else words in the shell's quotes, with "~" and
// variables but neither pipes nor substitutions. Named by its first word's file, a script by the script's. A
// file that ends in ".grafcet" is run by grafcet.
candidate candidate_of(const std::string& command);

// In the order of their names: every program directly in the folder, and every subfolder with its
// `controleur`, `controleur.py` or `controleur.grafcet`, named by the subfolder; one without is missing. A
// program is a file that begins as an executable or a script does, whether it may be executed or not, or ends
// in ".py" or
// ".grafcet": without the mark of a script python3 or grafcet runs it. Hidden files are passed over.
std::vector<candidate> candidates_in(const std::string& folder);

// A class list: a line for each, its name, blanks, a tab or ";", and its command; a name with blanks in it
// needs the tab or ";". A name without a command is missing; "#" begins a comment. Commands are looked for
// from the list's folder on.
std::vector<candidate> candidates_on(const std::string& list);

// Gives those of the same name a number each: "x", "x (2)".
void make_names_unique(std::vector<candidate>& all);
