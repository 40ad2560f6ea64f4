#include <gtest/gtest.h>

#include "bibliocpp/formspp/message_viewer.h"
#include "tests/support/a_directory.h"
#include "tests/support/a_window.h"
#include "tests/support/operate.h"

#include <cstdlib>

namespace fs = std::filesystem;
using std::string;

namespace {

struct spot {
  int x, y;
};
constexpr spot next{330, 440}, previous{330, 470}, cancel{85, 455}, pdf{510, 455}, text{710, 455},
    page_input{160, 455}, go{200, 455};

// The labels of the modal window's widgets from the one at (x, y) on, each followed by "|".
string labels_from(int x, int y) {
  string labels;
  for (int i = 0; i < Fl::modal()->children(); ++i) {
    const Fl_Widget& widget = *Fl::modal()->child(i);
    if (labels.empty() && (widget.x() != x || widget.y() != y)) continue;
    labels.append(widget.label() == nullptr ? "" : widget.label()).append("|");
  }
  return labels;
}

Fl_Browser& browser() { return dynamic_cast<Fl_Browser&>(*Fl::modal()->child(1)); }

// The operator at the viewer.
struct reader : script {
  reader() { in_a_window(); }
  reader& when(std::function<bool()> is_so) { return script::when(std::move(is_so)), *this; }
  reader& then(const std::function<void()>& action) { return script::then(action), *this; }
  reader& press(const spot& at) {
    return then([=] { click_in_box(at.x, at.y); });
  }
  reader& sees_page(const string& position) {
    return when([=] { return labels_from(80, 20).starts_with("page " + position + "    |"); });
  }
  reader& asks_for_page(const string& number) {
    return press(page_input).then([=] { hands::key("Control+a"), hands::type(number); }).press(go);
  }
  reader& confirms(const string& message) {
    in_a_window().then([=] { EXPECT_EQ(Fl::modal()->child(0)->label(), message); });
    then([] { hands::key("Return"); }).in_a_window();
    return *this;
  }
};

std::list<string> lines(int count) {
  std::list<string> made{"#P 9 "};
  for (int n = 1; n <= count; ++n) made.push_back("line " + std::to_string(n));
  return made;
}

struct message_viewer : testing::Test {
  a_directory here;
  a_window parent;
};

}  // namespace

TEST_F(message_viewer, pages_and_ignores_pages_that_there_are_not) {
  OFD_afficheur viewer(&parent, 0);
  auto shown = lines(155);
  for (int activation = 0; activation < 2; ++activation) {
    reader operator_;
    operator_.sees_page("1 / 3").then([this] { EXPECT_FALSE(parent.active()); });
    operator_.press(previous).press(next).sees_page("2 / 3").press(next).press(next).sees_page("3 / 3");
    operator_.press(previous).sees_page("2 / 3").then([] {
      EXPECT_STREQ(browser().text(2), "@f@S12 line 79  ");
      EXPECT_STREQ(dynamic_cast<Fl_Input&>(*Fl::modal()->child(9)).value(), "2");
    });
    for (const char* const none : {"0", "4", "-4294967295", "x", "4294967297"}) {
      operator_.asks_for_page(none).press(previous).sees_page("1 / 3").press(next).sees_page("2 / 3");
      operator_.asks_for_page(none).press(next).sees_page("3 / 3").press(previous).sees_page("2 / 3");
    }
    operator_.asks_for_page("3").sees_page("3 / 3").then([] {
      for (const int button : {6, 4}) Fl::modal()->child(button)->do_callback();  // cancel, next
    });
    viewer.activation(shown, "", "");
    EXPECT_EQ(Fl::readqueue(), nullptr) << "nothing is left for the next activation";
    EXPECT_TRUE(Fl::modal() == nullptr && parent.active());
  }
}

