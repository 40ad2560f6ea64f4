#include "outils/surveillant/messages.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>

#include "bibliocpp/language.h"

namespace {

// At once, so that it does not mix with lines that others write to the same stream.
void line(const std::string& sentence) { std::cerr << "surveillant: " + sentence + "\n"; }

std::string in(const char* french, const char* english) { return in_language(french, english); }

struct signal_meaning {
  int number;
  const char *french, *english;
};

constexpr std::array<signal_meaning, 14> meanings{{
    {SIGABRT, "abandon : le programme a constaté une erreur", "abort: the program has noticed an error"},
    {SIGALRM, "fin d'un délai", "a timer has run out"},
    {SIGBUS, "accès à une mémoire inexistante", "access to memory that does not exist"},
    {SIGFPE, "opération arithmétique impossible, par exemple une division par zéro",
     "impossible arithmetic, a division by zero for instance"},
    {SIGHUP, "terminal fermé", "its terminal has closed"},
    {SIGILL, "instruction inconnue du processeur", "an instruction the processor does not know"},
    {SIGINT, "interruption au clavier", "interrupted from the keyboard"},
    {SIGKILL, "arrêt forcé", "by force"},
    {SIGPIPE, "écriture que plus personne ne lit", "writing what nobody reads any more"},
    {SIGQUIT, "abandon au clavier", "quit from the keyboard"},
    {SIGSEGV, "accès mémoire interdit", "forbidden access to memory"},
    {SIGTERM, "demande de fin", "asked to end"},
    {SIGTRAP, "point d'arrêt", "a breakpoint"},
    {SIGXCPU, "temps de calcul épuisé", "processor time used up"},
}};

std::string meaning(int signal) {
  for (const signal_meaning& known : meanings)
    if (known.number == signal) return in(known.french, known.english);
  return strsignal(signal);
}

std::string name(int signal) {
  const char* const short_name = sigabbrev_np(signal);
  return short_name == nullptr ? std::to_string(signal) : std::string("SIG") + short_name;
}

std::string why_not_started(int error, bool there) {
  if (error == ENOENT && there)
    return in("l'interpréteur que nomme sa première ligne est introuvable",
              "the interpreter that its first line names is not found");
  return std::strerror(error);
}

}  // namespace

namespace tell {

void area_unusable(const std::string& reason) {
  line(in("zone inutilisable : ", "the area cannot be used: ") + reason);
}

int not_started(const std::string& program, int error) {
  const bool there = program.find('/') != std::string::npos && access(program.c_str(), F_OK) == 0;
  if (error == ENOENT && !there) {
    line(in("contrôleur introuvable : ", "controller not found: ") + program);
    return 127;
  }
  if (error == EACCES)
    line(in("contrôleur non exécutable : ", "controller not executable: ") + program);
  else
    line(in("le contrôleur ne démarre pas : ", "the controller does not start: ") + program + ": " +
         why_not_started(error, there));
  return 126;
}

void ended(int status) {
  line(in("le contrôleur s'est terminé avec le code ", "the controller has ended with status ") +
       std::to_string(status));
}

void killed(int signal) {
  line(in("le contrôleur a été tué par ", "the controller was killed by ") + name(signal) + " (" +
       meaning(signal) + ")");
}

void not_attached(int ident) {
  line(in("depuis 2 s, le contrôleur ne s'est pas attaché à la zone ",
          "for 2 s the controller has not attached to area ") +
       std::to_string(ident));
}

void no_outputs() {
  line(in("le contrôleur est attaché, mais n'annonce aucune sortie depuis 2 s",
          "the controller is attached, but has announced no outputs for 2 s"));
}

void late(long long batches, std::chrono::milliseconds longest) {
  line(in("lots d'entrées sans réponse pendant plus de 100 ms : ",
          "batches of inputs unanswered for more than 100 ms: ") +
       std::to_string(batches) + in(", au plus long ", ", the longest ") + std::to_string(longest.count()) +
       " ms");
}

void outputs_dropped() {
  line(in("toutes les sorties sont retombées à zéro", "all outputs have been dropped"));
}

void plant_over() { line(in("la maquette a terminé", "the plant has ended")); }

void plant_killed(int ident) {
  line(in("la maquette a disparu sans terminer l'échange ; zone supprimée : ",
          "the plant is gone without ending the exchange; area removed: ") +
       std::to_string(ident));
}

}  // namespace tell
