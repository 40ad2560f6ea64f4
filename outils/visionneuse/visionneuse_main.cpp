// visionneuse FILE: shows a file of marked-up messages page by page, or exports it without a window.

#include <FL/fl_ask.H>

#include <cstdlib>
#include <iostream>
#include <new>

#include "bibliocpp/formspp.h"
#include "bibliocpp/language.h"
#include "outils/visionneuse/command_line.h"
#include "outils/visionneuse/failure.h"
#include "outils/visionneuse/files.h"

namespace {

void show(const command_line& wanted, message_lines& lines) {
  const int count = static_cast<int>(lines.size());
  lines.emplace_back();  // an empty file shows an empty page: the viewer opens for any array but null
  fl_close = wanted.language == 0 ? "Fermer" : "Close";  // of its messages
  OFD_afficheur viewer(nullptr, wanted.language);
  viewer.activation(lines.data(), count, wanted.title, wanted.pdf_viewer);
}

void run(const command_line& wanted) {
  message_lines lines = read_lines(wanted.file);
  if (wanted.exports.empty()) return show(wanted, lines);
  for (const auto& [format, path] : wanted.exports)
    write_whole_file(path, [&, write = format->write](std::ostream& file) { write(lines, file); });
}

}  // namespace

int main(int argc, char** argv) {
  const char* const for_lack_of_memory = tr("il n'y a pas assez de mémoire pour cela");
  try {
    run(read_command_line(argc, argv));
    return EXIT_SUCCESS;
  } catch (const failure& why) {
    std::cerr << "visionneuse: " << why.what() << std::endl;
    return why.status;
  } catch (const std::bad_alloc&) {
    std::cerr << "visionneuse: " << for_lack_of_memory << std::endl;
    return no_memory;
  }
}
