#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>
#include <vector>

#include "bibliocpp/formspp.h"

using namespace viewer_markup;
using std::string, std::to_string;
using texts = std::vector<string>;

namespace {

template <typename Filter>
Filter filter(const texts& lines) {
  return Filter(lines.data(), static_cast<int>(lines.size()));
}

template <typename Write>
string written(Write write) {
  std::ostringstream file;
  write(file);
  return file.str();
}

string pdf_of(const texts& lines) {
  return written([&](auto& file) { filter<OFD_afficheur_filtre_impression>(lines).imprime_pdf(file); });
}

// In columns of 3, 4 and 2 characters.
string cells_of(const string& line) {
  column_table columns;
  columns.define("#P 3 4 2 ");
  string found;
  for (const auto cell : cells(line, columns)) found.append("[").append(cell).append("]");
  return found;
}

int pages(int counted, const texts& then = {}) {
  texts lines{"#P 5 "};
  for (int n = 0; n < counted; ++n) lines.emplace_back(n % 2 == 0 ? "a" : "#T");
  lines.insert(lines.end(), then.begin(), then.end());
  return filter<OFD_afficheur_filtre_affichage>(lines).nb_pages() + 1;
}

// 155 counted lines: a header between two rules, 151 rows, with new columns after row 100, and a rule that is
// alone on the third page.
texts long_table() {
  texts lines{"#P T20 30 T10 ", "#T", "name (unit)# value# note", "#T"};
  for (int row = 1; row <= 151; ++row) {
    lines.push_back("row " + to_string(row) + "# (" + to_string(row) + ")#  ");
    if (row == 100) lines.emplace_back("#C 40 T15 ");
  }
  lines.emplace_back("#T");
  return lines;
}

struct notation {
  int down;                      // points below a page whose line 0 is at y = 800
  string rule, last_rule, cell;  // last_rule: that of the end of the document
  string begin, page_1, page_2, end;
};

// The same table as it has to be drawn.
string drawn_long_table(const notation& in) {
  string out = in.begin;
  const auto put = [&out](const string& form, auto... values) {
    char text[200];
    out.append(text, static_cast<std::size_t>(std::snprintf(text, sizeof text, form.c_str(), values...)));
  };
  const auto rule = [&](int x1, int y1, int x2, int y2) { put(in.rule, x1, y1 - in.down, x2, y2 - in.down); };
  const auto cell = [&](int x, int y, const string& text) { put(in.cell, x, y - in.down, text.c_str()); };
  const auto row = [&](int n, int x_of_value, int y) {
    cell(45, y, "row " + to_string(n));
    cell(x_of_value, y, to_string(n));
  };
  rule(40, 800, 340, 800);  // after #P the first line is one slot higher than on other pages
  cell(45, 790, "name unit");
  cell(145, 790, "value");
  cell(295, 790, "note");
  rule(40, 780, 340, 780);
  for (int n = 1; n <= 74; ++n) row(n, 145, 780 - 10 * n);
  rule(40, 40, 40, 800);
  rule(290, 40, 290, 800);
  out += in.page_1;
  for (int n = 75; n <= 100; ++n) row(n, 145, 790 - 10 * (n - 75));
  rule(40, 540, 40, 800);  // closed by the new columns
  rule(290, 540, 290, 800);
  for (int n = 101; n <= 151; ++n) {
    row(n, 245, 790 - 10 * (n - 75));
    cell(320, 790 - 10 * (n - 75), "");  // there is no third column any more
  }
  rule(240, 30, 240, 540);
  out += in.page_2;
  rule(40, 790, 315, 790);
  put(in.last_rule, 240, 790 - in.down, 240, 800 - in.down);
  return out + in.end;
}

const string postscript_font = "a4\n/Times-Roman findfont\n7 scalefont\nsetfont\n";
const string postscript_begin =
    "%!PS-Adobe-2.0\n%%Creator: pagewise\n%%Title: tmp.ps\n%%Pages: 1\n%%PageOrder: Ascend\n"
    "%%BoundingBox: 0 0 612 792\n%%DocumentPaperSizes: a4\n%%EndComments\n" +
    postscript_font;

string pdf_begin(const string& kids, int count) {
  return "%PDF-1.4\n1 0 obj\n  << /Type /Catalog\n     /Outlines 2 0 R\n     /Pages 3 0 R\n  >>\nendobj\n\n"
         "2 0 obj\n  << /Type /Outlines\n     /Count 0\n  >>\nendobj\n\n"
         "3 0 obj\n  << /Type /Pages\n     /Kids [\n" +
         kids + "         ]\n     /Count " + to_string(count) +
         "\n  >>\nendobj\n\n4 0 obj\n   [/PDF /Text]\nendobj\n\n5 0 obj\n  << /Type /Font\n     /Subtype "
         "/Type1\n"
         "     /Name /F1\n     /BaseFont /Times-Roman\n     /Encoding /WinAnsiEncoding\n  >>\nendobj\n\n";
}

string pdf_page(const string& object, const string& contents) {
  return object +
         " 0 obj\n  << /Type /Page\n     /Parent 3 0 R\n     /MediaBox [0 0 612 792]\n     /Contents " +
         contents +
         " 0 R\n     /Resources << /ProcSet 4 0 R\n                   /Font << /F1 5 0 R >>\n"
         "                >>\n  >>\nendobj\n\n" +
         contents + " 0 obj\n  << /Length 73 >>\nstream\n";
}

const string pdf_page_end = "endstream\nendobj\n\n";
const string pdf_end =
    pdf_page_end +
    "xref\n0 8\n0000000000 65535 f\n0000000009 00000 n\n0000000074 00000 n\n0000000120 00000 n\n"
    "0000000179 00000 n\n0000000364 00000 n\n0000000466 00000 n\n0000000496 00000 n\n\n"
    "trailer\n  << /Size 8\n     /Root 1 0 R\n  >>\nstartxref\n625\n%%EOF\n";

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
  std::vector<std::pair<int, bool>> found;
  for (int c = 0; c < 5; ++c) found.emplace_back(columns.width(c), columns.has_rule(c));
  EXPECT_EQ(found, (decltype(found){{20, true}, {30, false}, {10, true}, {100'000, false}, {0, false}}));
  columns.define("#C 1 2 3 4 5 6 7 8 9 10 11 12 13 14 T15 T16 T17 ");
  EXPECT_EQ(columns.left(15), 120) << "forgets the columns before, drops a sixteenth";
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
  EXPECT_EQ((std::vector{pages(0), pages(77), pages(78), pages(154), pages(155)}),
            (std::vector{1, 1, 2, 2, 3}));
  EXPECT_EQ(pages(77, {"#C 4 "}), 2);
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
  const texts lines = long_table();
  const string rule = "newpath %d %d moveto %d %d lineto stroke \n";
  EXPECT_EQ(
      written([&](auto& file) { filter<OFD_afficheur_filtre_impression>(lines).imprime_postscript(file); }),
      drawn_long_table({0, rule, rule, "%d %d moveto (%s) show\n", postscript_begin,
                        "showpage\n%%page : 1 1\n" + postscript_font,
                        "showpage\n%%page : 2 2\n" + postscript_font, "showpage\n"}));
  EXPECT_EQ(pdf_of(lines),
            drawn_long_table(
                {20, "    %d %d m\n    %d %d l\n       S\n", "      %d %d m\n      %d %d l\n       S\n",
                 "   BT\n     /F1 7 Tf\n     %d %d Td\n(%s) Tj\n   ET\n",
                 pdf_begin("10 0 R\n         12 0 R\n         14 0 R\n", 3) + pdf_page("10", "11"),
                 pdf_page_end + pdf_page("12", "13"), pdf_page_end + pdf_page("14", "15"), pdf_end}));
  EXPECT_EQ(pdf_of({}), pdf_begin("10 0 R\n", 1) + pdf_page("10", "11") + pdf_end);
}

TEST(viewer_print, moves_up_at_a_new_layout_and_hands_its_columns_on_to_its_next_document) {
  const texts lines{"lost", "#P T2 ", "(abc)"};
  auto print = filter<OFD_afficheur_filtre_impression>(lines);
  const auto expected = [](const string& first_cell) {
    return postscript_begin + "45 790 moveto (" + first_cell +
           ") show\n45 800 moveto (a) show\nnewpath 40 800 moveto 40 800 lineto stroke \nshowpage\n";
  };
  EXPECT_EQ(written([&](auto& file) { print.imprime_postscript(file); }), expected(""));
  EXPECT_EQ(written([&](auto& file) { print.imprime_postscript(file); }), expected("lo"));
}

TEST(viewer_print, writes_each_character_as_the_byte_that_the_pdf_declares) {
  const string shown = pdf_of({"#P 9 ", "é(œ)€→", "\xe9\x80\\"});
  EXPECT_NE(shown.find("\n(\xe9\x9c\x80?) Tj\n"), string::npos);
  EXPECT_NE(shown.find("\n(\xe9\x80\\) Tj\n"), string::npos) << "what is no UTF-8 stays as it is";
}

TEST(viewer_text, writes_text_as_it_is_and_anything_else_as_a_rule) {
  const texts lines{"#P T20 ", "a# (b)", "", "#T", "#C"};
  const string rule(55, '-');
  EXPECT_EQ(written([&](auto& file) { filter<OFD_afficheur_filtre_texte>(lines).imprime(file); }),
            rule + "\na# (b)\n\n" + rule + "\n" + rule + "\n");
}

TEST(viewer_filters, flush_after_every_line) {
  struct counting_buffer : std::stringbuf {
    int whole_lines = 0;
    int sync() override { return whole_lines += str().ends_with('\n'), 0; }
  } buffer;
  std::ostream file(&buffer);
  const texts lines = long_table();
  auto print = filter<OFD_afficheur_filtre_impression>(lines);
  print.imprime_pdf(file);
  print.imprime_postscript(file);
  filter<OFD_afficheur_filtre_texte>(lines).imprime(file);
  const string all = buffer.str();
  EXPECT_EQ(buffer.whole_lines, std::count(all.begin(), all.end(), '\n'));
}
