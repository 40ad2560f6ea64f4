#include "outils/chronogramme/command_line.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <stdexcept>

#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

const char* usage() {
  return tr(R"(usage : chronogramme [--geometry LxH+X+Y] [PID | -automemlink N | FICHIER.vcd]
Montre les signaux d'une maquette en marche, ou d'un fichier VCD, en chronogramme.
  PID             la maquette de ce processus
  -automemlink N  la zone de ce numéro
  FICHIER.vcd     un enregistrement
Sans argument, la maquette lancée en dernier.
)");
}

[[noreturn]] void refuse(const std::string& why) {
  throw std::runtime_error(tr("{} ; voir \"chronogramme --help\"", {why}));
}

bool is_number(const std::string& text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

int number(const std::string& text) {
  int value = -1;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size() || value < 0)
    refuse(tr("ce n'est pas un numéro : {}", {text}));
  return value;
}

window_place place_of(const std::string& text) {
  window_place place;
  int size_end = 0, end = 0;
  const int fields = std::sscanf(text.c_str(), "%5dx%5d%n+%5d+%5d%n", &place.w, &place.h, &size_end, &place.x,
                                 &place.y, &end);
  place.has_position = fields == 4;
  if (fields < 2 || text.size() != static_cast<std::size_t>(place.has_position ? end : size_end))
    refuse(tr("la géométrie s'écrit LxH+X+Y, pas {}", {text}));
  return place;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  bool options = true, given = false;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const auto value = [&]() -> std::string {
      if (i + 1 == argc) refuse(tr("il manque la valeur de {}", {word}));
      return argv[++i];
    };
    const auto is = [&](const char* option) { return options && word == option; };
    const bool is_subject = !options || !word.starts_with("-") || word == "-automemlink";
    if (is_subject && given) refuse(tr("un argument de trop : {}", {word}));
    given = given || is_subject;
    if (is("--"))
      options = false;
    else if (is("--help"))
      answer_help(usage());
    else if (is("--version"))
      answer_version();
    else if (is("--geometry"))
      wanted.place = place_of(value());
    else if (is("-automemlink"))
      wanted.area = number(value());
    else if (!is_subject)
      refuse(tr("option inconnue : {}", {word}));
    else if (options && is_number(word))
      wanted.plant = number(word);
    else
      wanted.file = word;
  }
  return wanted;
}
