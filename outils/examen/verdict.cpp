#include "outils/examen/verdict.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "bibliocpp/language.h"
#include "outils/examen/harmless.h"
#include "outils/examen/number_text.h"
#include "outils/examen/scenario.h"

namespace {

struct wording {
  outcome what;
  const char* word;
  bool has_moment;  // it happened at a moment of the run
};

wording wording_of(const verdict& v) {
  const wording wordings[] = {{outcome::passed, tr("réussi"), false},
                              {outcome::failed, tr("échoué"), true},
                              {outcome::crashed, tr("planté"), true},
                              {outcome::ended_early, tr("terminé trop tôt"), true},
                              {outcome::not_found, tr("introuvable"), false},
                              {outcome::not_executable, tr("non exécutable"), false},
                              {outcome::silent, tr("muet"), true},
                              {outcome::too_slow, tr("trop lent"), true},
                              {outcome::not_judged, tr("non jugé"), false}};

  return *std::find_if(std::begin(wordings), std::end(wordings) - 1,
                       [&](const wording& w) { return w.what == v.what; });
}

// What the number of an outcome means.
std::string detail_of(const verdict& v) {
  switch (v.what) {
    case outcome::crashed: {
      const char* const name = sigabbrev_np(v.number);
      return (name == nullptr ? tr("signal {}", {std::to_string(v.number)}) : std::string("SIG") + name) +
             " (" + strsignal(v.number) + ")";
    }
    case outcome::ended_early:
      return tr("code {}", {std::to_string(v.number)});
    case outcome::not_executable:
      return v.number == 0 ? "" : std::strerror(v.number);
    case outcome::silent:
      return tr("aucune sortie annoncée");
    case outcome::too_slow:
      return tr("{} lots d'entrées sans réponse", {std::to_string(v.unanswered)});
    default:
      return "";
  }
}

std::string padded(const std::string& text, std::size_t width, bool to_the_right = false) {
  const std::string blanks(width - std::min(width, characters_in(text)), ' ');
  return to_the_right ? blanks + text : text + blanks;
}

}  // namespace

std::string word_of(const verdict& v) { return wording_of(v).word; }

std::string sentence_of(const verdict& v) {
  std::string text = word_of(v);
  if (wording_of(v).has_moment)
    text = tr("{} à {} s (cycle {})", {text, with_decimals(seconds_of(v.cycle), 3), std::to_string(v.cycle)});
  for (const std::string& part : {detail_of(v), v.sentence})
    if (!part.empty()) text = tr("{} : {}", {text, part});
  return harmless(text, 500);
}

std::string line_of(const verdict& v) { return tr("{} : {}", {harmless(v.candidate, 60), sentence_of(v)}); }

std::string table_of(const std::vector<verdict>& all) {
  constexpr std::size_t columns = 6;
  using row = std::array<std::string, columns>;
  std::vector<row> rows{
      {tr("contrôleur"), tr("verdict"), tr("à"), tr("maquette"), tr("sans réponse"), tr("durée")}};
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
  return text + tr("réussis : {} sur {}", {std::to_string(passed), std::to_string(all.size())}) + '\n';
}

int exit_status(const std::vector<verdict>& all) {
  const auto any = [&](bool (*is)(const verdict&)) { return std::any_of(all.begin(), all.end(), is); };
  if (all.empty() || any([](const verdict& v) { return v.what == outcome::not_judged; })) return 2;
  return any([](const verdict& v) { return v.what != outcome::passed; }) ? 1 : 0;
}
