#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "bibliocpp/formspp.h"

using namespace viewer_markup;
using std::string;
using texts = std::vector<string>;

namespace {

template <typename Filter>
Filter filter(const texts& lines) {
  return Filter(lines.data(), static_cast<int>(lines.size()));
}

string pdf_of(const texts& lines) {
  std::ostringstream file;
  filter<OFD_afficheur_filtre_impression>(lines).imprime_pdf(file);
  return file.str();
}

string postscript_of(const texts& lines) {
  std::ostringstream file;
  filter<OFD_afficheur_filtre_impression>(lines).imprime_postscript(file);
  return file.str();
}

// In columns of 3, 4 and 2 characters.
string cells_of(const string& line) {
  column_table columns;
  columns.define("#P 3 4 2 ");
  string found;
  for (const auto cell : cells(line, columns)) found.append("[").append(cell).append("]");
  return found;
}

// 155 counted lines: two rules, a header and 151 rows of which one has moved to new columns after row 100,
// and a rule, which is alone on the third page.
texts long_table() {
  texts lines{"#P T20 30 T10 ", "#T", "name (unit)# value# note", "#T"};
  for (int row = 1; row <= 151; ++row) {
    lines.push_back("row " + std::to_string(row) + "# (" + std::to_string(row) + ")#  ");
    if (row == 100) lines.emplace_back("#C 40 T15 ");
  }
  lines.emplace_back("#T");
  return lines;
}

// The same table as it has to be drawn. Positions are those of a page whose line 0 is at y = 800.
template <typename Document>
string drawn_long_table() {
  Document to;
  to.begin();
  to.rule(40, 800, 340, 800);  // after #P the first line is one slot higher than on other pages
  to.cell(45, 790, "name unit").cell(145, 790, "value").cell(295, 790, "note");
  to.rule(40, 780, 340, 780);
  const auto row = [&to](int n, int x_of_value, int y) {
    to.cell(45, y, "row " + std::to_string(n)).cell(x_of_value, y, std::to_string(n));
  };
  for (int n = 1; n <= 74; ++n) row(n, 145, 780 - 10 * n);
  to.rule(40, 40, 40, 800).rule(290, 40, 290, 800);
  to.new_page(1);
  for (int n = 75; n <= 100; ++n) row(n, 145, 790 - 10 * (n - 75));
  to.rule(40, 540, 40, 800).rule(290, 540, 290, 800);  // closed by the new columns
  for (int n = 101; n <= 151; ++n) {
    row(n, 245, 790 - 10 * (n - 75));
    to.cell(320, 790 - 10 * (n - 75), "");  // there is no third column any more
  }
  to.rule(240, 30, 240, 540);
  to.new_page(2);
  to.rule(40, 790, 315, 790);
  to.last_page = true;
  to.rule(240, 790, 240, 800);
  to.end();
  return to.out.str();
}

struct drawn_postscript {
  std::ostringstream out;
  bool last_page = false;
  void begin() {
    out << "%!PS-Adobe-2.0\n%%Creator: pagewise\n%%Title: tmp.ps\n%%Pages: 1\n%%PageOrder: Ascend\n"
           "%%BoundingBox: 0 0 612 792\n%%DocumentPaperSizes: a4\n%%EndComments\n";
    font();
  }
  void font() { out << "a4\n/Times-Roman findfont\n7 scalefont\nsetfont\n"; }
  drawn_postscript& rule(int x1, int y1, int x2, int y2) {
    out << "newpath " << x1 << " " << y1 << " moveto " << x2 << " " << y2 << " lineto stroke \n";
    return *this;
  }
  drawn_postscript& cell(int x, int y, const string& text) {
    out << x << " " << y << " moveto (" << text << ") show\n";
    return *this;
  }
  void new_page(int n) {
    out << "showpage\n%%page : " << n << " " << n << "\n";
    font();
  }
  void end() { out << "showpage\n"; }
};

string pdf_begin(const string& kids, int pages) {
  return "%PDF-1.4\n"
         "1 0 obj\n  << /Type /Catalog\n     /Outlines 2 0 R\n     /Pages 3 0 R\n  >>\nendobj\n\n"
         "2 0 obj\n  << /Type /Outlines\n     /Count 0\n  >>\nendobj\n\n"
         "3 0 obj\n  << /Type /Pages\n     /Kids [\n" +
         kids + "         ]\n     /Count " + std::to_string(pages) +
         "\n  >>\nendobj\n\n"
         "4 0 obj\n   [/PDF /Text]\nendobj\n\n"
         "5 0 obj\n  << /Type /Font\n     /Subtype /Type1\n     /Name /F1\n     /BaseFont /Times-Roman\n"
         "     /Encoding /WinAnsiEncoding\n  >>\nendobj\n\n";
}

string pdf_page(const string& object, const string& contents) {
  return object +
         " 0 obj\n  << /Type /Page\n     /Parent 3 0 R\n     /MediaBox [0 0 612 792]\n     /Contents " +
         contents +
         " 0 R\n     /Resources << /ProcSet 4 0 R\n                   /Font << /F1 5 0 R >>\n"
         "                >>\n  >>\nendobj\n\n" +
         contents + " 0 obj\n  << /Length 73 >>\nstream\n";
}

const string pdf_end =
    "endstream\nendobj\n\nxref\n0 8\n0000000000 65535 f\n0000000009 00000 n\n0000000074 00000 n\n"
    "0000000120 00000 n\n0000000179 00000 n\n0000000364 00000 n\n0000000466 00000 n\n"
    "0000000496 00000 n\n\ntrailer\n  << /Size 8\n     /Root 1 0 R\n  >>\nstartxref\n625\n%%EOF\n";

struct drawn_pdf {
  std::ostringstream out;
  bool last_page = false;
  void begin() { out << pdf_begin("10 0 R\n         12 0 R\n         14 0 R\n", 3) << pdf_page("10", "11"); }
  drawn_pdf& rule(int x1, int y1, int x2, int y2) {
    const char* const indent = last_page ? "      " : "    ";
    out << indent << x1 << " " << y1 - 20 << " m\n" << indent << x2 << " " << y2 - 20 << " l\n       S\n";
    return *this;
  }
  drawn_pdf& cell(int x, int y, const string& text) {
    out << "   BT\n     /F1 7 Tf\n     " << x << " " << y - 20 << " Td\n(" << text << ") Tj\n   ET\n";
    return *this;
  }
  void new_page(int n) {
    out << "endstream\nendobj\n\n" << (n == 1 ? pdf_page("12", "13") : pdf_page("14", "15"));
  }
  void end() { out << pdf_end; }
};

}  // namespace