TEST_F(message_viewer, shows_its_words_its_title_and_long_lines_in_pieces) {
  string array[] = {"#P 393 ", "é" + string(500, 'a'), "#P 154 ", "", "#P 155 ", ""};
  for (const int language : {0, 2}) {
    OFD_afficheur viewer(&parent, language);
    string labels, sizes;
    reader operator_;
    operator_.sees_page("1 / 1").then([&] {
      labels = labels_from(230, 20);
      for (int n = 2; n <= browser().size(); ++n)
        sizes += std::to_string(string(browser().text(n)).size()) + " ";
    });
    operator_.press(next).press(cancel);
    viewer.activation(array, 6, "à@" + string(100, 'x'), "");
    EXPECT_EQ(labels,
              "à@@" + string(79, 'x') + "|page 1 / 1    |" +  // 81 characters, "@@" stands for "@"
                  (language == 0 ? "page suivante|page precedente|ANNULER|fichier pdf|fichier texte|||"
                                 : "next page|previous page|CANCEL|pdf file|text file|||"));
    EXPECT_EQ(sizes, "162 161 76 0 161 0 161 0 ") << "the accent has two bytes";
  }
}

TEST_F(message_viewer, returns_at_once_without_lines_and_when_it_is_closed) {
  parent.begin();
  OFD_afficheur viewer(&parent, 0);
  EXPECT_EQ(Fl_Group::current(), &parent) << "as it was";
  std::list<string> none;
  parent.deactivate();
  viewer.activation(nullptr, 5, "", "");
  viewer.activation(none, "", "");
  EXPECT_TRUE(parent.active());
  string array[] = {"never shown"};
  for (const bool by_key : {true, false}) {
    reader operator_;
    operator_.sees_page("1 / 1").then([] { EXPECT_EQ(browser().size(), 0); });
    operator_.then([=] { by_key ? hands::key("Escape") : hands::close(fl_xid(Fl::modal())); });
    viewer.activation(array, 0, "", "");
    EXPECT_TRUE(parent.active() && Fl_Group::current() == &parent);
  }
}

TEST_F(message_viewer, exports_all_lines_and_says_so_even_where_nothing_can_be_written) {
  auto shown = lines(100);
  std::ofstream("tmp.txt") << string(100'000, 'x');
  const std::pair<const char*, const char*> words[] = {{"generation du fichier ", ""},
                                                       {"generation of ", " file"}};
  for (const int language : {0, 1}) {
    const auto& [before, after] = words[language];
    reader operator_;
    operator_.press(next).sees_page("2 / 2").press(text).confirms(before + string("tmp.txt") + after);
    operator_.press(pdf).confirms(before + string("tmp.pdf") + after).press(cancel);
    OFD_afficheur(nullptr, language).activation(shown, "", "");
    if (language == 1) break;
    const string in_text = contents("tmp.txt"), in_pdf = contents("tmp.pdf");
    EXPECT_TRUE(in_text.ends_with("\nline 100\n") && in_pdf.ends_with("%%EOF\n"));
    for (int n = 1; n <= 100; ++n) {
      const string line = "line " + std::to_string(n);
      EXPECT_NE(in_text.find("\n" + line + "\n"), string::npos) << line;
      EXPECT_NE(in_pdf.find("(" + line + ") Tj\n"), string::npos) << line;
    }
    fs::remove_all(here.path);
  }
}

TEST_F(message_viewer, hands_documents_to_other_programs) {
  std::ofstream("ps2pdf") << "#!/bin/sh\necho ${0##*/} \"$@\" >>log; [ -e tmp.pdf ] && cp tmp.pdf seen.pdf\n";
  fs::permissions("ps2pdf", fs::perms::owner_all);
  for (const char* const name : {"acroread", "rm", "pdf reader"}) fs::create_symlink("ps2pdf", name);
  const char* const had = getenv("PATH");
  const string path = had == nullptr ? "" : had;
  setenv("PATH", (here.path.string() + ":" + path).c_str(), 1);
  OFD_afficheur::imprime_tmp_ps();
  setenv("PATH", path.c_str(), 1);
  EXPECT_EQ(contents("log"), "ps2pdf tmp.ps\nacroread tmp.pdf\nrm tmp.pdf\nrm tmp.ps\n");
  reader operator_;
  operator_.press(pdf).when([] { return fs::exists("seen.pdf"); });
  operator_.then([] { EXPECT_FALSE(fs::exists("tmp.pdf")) << "its reader has ended"; }).press(cancel);
  auto shown = lines(1);
  OFD_afficheur(nullptr, 0).activation(shown, "", "./pdf reader");
  EXPECT_TRUE(contents("seen.pdf").ends_with("%%EOF\n"));
}
