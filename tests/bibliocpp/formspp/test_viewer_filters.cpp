// What long_table.txt must look like in print stands beside it, worked out position by position: 155 counted
// lines, that is a header between two rules, 151 rows, with new columns after row 100, and a rule that is
// alone on the third page. The empty documents are those of no lines at all.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "bibliocpp/formspp.h"
#include "tests/support/a_directory.h"

using namespace viewer_markup;
using std::string;
using texts = std::vector<string>;

namespace {

string beside(const string& name) { return HERE "/" + name; }

texts long_table() {
  std::istringstream file(contents(beside("long_table.txt")));
  texts lines;
  for (string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

template <typename Filter>
Filter filter(const texts& lines) {
  return Filter(lines.data(), static_cast<int>(lines.size()));
}

string pdf_by(OFD_afficheur_filtre_impression& print) {
  std::ostringstream file;
  print.imprime_pdf(file);
  return file.str();
}

string postscript_by(OFD_afficheur_filtre_impression& print) {
  std::ostringstream file;
  print.imprime_postscript(file);
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

int pages(int counted, const texts& then = {}) {
  texts lines{"#P 5 "};
  for (int n = 0; n < counted; ++n) lines.emplace_back(n % 2 == 0 ? "a" : "#T");
  lines.insert(lines.end(), then.begin(), then.end());
  return filter<OFD_afficheur_filtre_affichage>(lines).nb_pages() + 1;
}

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

TEST(viewer_print, writes_documents_exactly) {
  for (const string name : {"long_table", "empty"}) {
    const texts lines = name == "empty" ? texts{} : long_table();
    auto print = filter<OFD_afficheur_filtre_impression>(lines);
    EXPECT_EQ(postscript_by(print), contents(beside(name + ".ps")));
    for (const char* const time : {"first", "second"})
      EXPECT_EQ(pdf_by(print), contents(beside(name + ".pdf"))) << time;
  }
}

TEST(viewer_print, moves_up_at_a_new_layout_and_hands_its_columns_on_to_its_next_document) {
  const texts lines{"lost", "#P T2 ", "(abc)"};
  auto print = filter<OFD_afficheur_filtre_impression>(lines);
  const string drawn = "45 800 moveto (a) show\nnewpath 40 800 moveto 40 800 lineto stroke \nshowpage\n";
  EXPECT_TRUE(postscript_by(print).ends_with("setfont\n45 790 moveto () show\n" + drawn));
  EXPECT_TRUE(postscript_by(print).ends_with("setfont\n45 790 moveto (lo) show\n" + drawn));
}

TEST(viewer_print, writes_each_character_as_the_byte_that_the_pdf_declares) {
  const texts lines{"#P 9 ", "é(œ)€→", "\xe9\x80\\"};
  auto print = filter<OFD_afficheur_filtre_impression>(lines);
  const string shown = pdf_by(print);
  EXPECT_NE(shown.find("\n(\xe9\x9c\x80?) Tj\n"), string::npos);
  EXPECT_NE(shown.find("\n(\xe9\x80\\) Tj\n"), string::npos) << "what is no UTF-8 stays as it is";
}

TEST(viewer_text, writes_text_as_it_is_and_anything_else_as_a_rule) {
  const texts lines{"#P T20 ", "a# (b)", "", "#T", "#C"};
  const string rule(55, '-');
  std::ostringstream file;
  filter<OFD_afficheur_filtre_texte>(lines).imprime(file);
  EXPECT_EQ(file.str(), rule + "\na# (b)\n\n" + rule + "\n" + rule + "\n");
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
