// What long_table.txt must look like in print stands beside it, worked out position by position: 155 counted
// lines, that is a header between two rules, 151 rows, with new columns after row 100, and a rule that is
// alone on the third page. The empty documents are those of no lines at all.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>
#include <utility>
#include <vector>

#include "bibliocpp/formspp.h"
#include "tests/support/a_directory.h"

using std::string;
using texts = std::vector<string>;
using print_filter = OFD_afficheur_filtre_impression;

namespace {

string beside(const string& name) { return HERE "/" + name; }

template <typename Filter>
Filter filter(const texts& lines) {
  return Filter(lines.data(), static_cast<int>(lines.size()));
}

string written(auto&& by, auto write) {
  std::ostringstream file;
  (by.*write)(file);
  return file.str();
}

}  // namespace

TEST(viewer_markup, reads_columns_as_far_as_a_blank_confirms_them) {
  viewer_markup::column_table columns;
  columns.define("#P T20 30  T1x0 99999999999999999999 7");
  std::vector<std::pair<int, bool>> found;
  for (int c = 0; c < 5; ++c) found.emplace_back(columns.width(c), columns.has_rule(c));
  EXPECT_EQ(found, (decltype(found){{20, true}, {30, false}, {10, true}, {100'000, false}, {0, false}}));
  columns.define("#C 1 2 3 4 5 6 7 8 9 10 11 12 13 14 T15 T16 T17 ");
  EXPECT_EQ(columns.left(15), 120) << "forgets the columns before, drops a sixteenth";
}

TEST(viewer_markup, cuts_cells_by_characters) {
  viewer_markup::column_table columns;
  columns.define("#P 3 4 2 ");
  const std::pair<string, string> rows[] = {{"", "[]"},
                                            {"ab# cd#xef", "[ab][cd][ef]"},
                                            {"a##b#", "[a][b][]"},
                                            {"#é12345# z# too many", "[][1234][z][]"},
                                            {"été# Œuvre# (b)", "[été][Œuvr][(b]"},
                                            {"\xe9t\xe9s# \xff", "[\xe9t\xe9][\xff]"}};
  for (const auto& [line, expected] : rows) {
    string found;
    for (const auto cell : cells(line, columns)) found.append("[").append(cell).append("]");
    EXPECT_EQ(found, expected);
  }
}

TEST(viewer_markup, breaks_pages_before_what_follows_the_77th_counted_line) {
  const std::tuple<int, texts, int> rows[] = {{0, {}, 1},  {77, {}, 1},  {77, {"#C 4 "}, 2},
                                              {78, {}, 2}, {154, {}, 2}, {155, {}, 3}};
  for (const auto& [counted, then, pages] : rows) {
    texts lines{"#P 5 "};
    for (int n = 0; n < counted; ++n) lines.emplace_back(n % 2 == 0 ? "a" : "#T");
    lines.insert(lines.end(), then.begin(), then.end());
    EXPECT_EQ(filter<OFD_afficheur_filtre_affichage>(lines).nb_pages() + 1, pages) << counted;
  }
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

TEST(viewer_print, writes_documents_exactly_and_flushes_after_every_line) {
  struct counting_buffer : std::stringbuf {
    int whole_lines = 0;
    int sync() override { return whole_lines += str().ends_with('\n'), 0; }
  };
  for (const string name : {"long_table", "empty"}) {
    texts lines;
    std::ifstream table(beside(name + ".txt"));
    for (string line; std::getline(table, line);) lines.push_back(line);
    auto print = filter<print_filter>(lines);
    counting_buffer buffer;
    std::ostream file(&buffer);
    print.imprime_postscript(file);
    print.imprime_pdf(file);
    print.imprime_pdf(file);
    const string all = buffer.str(), pdf = contents(beside(name + ".pdf"));
    EXPECT_EQ(all, contents(beside(name + ".ps")).append(pdf).append(pdf));
    EXPECT_EQ(buffer.whole_lines, std::count(all.begin(), all.end(), '\n'));
  }
}

TEST(viewer_print, moves_up_at_a_new_layout_and_hands_its_columns_on_to_its_next_document) {
  const texts lines{"lost", "#P T2 ", "(abc)"};
  auto print = filter<print_filter>(lines);
  const string drawn = "45 800 moveto (a) show\nnewpath 40 800 moveto 40 800 lineto stroke \nshowpage\n";
  for (const string first : {"", "lo"})
    EXPECT_TRUE(
        written(print, &print_filter::imprime_postscript)
            .ends_with(string("setfont\n45 790 moveto (").append(first).append(") show\n").append(drawn)));
}

TEST(viewer_print, writes_each_character_as_the_byte_that_the_pdf_declares) {
  const texts lines{"#P 9 ", "é(œ)€→", "\xe9\x80\\"};
  const string shown = written(filter<print_filter>(lines), &print_filter::imprime_pdf);
  EXPECT_NE(shown.find("\n(\xe9\x9c\x80?) Tj\n"), string::npos);
  EXPECT_NE(shown.find("\n(\xe9\x80\\) Tj\n"), string::npos) << "what is no UTF-8 stays as it is";
}

TEST(viewer_print, skips_a_cell_of_one_blank_only) {
  const texts lines{"#P 3 3 3 3 ", "a#  # #   "};
  EXPECT_NE(written(filter<print_filter>(lines), &print_filter::imprime_postscript)
                .find("\n45 800 moveto (a) show\n75 800 moveto () show\n90 800 moveto (  ) show\n"),
            string::npos);
}

TEST(viewer_text, writes_text_as_it_is_and_anything_else_as_a_rule) {
  using text_filter = OFD_afficheur_filtre_texte;
  const texts lines{"#P T20 ", "a# (b)", "", "#", "#c", " #C", "#T", "#C"};
  const string rule(55, '-');
  EXPECT_EQ(written(filter<text_filter>(lines), &text_filter::imprime),
            rule + "\na# (b)\n\n#\n#c\n #C\n" + rule + "\n" + rule + "\n");
}
