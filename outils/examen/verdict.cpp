#include "outils/examen/verdict.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "bibliocpp/language.h"
#include "outils/examen/harmless.h"
#include "outils/examen/phrase.h"
#include "outils/examen/scenario.h"

namespace {

struct wording {
  outcome what;
  const char *french, *english;
  bool has_moment;  // it happened at a moment of the run
};

constexpr wording wordings[] = {{outcome::passed, "réussi", "passed", false},
                                {outcome::failed, "échoué", "failed", true},
                                {outcome::crashed, "planté", "crashed", true},
                                {outcome::ended_early, "terminé trop tôt", "ended early", true},
                                {outcome::not_found, "introuvable", "not found", false},
                                {outcome::not_executable, "non exécutable", "not executable", false},
                                {outcome::silent, "muet", "silent", true},
                                {outcome::too_slow, "trop lent", "too slow", true},
                                {outcome::not_judged, "non jugé", "not judged", false}};

const wording& wording_of(const verdict& v) {
  return *std::find_if(std::begin(wordings), std::end(wordings) - 1,
                       [&](const wording& w) { return w.what == v.what; });
}

// What the number of an outcome means.
std::string detail_of(const verdict& v) {
  switch (v.what) {
    case outcome::crashed: {
      const char* const name = sigabbrev_np(v.number);
      return (name == nullptr ? phrase("signal {}", "signal {}", {std::to_string(v.number)})
                              : std::string("SIG") + name) +
             " (" + strsignal(v.number) + ")";
    }
    case outcome::ended_early:
      return phrase("code {}", "status {}", {std::to_string(v.number)});
    case outcome::not_executable:
      return v.number == 0 ? "" : std::strerror(v.number);
    case outcome::silent:
      return phrase("aucune sortie annoncée", "no outputs announced");
    case outcome::too_slow:
      return phrase("{} lots d'entrées sans réponse", "{} batches of inputs unanswered",
                    {std::to_string(v.unanswered)});
    default:
      return "";
  }
}

std::string padded(const std::string& text, std::size_t width, bool to_the_right = false) {
  const std::string blanks(width - std::min(width, characters_in(text)), ' ');
  return to_the_right ? blanks + text : text + blanks;
}

}  // namespace

std::string word_of(const verdict& v) {
  const wording& w = wording_of(v);
  return phrase(w.french, w.english);
}

std::string sentence_of(const verdict& v) {
  std::string text = word_of(v);
  if (wording_of(v).has_moment)
    text += phrase(" à {} s (cycle {})", " at {} s (cycle {})",
                   {with_decimals(seconds_of(v.cycle), 3), std::to_string(v.cycle)});
  for (const std::string& part : {detail_of(v), v.sentence})
    if (!part.empty()) text += phrase(" : {}", ": {}", {part});
  return harmless(text, 500);
}

std::string line_of(const verdict& v) {
  return harmless(v.candidate, 60) + phrase(" : ", ": ") + sentence_of(v);
}

std::string table_of(const std::vector<verdict>& all) {
  constexpr std::size_t columns = 6;
  using row = std::array<std::string, columns>;
  std::vector<row> rows{{phrase("contrôleur", "controller"), phrase("verdict", "verdict"), phrase("à", "at"),
                         phrase("maquette", "plant"), phrase("sans réponse", "unanswered"),
                         phrase("durée", "took")}};
  for (const verdict& v : all)
    rows.push_back({harmless(v.candidate, 30), word_of(v),
                    wording_of(v).has_moment ? with_decimals(seconds_of(v.cycle), 3) + " s" : "",
                    with_decimals(seconds_of(v.cycles), 3) + " s", std::to_string(v.unanswered),
                    with_decimals(v.wall_seconds, 2) + " s"});
  std::array<std::size_t, columns> widths{};
  for (const row& r : rows)
    for (std::size_t c = 0; c < columns; ++c) widths[c] = std::max(widths[c], characters_in(r[c]));
  std::string text;
  for (const row& r : rows) {
    for (std::size_t c = 0; c < columns; ++c) text += (c == 0 ? "" : "  ") + padded(r[c], widths[c], c >= 2);
    text += '\n';
  }
  const auto passed =
      std::count_if(all.begin(), all.end(), [](const verdict& v) { return v.what == outcome::passed; });
  return text +
         phrase("{} réussis sur {}", "{} passed of {}",
                {std::to_string(passed), std::to_string(all.size())}) +
         '\n';
}

int exit_status(const std::vector<verdict>& all) {
  const auto any = [&](bool (*is)(const verdict&)) { return std::any_of(all.begin(), all.end(), is); };
  if (all.empty() || any([](const verdict& v) { return v.what == outcome::not_judged; })) return 2;
  return any([](const verdict& v) { return v.what != outcome::passed; }) ? 1 : 0;
}
