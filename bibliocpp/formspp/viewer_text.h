#pragma once
// The messages as a plain text file.

#include <ostream>
#include <span>
#include <string>

#include "bibliocpp/formspp/viewer_markup.h"

class OFD_afficheur_filtre_texte {
 public:
  // `count` lines from `first` on, none when it is null. They stay the caller's and must outlive this object.
  OFD_afficheur_filtre_texte(const std::string* first, int count);

  static int typeligne(const std::string& line) { return viewer_markup::typeligne(line); }

  // A text line as it is, "#" included; a line of any other type as 55 dashes. Then a newline and a flush.
  static void imprime_ligne(std::ostream& file, const std::string& line);

  // Every line in order.
  void imprime(std::ostream& file) const;

 private:
  std::span<const std::string> lines;
};
