#pragma once
// The page of messages as the viewer's list shows it.

#include <span>
#include <string>
#include <vector>

#include "bibliocpp/formspp/viewer_markup.h"

class OFD_afficheur_filtre_affichage {
 public:
  // `count` lines from `first` on, none when it is null. Looks at each once, to know where the pages begin.
  // They stay the caller's, outlive this object and keep their types.
  OFD_afficheur_filtre_affichage(const std::string* first, int count);

  static int typeligne(const std::string& line) { return viewer_markup::typeligne(line); }

  // The number of page breaks: one less than there are pages, 0 for no lines.
  int nb_pages() const { return static_cast<int>(starts.size()) - 1; }

  // One line as shown: a text line as browser codes for a fixed-pitch font and its cells, each padded to its
  // column; a rule as 122 dashes; #C and #P lines, which take effect, as an empty text.
  std::string visu_ligne(const std::string& line);

  // The lines of a page (from 0), each followed by a newline; empty when there is no such page. It takes
  // the same time wherever the page is. The columns at its top are those of the last #C or #P line that
  // was shown, on whichever page that was.
  std::string visu_page(int page);

 private:
  std::span<const std::string> lines;
  std::vector<int> starts;
  viewer_markup::column_table columns;
};
