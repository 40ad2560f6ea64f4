#include "outils/surveillant/messages.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <utility>

#include "bibliocpp/language.h"

namespace {

// At once, so that it does not mix with lines that others write to the same stream.
void line(const std::string& sentence) { std::cerr << "surveillant: " + sentence + "\n"; }

const char* meaning(int signal) {
  const std::pair<int, const char*> meanings[] = {
      {SIGABRT, tr("abandon : le programme a constaté une erreur")},
      {SIGALRM, tr("fin d'un délai")},
      {SIGBUS, tr("accès à une mémoire inexistante")},
      {SIGFPE, tr("opération arithmétique impossible, par exemple une division par zéro")},
      {SIGHUP, tr("terminal fermé")},
      {SIGILL, tr("instruction inconnue du processeur")},
      {SIGINT, tr("interruption au clavier")},
      {SIGKILL, tr("arrêt forcé")},
      {SIGPIPE, tr("écriture que plus personne ne lit")},
      {SIGQUIT, tr("abandon au clavier")},
      {SIGSEGV, tr("accès mémoire interdit")},
      {SIGTERM, tr("demande de fin")},
      {SIGTRAP, tr("point d'arrêt")},
      {SIGXCPU, tr("temps de calcul épuisé")},
  };
  for (const auto& [known, what] : meanings)
    if (known == signal) return what;
  return strsignal(signal);
}

std::string name(int signal) {
  const char* const short_name = sigabbrev_np(signal);
  return short_name == nullptr ? std::to_string(signal) : std::string("SIG") + short_name;
}

std::string why_not_started(int error, bool there) {
  if (error == ENOENT && there) return tr("l'interpréteur que nomme sa première ligne est introuvable");
  return std::strerror(error);
}

}  // namespace

namespace tell {

void area_unusable(const std::string& reason) { line(tr("zone inutilisable : {}", {reason})); }

int not_started(const std::string& program, int error) {
  const bool there = program.find('/') != std::string::npos && access(program.c_str(), F_OK) == 0;
  if (error == ENOENT && !there) {
    line(tr("contrôleur introuvable : {}", {program}));
    return 127;
  }
  if (error == EACCES)
    line(tr("contrôleur non exécutable : {}", {program}));
  else
    line(tr("le contrôleur ne démarre pas : {}: {}", {program, why_not_started(error, there)}));
  return 126;
}

void ended(int status) { line(tr("le contrôleur s'est terminé avec le code {}", {std::to_string(status)})); }

void killed(int signal) { line(tr("le contrôleur a été tué par {} ({})", {name(signal), meaning(signal)})); }

void not_attached(int ident) {
  line(tr("depuis 2 s, le contrôleur ne s'est pas attaché à la zone {}", {std::to_string(ident)}));
}

void no_outputs() { line(tr("le contrôleur est attaché, mais n'annonce aucune sortie depuis 2 s")); }

void late(long long batches, std::chrono::milliseconds longest) {
  line(tr("lots d'entrées sans réponse pendant plus de 100 ms : {}, au plus long {} ms",
          {std::to_string(batches), std::to_string(longest.count())}));
}

void outputs_dropped() { line(tr("toutes les sorties sont retombées à zéro")); }

void plant_over() { line(tr("la maquette s'est terminée")); }

void plant_killed(int ident) {
  line(tr("la maquette a disparu sans terminer l'échange ; zone supprimée : {}", {std::to_string(ident)}));
}

}  // namespace tell
