#include "outils/examen/candidates.h"

#include <wordexp.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

#include "bibliocpp/language.h"

namespace fs = std::filesystem;

namespace {

bool is_file(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

std::vector<std::string> words_in(const std::string& command) {
  wordexp_t found{};
  std::vector<std::string> words;
  if (wordexp(command.c_str(), &found, WRDE_NOCMD) == 0)
    words.assign(found.we_wordv, found.we_wordv + found.we_wordc);
  wordfree(&found);
  if (words.empty()) throw candidate_error(tr("ce n'est pas une commande : {}", {command}));
  return words;
}

// What runs a text that is no program of its own. Times of GRAFCETs are the plant's, whose cycle is 5 ms.
std::vector<std::string> reader_of(const fs::path& text) {
  if (text.extension() == ".py") return {"python3"};
  if (text.extension() == ".grafcet") return {"grafcet", "--periode", "5ms"};
  return {};
}

// A candidate runs in a folder of its own: what is a file seen from `base`, and the program's path, are told
// in full.
candidate candidate_from(const std::string& command, const fs::path& base) {
  candidate found;
  found.words = is_file(base / command) ? std::vector{command} : words_in(command);
  for (std::string& word : found.words)
    if (is_file(base / word) || (&word == found.words.data() && word.find('/') != std::string::npos))
      word = fs::absolute(base / word).lexically_normal();
  const bool is_script = found.words.size() > 1 && is_file(found.words[1]);
  found.name = fs::path(found.words[is_script ? 1 : 0]).filename();
  if (found.name.ends_with(".grafcet") && !is_script && is_file(found.words[0])) {
    const std::vector<std::string> reader = reader_of(found.name);
    found.words.insert(found.words.begin(), reader.begin(), reader.end());
  }
  return found;
}

// Empty when the file is no program.
std::vector<std::string> words_for(const fs::path& file) {
  if (!is_file(file)) return {};
  std::string beginning(4, '\0');
  std::ifstream(file, std::ios::binary).read(beginning.data(), 4);
  if (beginning.starts_with("#!") || beginning == "\177ELF") return {file};
  std::vector<std::string> words = reader_of(file);
  if (!words.empty()) words.push_back(file);
  return words;
}

candidate candidate_in_folder(const fs::path& folder) {
  for (const char* const name : {"controleur", "controleur.py", "controleur.grafcet"})
    if (std::vector<std::string> words = words_for(folder / name); !words.empty())
      return {folder.filename(), std::move(words), ""};
  return {folder.filename(), {}, folder / "controleur"};
}

std::string trimmed(const std::string& text) {
  constexpr const char* blanks = " \t\r";
  const std::size_t from = text.find_first_not_of(blanks);
  return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(blanks) - from + 1);
}

}  // namespace

candidate candidate_of(const std::string& command) { return candidate_from(command, fs::current_path()); }

std::vector<candidate> candidates_in(const std::string& folder) {
  std::error_code error;
  std::vector<fs::path> paths;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
    if (!at->path().filename().string().starts_with("."))
      paths.push_back(fs::absolute(at->path()).lexically_normal());
  if (error) throw candidate_error(tr("dossier illisible : {} : {}", {folder, std::strerror(error.value())}));
  std::sort(paths.begin(), paths.end());
  std::vector<candidate> all;
  for (const fs::path& path : paths)
    if (fs::is_directory(path, error))
      all.push_back(candidate_in_folder(path));
    else if (std::vector<std::string> words = words_for(path); !words.empty())
      all.push_back({path.filename(), std::move(words), ""});
  return all;
}

std::vector<candidate> candidates_on(const std::string& list) {
  std::ifstream file(list);
  if (!file || fs::is_directory(list))
    throw candidate_error(tr("liste illisible : {} : {}", {list, std::strerror(file ? EISDIR : errno)}));
  const fs::path base = fs::absolute(list).parent_path();
  std::vector<candidate> all;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    if (number == 1 && line.starts_with("\xef\xbb\xbf")) line.erase(0, 3);
    line = trimmed(line);
    if (line.empty() || line.starts_with("#")) continue;
    const std::size_t mark = line.find_first_of("\t;");
    const std::size_t end = mark != std::string::npos ? mark : line.find(' ');
    const std::string name = trimmed(line.substr(0, end));
    const std::string command = end == std::string::npos ? "" : trimmed(line.substr(end + 1));
    try {
      candidate one =
          command.empty() ? candidate{name, {}, tr("une commande")} : candidate_from(command, base);
      one.name = name;
      all.push_back(std::move(one));
    } catch (const candidate_error& why) {
      throw candidate_error(list + ":" + std::to_string(number) + ": " + why.what());
    }
  }
  return all;
}

void make_names_unique(std::vector<candidate>& all) {
  std::map<std::string, int> seen;
  for (candidate& one : all)
    if (const int n = ++seen[one.name]; n > 1) one.name += " (" + std::to_string(n) + ")";
}
