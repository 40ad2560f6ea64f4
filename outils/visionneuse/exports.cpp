#include "outils/visionneuse/exports.h"

#include "bibliocpp/formspp.h"

namespace {

// A filter each: a document begins with the columns that its filter's last one ended with.
template <typename Filter, auto print>
void write_with(const message_lines& lines, std::ostream& file) {
  Filter filter(lines.data(), static_cast<int>(lines.size()));
  (filter.*print)(file);
}

using print_filter = OFD_afficheur_filtre_impression;
using text_filter = OFD_afficheur_filtre_texte;

constexpr export_format rows[] = {{"pdf", write_with<print_filter, &print_filter::imprime_pdf>},
                                  {"ps", write_with<print_filter, &print_filter::imprime_postscript>},
                                  {"texte", write_with<text_filter, &text_filter::imprime>}};

}  // namespace

const std::span<const export_format> export_formats = rows;
