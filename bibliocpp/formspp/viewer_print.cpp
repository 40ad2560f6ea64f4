#include "bibliocpp/formspp/viewer_print.h"

#include <FL/fl_utf8.h>

#include <initializer_list>
#include <string_view>

using namespace viewer_markup;

namespace {

constexpr int margin = 40;
constexpr int character_width = 5;
constexpr int line_pitch = 10;
constexpr int cell_indent = 5;

struct point {
  int x, y;
};

void put(std::ostream& file, std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) file << text << std::endl;
}

void pdf_rule(std::ostream& file, const char* indent, point from, point to) {
  file << indent << from.x << " " << from.y << " m" << std::endl;
  file << indent << to.x << " " << to.y << " l" << std::endl;
  put(file, {"       S"});
}

void pdf_cell(std::ostream& file, point at, const std::string& text) {
  put(file, {"   BT", "     /F1 7 Tf"});
  file << "     " << at.x << " " << at.y << " Td" << std::endl;
  file << "(" << text << ") Tj" << std::endl;
  put(file, {"   ET"});
}

void postscript_rule(std::ostream& file, const char*, point from, point to) {
  file << "newpath " << from.x << " " << from.y << " moveto " << to.x << " " << to.y << " lineto stroke "
       << std::endl;
}

void postscript_cell(std::ostream& file, point at, const std::string& text) {
  file << at.x << " " << at.y << " moveto (" << text << ") show" << std::endl;
}

void put_pdf_page(std::ostream& file, int page_object, int contents_object) {
  file << page_object << " 0 obj" << std::endl;
  put(file, {"  << /Type /Page", "     /Parent 3 0 R", "     /MediaBox [0 0 612 792]"});
  file << "     /Contents " << contents_object << " 0 R" << std::endl;
  put(file, {"     /Resources << /ProcSet 4 0 R", "                   /Font << /F1 5 0 R >>",
             "                >>", "  >>", "endobj", ""});
  file << contents_object << " 0 obj" << std::endl;
  put(file, {"  << /Length 73 >>", "stream"});
}

void put_postscript_font(std::ostream& file) {
  put(file, {"a4", "/Times-Roman findfont", "7 scalefont", "setfont"});
}

// The byte of Windows-1252 for a character. The toolkit knows the way back: it reads a lone byte from 128
// to 159, which is no UTF-8, in that encoding.
char single_byte(unsigned character) {
  if (character < 0x80 || (character >= 0xa0 && character <= 0xff)) return static_cast<char>(character);
  for (int code = 0x80; code <= 0x9f; ++code) {
    const char byte = static_cast<char>(code);
    int length = 0;
    if (fl_utf8decode(&byte, &byte + 1, &length) == character) return byte;
  }
  return '?';
}

std::string printable(std::string_view cell) {
  std::string text;
  for (const char* at = cell.begin(); at != cell.end();) {
    int length = 1;
    const unsigned character = fl_utf8decode(at, cell.end(), &length);
    if (length > 1)
      text += single_byte(character);
    else if (*at != '(' && *at != ')')
      text += *at;
    at += length;
  }
  return text;
}

// Calls write(line) for each line, and next_page(n) before the first line of page n, but for page 0.
template <typename Write, typename Next_page>
void walk_pages(std::span<const std::string> lines, Write write, Next_page next_page) {
  const std::vector<int> starts = page_starts(lines);
  std::size_t page = 1;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (page < starts.size() && static_cast<std::size_t>(starts[page]) == i)
      next_page(static_cast<int>(page++));
    write(lines[i]);
  }
}

}  // namespace

// What differs between the documents within a page.
struct OFD_afficheur_filtre_impression::page_format {
  int top;
  const char* rule_indent;
  void (*rule)(std::ostream& file, const char* indent, point from, point to);
  void (*cell)(std::ostream& file, point at, const std::string& text);

  int y(int slot) const { return top - line_pitch * slot; }
};

using document = OFD_afficheur_filtre_impression;
const document::page_format document::pdf_page{780, "    ", pdf_rule, pdf_cell};
// Deliberate: the rules at the end of the last page are indented by two more.
const document::page_format document::pdf_last_page{780, "      ", pdf_rule, pdf_cell};
const document::page_format document::postscript_page{800, "", postscript_rule, postscript_cell};

OFD_afficheur_filtre_impression::OFD_afficheur_filtre_impression(const std::string* first, int count)
    : lines(line_span(first, count)) {}

int OFD_afficheur_filtre_impression::left_of(int column) const {
  return margin + character_width * columns.left(column);
}

void OFD_afficheur_filtre_impression::restart_page() {
  current_line = 1;
  block_start = 1;
}

void OFD_afficheur_filtre_impression::write_line(std::ostream& file, const std::string& line,
                                                 const page_format& format) {
  switch (typeligne(line)) {
    case new_layout:
      current_line = 0;  // deliberate: its first line lies one slot above that of other pages
      columns.define(line);
      break;
    case new_block:
      write_block_rules(file, format);
      block_start = current_line;
      columns.define(line);
      break;
    case horizontal_rule: {
      const int y = format.y(current_line++);
      format.rule(file, format.rule_indent, {margin, y}, {left_of(max_columns), y});
      break;
    }
    default:
      write_text(file, line, format);
      ++current_line;
  }
}

