#include "bibliocpp/formspp/viewer_text.h"

OFD_afficheur_filtre_texte::OFD_afficheur_filtre_texte(const std::string* first, int count)
    : lines(viewer_markup::line_span(first, count)) {}

void OFD_afficheur_filtre_texte::imprime_ligne(std::ostream& file, const std::string& line) {
  static const std::string dashes(55, '-');
  file << (typeligne(line) == viewer_markup::text_line ? line : dashes) << std::endl;
}

void OFD_afficheur_filtre_texte::imprime(std::ostream& file) const {
  for (const std::string& line : lines) imprime_ligne(file, line);
}
