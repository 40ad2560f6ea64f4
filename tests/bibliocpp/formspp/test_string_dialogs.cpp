#include <gtest/gtest.h>

#include "bibliocpp/formspp/string_dialogs.h"
#include "tests/support/a_directory.h"
#include "tests/support/a_window.h"
#include "tests/support/operate.h"

#include <FL/Fl_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/fl_ask.H>

#include <tuple>

using std::string;

namespace {

string said;  // by the last box that was answered

std::function<void()> reply(const string& ascii, const string& key = "Return") {
  return [=] {
    said = Fl::modal()->child(0)->label();
    if (!ascii.empty()) hands::key("Control+a");
    hands::type(ascii);
    hands::key(key);
  };
}
const auto confirm = reply(""), cancel = reply("", "Escape");
void press_labelled(const string& label) {
  for (int i = 0; i < Fl::modal()->children(); ++i)
    if (const auto& child = *Fl::modal()->child(i); child.label() != nullptr && child.label() == label)
      click_in_box(child.x() + child.w() / 2, child.y() + child.h() / 2);
}
void close_it() { hands::close(fl_xid(Fl::modal())); }

}  // namespace

TEST(string_dialogs, show_texts_and_ask_questions) {
  for (const auto show : {fl_show_Smessages, fl_show_Salert}) {
    operate([show] { show("100 %% à l'arrêt"); }, {confirm});
    EXPECT_EQ(said, "100 % à l'arrêt") << "a printf format";
  }
  operate(fl_show_ms, {close_it});
  const auto ask = [] { return fl_show_Squestion("100 % sûr ?", 7); };
  EXPECT_EQ(operate(ask, {confirm}), 1);
  EXPECT_EQ(said, "100 % sûr ?") << "no format";
  EXPECT_EQ(operate(ask, {cancel}) + operate(ask, {close_it}), 0);
  for (const char* const answer : {fl_no, fl_yes})
    EXPECT_EQ(operate(ask, {[=] { press_labelled(answer); }}), answer == fl_yes) << answer;
}

TEST(string_dialogs, ask_for_texts_and_numbers) {
  const auto ask_text = [] { return fl_show_Sinput("Où à 100 % ?", "déchargé %d"); };
  EXPECT_EQ(operate(ask_text, {confirm}), "déchargé %d");
  EXPECT_EQ(operate(ask_text, {reply("new 5 %")}), "new 5 %");
  EXPECT_EQ(operate(ask_text, {reply("new", "Escape")}) + operate(ask_text, {close_it}), "");
  const auto ask_int = [] { return fl_show_int("n", -12); };
  const auto ask_double = [] { return fl_show_double(string("x"), -1.25); };
  const std::tuple<const char*, int, double> rows[] = {
      {" +42 mm", 42, 42.0}, {"7.5", 7, 7.5}, {"1e3", 1, 1000.0}, {"99999999999", -12, 99999999999.0},
      {"none", -12, -1.25},  {"", -12, -1.25}};
  for (const auto& [answer, as_int, as_double] : rows) {
    EXPECT_EQ(operate(ask_int, {reply(answer)}), as_int) << answer;
    EXPECT_EQ(operate(ask_double, {reply(answer)}), as_double) << answer;
  }
  EXPECT_EQ(operate(ask_int, {reply("5", "Escape")}), -12);
  EXPECT_EQ(operate(ask_double, {close_it}), -1.25);
  EXPECT_EQ(operate([] { return fl_show_double("x", 1e300); }, {confirm}), 1e300) << "proposed whole";
}

TEST(string_dialogs, show_and_save_a_long_text) {
  const a_directory here;
  const string text = "one %d\n\nthrée\n";
  const auto save = [] { click_in_box(105, 545); };
  const auto name_it = [] { hands::key("End"), hands::type("message.txt"), hands::key("Return"); };
  const auto save_where_nobody_may = [&] {  // not even root
    std::filesystem::rename("message.txt", "saved.txt");
    std::filesystem::create_symlink("/proc/not_writable", "message.txt");
    save();
  };
  const auto press_return = [] { hands::key("Return"); };  // the same name is proposed
  operate([&] { fl_show_Sbigmessages(text, 60); },
          {save, name_it, save, press_return, save, [] { hands::key("Escape"); }, save_where_nobody_may,
           press_return, [] { click_in_box(275, 545); }});
  EXPECT_EQ(contents("saved.txt"), text) << "one copy, to the byte";
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2);

  string seen;
  const auto look = [&] {
    const auto& browser = dynamic_cast<Fl_Browser&>(*Fl::modal()->child(0));
    for (int line = 1; line <= browser.size(); ++line) seen.append(browser.text(line)).append("|");
    EXPECT_EQ(browser.w(), 600);
    click_in_box(100, 100);  // a line: no end
    close_it();
  };
  for (const char* const shown : {"", "\n", "one\n\nthrée\n"})
    operate([=] { fl_show_Sbigmessages(shown, 100); }, {look});
  EXPECT_EQ(seen, "||one||thrée|") << "neither text without characters is without a line";
}

TEST(string_dialogs, set_and_draw_texts) {
  a_window window;
  window.begin();
  auto& input = *new Fl_Input(0, 0, 100, 20);
  auto& browser = *new Fl_Browser(0, 20, 100, 100);
  Fl_Widget* const text = fl_add_Stext(FL_FLAT_BOX, 100, 150, 40, 20, string("gone at once"));
  window.end();
  EXPECT_STREQ(text->label(), "gone at once");
  EXPECT_TRUE(text->align() == FL_ALIGN_LEFT && text->box() == FL_FLAT_BOX && text->parent() == &window);
  for (const auto& [n, label] : {std::pair{4, "Page"}, {0, ""}, {-1, "Page 12"}, {100, "Page 12"}}) {
    fl_set_object_Slabel(text, "Page 12", n);
    EXPECT_STREQ(text->label(), label) << n;
  }
  fl_set_Sinput(&input, "à 5 %d");
  EXPECT_STREQ(input.value(), "à 5 %d");
  fl_add_browser_Sline(&browser, "one");
  fl_add_browser_Sline(&browser, "two");
  for (const int n : {0, 2, 3}) fl_replace_browser_Sline(&browser, n, "deux");
  EXPECT_EQ(browser.text(1) + string(browser.text(2)), "onedeux");
  fl_drw_String(FL_ALIGN_CENTER, 150, 50, 40, 40, FL_BLUE, 30, FL_HELVETICA, "@square");
  EXPECT_TRUE(fl_font() == FL_HELVETICA && fl_size() == 30);
  const picture seen = window.look();
  EXPECT_GT(seen.count(blue), 100) << "a symbol, not its name";
  EXPECT_EQ(seen.count(blue), seen.count(blue, 150, 50, 40, 40));
}