void OFD_afficheur_filtre_impression::write_text(std::ostream& file, const std::string& line,
                                                 const page_format& format) const {
  int c = 0;
  for (const std::string_view cell : cells(line, columns)) {
    const std::string text = printable(cell);
    const int x = left_of(c++) + cell_indent;
    if (text != " ") format.cell(file, {x, format.y(current_line)}, text);
  }
}

void OFD_afficheur_filtre_impression::write_block_rules(std::ostream& file, const page_format& format) const {
  for (int c = 0; c < max_columns; ++c) {
    if (!columns.has_rule(c)) continue;
    const int x = left_of(c);
    format.rule(file, format.rule_indent, {x, format.y(current_line - 1)}, {x, format.y(block_start - 1)});
  }
}

void OFD_afficheur_filtre_impression::imprime_pdf(std::ostream& file) {
  begin_pdf(file);
  walk_pages(
      lines, [&](const std::string& line) { pdf(file, line); }, [&](int page) { next_page_pdf(file, page); });
  end_pdf(file);
}

void OFD_afficheur_filtre_impression::begin_pdf(std::ostream& file) {
  next_page_object = 0;
  restart_page();
  put(file, {"%PDF-1.4"});
  put(file,
      {"1 0 obj", "  << /Type /Catalog", "     /Outlines 2 0 R", "     /Pages 3 0 R", "  >>", "endobj", ""});
  put(file, {"2 0 obj", "  << /Type /Outlines", "     /Count 0", "  >>", "endobj", ""});
  put(file, {"3 0 obj", "  << /Type /Pages", "     /Kids ["});
  const std::size_t pages = page_starts(lines).size();
  for (std::size_t k = 0; k < pages; ++k)
    file << (k == 0 ? "" : "         ") << 10 + 2 * k << " 0 R" << std::endl;
  put(file, {"         ]"});
  file << "     /Count " << pages << std::endl;
  put(file, {"  >>", "endobj", ""});
  put(file, {"4 0 obj", "   [/PDF /Text]", "endobj", ""});
  put(file, {"5 0 obj", "  << /Type /Font", "     /Subtype /Type1", "     /Name /F1",
             "     /BaseFont /Times-Roman", "     /Encoding /WinAnsiEncoding", "  >>", "endobj", ""});
  put_pdf_page(file, 10, 11);
}

void OFD_afficheur_filtre_impression::pdf(std::ostream& file, const std::string& line) {
  write_line(file, line, pdf_page);
}

void OFD_afficheur_filtre_impression::next_page_pdf(std::ostream& file, int) {
  write_block_rules(file, pdf_page);
  put(file, {"endstream", "endobj", ""});
  const int page_object = 12 + 2 * next_page_object++;
  put_pdf_page(file, page_object, page_object + 1);
  restart_page();
}

void OFD_afficheur_filtre_impression::end_pdf(std::ostream& file) {
  write_block_rules(file, pdf_last_page);
  put(file, {"endstream", "endobj", ""});
  put(file,
      {"xref", "0 8", "0000000000 65535 f", "0000000009 00000 n", "0000000074 00000 n", "0000000120 00000 n",
       "0000000179 00000 n", "0000000364 00000 n", "0000000466 00000 n", "0000000496 00000 n", ""});
  put(file, {"trailer", "  << /Size 8", "     /Root 1 0 R", "  >>", "startxref", "625", "%%EOF"});
}

void OFD_afficheur_filtre_impression::imprime_postscript(std::ostream& file) {
  begin_postscript(file);
  walk_pages(
      lines, [&](const std::string& line) { postscript(file, line); },
      [&](int page) { next_page_postscript(file, page); });
  end_postscript(file);
}

void OFD_afficheur_filtre_impression::begin_postscript(std::ostream& file) {
  put(file, {"%!PS-Adobe-2.0", "%%Creator: pagewise", "%%Title: tmp.ps", "%%Pages: 1", "%%PageOrder: Ascend",
             "%%BoundingBox: 0 0 612 792", "%%DocumentPaperSizes: a4", "%%EndComments"});
  put_postscript_font(file);
  restart_page();
}

void OFD_afficheur_filtre_impression::postscript(std::ostream& file, const std::string& line) {
  write_line(file, line, postscript_page);
}

void OFD_afficheur_filtre_impression::next_page_postscript(std::ostream& file, int page) {
  write_block_rules(file, postscript_page);
  put(file, {"showpage"});
  file << "%%page : " << page << " " << page << std::endl;
  put_postscript_font(file);
  restart_page();
}

void OFD_afficheur_filtre_impression::end_postscript(std::ostream& file) {
  write_block_rules(file, postscript_page);
  put(file, {"showpage"});
}