TEST(viewer_markup, tells_the_type_of_a_line) {
  std::vector<int> types;
  for (const char* const line : {"#C", "#P T20 ", "#T", "", "#", "C", "#c", " #C", "##C"})
    types.push_back(typeligne(line));
  EXPECT_EQ(types, (std::vector{1, 2, 3, 0, 0, 0, 0, 0, 0}));
}

TEST(viewer_markup, reads_columns_as_far_as_a_blank_confirms_them) {
  column_table columns;
  columns.define("#P T20 30  T1x0 99999999999999999999 7");
  const std::vector<std::pair<int, bool>> expected{
      {20, true}, {30, false}, {10, true}, {100'000, false}, {0, false}};
  for (int c = 0; c < 5; ++c)
    EXPECT_EQ(std::pair(columns.width(c), columns.has_rule(c)), expected[static_cast<std::size_t>(c)]) << c;
  EXPECT_EQ(columns.left(3), 60);
  columns.define("#C 1 2 3 4 5 6 7 8 9 10 11 12 13 14 T15 T16 T17 ");
  EXPECT_EQ(columns.left(15), 120) << "forgets the columns before, drops a sixteenth";
  EXPECT_TRUE(columns.has_rule(14));
}

TEST(viewer_markup, cuts_cells_by_characters) {
  EXPECT_EQ(cells_of(""), "[]");
  EXPECT_EQ(cells_of("abcdef"), "[abc]");
  EXPECT_EQ(cells_of("ab# cd#xef"), "[ab][cd][ef]");
  EXPECT_EQ(cells_of("a##b#"), "[a][b][]");
  EXPECT_EQ(cells_of("#é12345# z# too many"), "[][1234][z][]");
  EXPECT_EQ(cells_of("été# Œuvre# (b)"), "[été][Œuvr][(b]");
  EXPECT_EQ(cells_of("\xe9t\xe9s# \xff"), "[\xe9t\xe9][\xff]");
}

TEST(viewer_markup, breaks_pages_before_what_follows_the_77th_counted_line) {
  const auto pages = [](int counted, const texts& then = {}) {
    texts lines{"#P 5 "};
    for (int n = 0; n < counted; ++n) lines.emplace_back(n % 2 == 0 ? "a" : "#T");
    lines.insert(lines.end(), then.begin(), then.end());
    return filter<OFD_afficheur_filtre_affichage>(lines).nb_pages() + 1;
  };
  EXPECT_EQ(OFD_afficheur_filtre_affichage(nullptr, 0).nb_pages(), 0);
  EXPECT_EQ(pages(77), 1);
  EXPECT_EQ(pages(78), 2);
  EXPECT_EQ(pages(77, {"#C 4 "}), 2);
  EXPECT_EQ(pages(154), 2);
  EXPECT_EQ(pages(155), 3);
}

TEST(viewer_display, aligns_cells_and_keeps_the_columns_that_were_shown_last) {
  texts lines{"#P 4 T6 ", "#T", "été# (b)# lost"};
  lines.resize(78, "x");
  lines.insert(lines.end(), {"y", "#C 2 ", "12345"});
  auto display = filter<OFD_afficheur_filtre_affichage>(lines);
  EXPECT_EQ(display.visu_page(1), "@f@S12 \n\n@f@S12 12\n") << "no columns have been shown yet";
  EXPECT_TRUE(
      display.visu_page(0).starts_with("\n" + string(122, '-') + "\n@f@S12 été (b)   \n@f@S12 x   \n"));
  EXPECT_EQ(display.visu_page(1), "@f@S12 y   \n\n@f@S12 12\n");
  EXPECT_EQ(display.visu_page(-1) + display.visu_page(2), "");
}

TEST(viewer_print, writes_a_long_table_exactly) {
  EXPECT_EQ(postscript_of(long_table()), drawn_long_table<drawn_postscript>());
  EXPECT_EQ(pdf_of(long_table()), drawn_long_table<drawn_pdf>());
}

TEST(viewer_print, writes_a_document_without_lines) {
  EXPECT_EQ(pdf_of({}), pdf_begin("10 0 R\n", 1) + pdf_page("10", "11") + pdf_end);
  drawn_postscript empty;
  empty.begin();
  empty.end();
  EXPECT_EQ(postscript_of({}), empty.out.str());
}

TEST(viewer_print, moves_up_at_a_new_layout_without_closing_the_block) {
  drawn_postscript to;
  to.begin();
  to.cell(45, 790, "");  // without columns nothing of a text is left
  to.cell(45, 800, "a").rule(40, 800, 40, 800);
  to.end();
  EXPECT_EQ(postscript_of({"lost", "#P T2 ", "(abc)"}), to.out.str());
}

TEST(viewer_print, writes_each_character_as_the_byte_that_the_pdf_declares) {
  const string shown = pdf_of({"#P 9 ", "é(œ)€→", "\xe9\x80\\"});
  EXPECT_NE(shown.find("\n(\xe9\x9c\x80?) Tj\n"), string::npos);
  EXPECT_NE(shown.find("\n(\xe9\x80\\) Tj\n"), string::npos) << "what is no UTF-8 stays as it is";
}

TEST(viewer_print, hands_its_columns_on_to_its_next_document) {
  const texts lines{"abc", "#P 2 "};
  auto print = filter<OFD_afficheur_filtre_impression>(lines);
  std::ostringstream first, second;
  print.imprime_pdf(first);
  print.imprime_postscript(second);
  EXPECT_NE(first.str().find("\n() Tj\n"), string::npos);
  EXPECT_NE(second.str().find("\n45 790 moveto (ab) show\n"), string::npos);
}

TEST(viewer_text, writes_text_as_it_is_and_anything_else_as_a_rule) {
  std::ostringstream file;
  filter<OFD_afficheur_filtre_texte>({"#P T20 ", "a# (b)", "", "#T", "#C"}).imprime(file);
  const string rule(55, '-');
  EXPECT_EQ(file.str(), rule + "\na# (b)\n\n" + rule + "\n" + rule + "\n");
}

// A reader that looks while a long document is written sees whole lines.
TEST(viewer_filters, flush_after_every_line) {
  struct counting_buffer : std::stringbuf {
    int flushes = 0;
    int sync() override {
      EXPECT_TRUE(str().ends_with('\n'));
      return ++flushes, 0;
    }
  };
  const texts lines = long_table();
  for (const int format : {0, 1, 2}) {
    counting_buffer buffer;
    std::ostream file(&buffer);
    auto print = filter<OFD_afficheur_filtre_impression>(lines);
    if (format == 0) print.imprime_pdf(file);
    if (format == 1) print.imprime_postscript(file);
    if (format == 2) filter<OFD_afficheur_filtre_texte>(lines).imprime(file);
    const string written = buffer.str();
    EXPECT_EQ(buffer.flushes, std::count(written.begin(), written.end(), '\n'));
  }
}
