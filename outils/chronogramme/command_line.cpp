#include "outils/chronogramme/command_line.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <stdexcept>

#include "bibliocpp/language.h"
#include "outils/answers/answers.h"

namespace {

constexpr const char *usage_french =
                         R"(usage : chronogramme [--geometry LxH+X+Y] [PID | -automemlink N | FICHIER.vcd]
Montre les signaux d'une maquette en marche, ou d'un fichier VCD, en chronogramme.
  PID             la maquette de ce processus
  -automemlink N  la zone de ce numéro
  FICHIER.vcd     un enregistrement
Sans argument, la maquette lancée en dernier.
)",
                     *usage_english =
                         R"(usage: chronogramme [--geometry WxH+X+Y] [PID | -automemlink N | FILE.vcd]
Shows the signals of a running plant, or of a VCD file, as a timing chart.
  PID             the plant of that process
  -automemlink N  the area of that number
  FILE.vcd        a recording
Without an argument, the plant that was started last.
)";

[[noreturn]] void refuse(const char* french, const char* english, const std::string& what) {
  throw std::runtime_error(in_language(french, english) + what +
                           in_language(" ; voir \"chronogramme --help\"", "; see \"chronogramme --help\""));
}

bool is_number(const std::string& text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

int number(const std::string& text) {
  int value = -1;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || rest != text.data() + text.size() || value < 0)
    refuse("ce n'est pas un numéro : ", "not a number: ", text);
  return value;
}

window_place place_of(const std::string& text) {
  window_place place;
  int size_end = 0, end = 0;
  const int fields = std::sscanf(text.c_str(), "%5dx%5d%n+%5d+%5d%n", &place.w, &place.h, &size_end, &place.x,
                                 &place.y, &end);
  place.has_position = fields == 4;
  if (fields < 2 || text.size() != static_cast<std::size_t>(place.has_position ? end : size_end))
    refuse("la géométrie s'écrit LxH+X+Y, pas ", "a geometry reads WxH+X+Y, not ", text);
  return place;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  command_line wanted;
  bool options = true, given = false;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const auto value = [&]() -> std::string {
      if (i + 1 == argc) refuse("il manque la valeur de ", "there is no value after ", word);
      return argv[++i];
    };
    const auto is = [&](const char* option) { return options && word == option; };
    const bool is_subject = !options || !word.starts_with("-") || word == "-automemlink";
    if (is_subject && given) refuse("un argument de trop : ", "one argument too many: ", word);
    given = given || is_subject;
    if (is("--"))
      options = false;
    else if (is("--help"))
      answer_help(in_language(usage_french, usage_english));
    else if (is("--version"))
      answer_version();
    else if (is("--geometry"))
      wanted.place = place_of(value());
    else if (is("-automemlink"))
      wanted.area = number(value());
    else if (!is_subject)
      refuse("option inconnue : ", "there is no option ", word);
    else if (options && is_number(word))
      wanted.plant = number(word);
    else
      wanted.file = word;
  }
  return wanted;
}
