// visionneuse FILE: shows a file of marked-up messages page by page, or exports it without a window.

#include <cstdlib>
#include <iostream>

#include "bibliocpp/formspp.h"
#include "outils/visionneuse/command_line.h"
#include "outils/visionneuse/failure.h"
#include "outils/visionneuse/files.h"

namespace {

using message_lines = std::vector<std::string>;

void write_exports(const command_line& wanted, const message_lines& lines) {
  const int count = static_cast<int>(lines.size());
  // A filter each: a document begins with the columns that its filter's last one ended with.
  if (!wanted.pdf.empty())
    write_whole_file(wanted.pdf, [&](std::ostream& file) {
      OFD_afficheur_filtre_impression(lines.data(), count).imprime_pdf(file);
    });
  if (!wanted.postscript.empty())
    write_whole_file(wanted.postscript, [&](std::ostream& file) {
      OFD_afficheur_filtre_impression(lines.data(), count).imprime_postscript(file);
    });
  if (!wanted.text.empty())
    write_whole_file(wanted.text, [&](std::ostream& file) {
      OFD_afficheur_filtre_texte(lines.data(), count).imprime(file);
    });
}

void show(const command_line& wanted, message_lines& lines) {
  const int count = static_cast<int>(lines.size());
  lines.emplace_back();  // an empty file shows an empty page: the viewer opens for any array but null
  OFD_afficheur viewer(nullptr, wanted.language);
  viewer.activation(lines.data(), count, wanted.title, wanted.pdf_viewer);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const command_line wanted = read_command_line(argc, argv);
    if (wanted.help) {
      std::cout << usage;
      return EXIT_SUCCESS;
    }
    message_lines lines = read_lines(wanted.file);
    if (wanted.exports())
      write_exports(wanted, lines);
    else
      show(wanted, lines);
    return EXIT_SUCCESS;
  } catch (const failure& why) {
    std::cerr << "visionneuse: " << why.what() << std::endl;
    return why.status;
  }
}
