#include <gtest/gtest.h>

#include "bibliocpp/formspp/string_dialogs.h"
#include "tests/support/a_window.h"
#include "tests/support/pilot.h"

#include <FL/Fl_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/fl_ask.H>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

// What the modal box says.
std::string message() {
  const Fl_Group& box = *Fl::modal();
  std::string longest;
  for (int i = 0; i < box.children(); ++i) {
    const char* const label = box.child(i)->label();
    if (label != nullptr && std::string(label).size() > longest.size()) longest = label;
  }
  return longest;
}

// Runs a call that shows a box, which `work` closes; what the box said.
template <typename Call>
std::string said(Call show, const std::function<void(pilot&)>& work) {
  std::string text;
  {
    pilot operator_;
    operator_.box().then([&text] { text = message(); });
    work(operator_);
    show();
  }
  EXPECT_EQ(Fl::modal(), nullptr);
  return text;
}

void press_return(pilot& p) { p.key("Return"); }
void press_escape(pilot& p) { p.key("Escape"); }
void close_it(pilot& p) { p.close(); }

template <typename Call>
auto answer(Call ask, const std::function<void(pilot&)>& work) {
  pilot operator_;
  operator_.box();
  work(operator_);
  return ask();
}

std::function<void(pilot&)> reply(const std::string& ascii, const std::string& closing_key = "Return") {
  return [=](pilot& p) { p.key("Control+a").type(ascii).key(closing_key); };
}

std::string contents(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

TEST(string_dialogs, a_message_is_a_printf_format) {
  EXPECT_EQ(said([] { fl_show_Smessages("100 %% à l'arrêt"); }, press_return), "100 % à l'arrêt");
  EXPECT_NE(said([] { fl_show_Smessages("100 %"); }, press_escape), "100 %");
  EXPECT_EQ(said([] { fl_show_Salert("à 50 %%"); }, close_it), "à 50 %");
  EXPECT_EQ(said(fl_show_ms, press_return).find("Created by"), 0U);
}

TEST(string_dialogs, only_the_yes_button_is_a_yes) {
  const auto ask = [] { return fl_show_Squestion("100 % sûr ?", 7); };
  EXPECT_EQ(answer(ask, press_return), 1);
  EXPECT_EQ(answer(ask, press_escape), 0);
  EXPECT_EQ(answer(ask, close_it), 0);
  const auto press_labelled = [](const char* label) {
    return [label](pilot& p) {
      p.then([label] {
        const Fl_Window& box = *Fl::modal();
        for (int i = 0; i < box.children(); ++i) {
          const Fl_Widget& w = *box.child(i);
          if (w.label() != nullptr && std::string(w.label()) == label)
            hands::click(box.x_root() + w.x() + w.w() / 2, box.y_root() + w.y() + w.h() / 2);
        }
      });
    };
  };
  EXPECT_EQ(answer(ask, press_labelled(fl_yes)), 1);
  EXPECT_EQ(answer(ask, press_labelled(fl_no)), 0);
  EXPECT_EQ(said(ask, press_return), "100 % sûr ?") << "not a format";
}

TEST(string_dialogs, asks_for_a_text) {
  const auto ask = [] { return fl_show_Sinput("Où à 100 % ?", "déchargé %d"); };
  EXPECT_EQ(answer(ask, press_return), "déchargé %d");
  EXPECT_EQ(answer(ask, reply("new 5 %")), "new 5 %");
  EXPECT_EQ(answer(ask, reply("new", "Escape")), "");
  EXPECT_EQ(answer(ask, close_it), "");
}

TEST(string_dialogs, asks_for_numbers) {
  const auto ask_int = [] { return fl_show_int("n", -12); };
  const auto ask_double = [] { return fl_show_double(std::string("x"), -1.25); };
  for (const auto& [typed, i, d] :
       std::vector<std::tuple<std::string, int, double>>{{" +42 mm", 42, 42.0},
                                                         {"7.5", 7, 7.5},
                                                         {"1e3", 1, 1000.0},
                                                         {"none", -12, -1.25},
                                                         {"99999999999", -12, 99999999999.0}}) {
    EXPECT_EQ(answer(ask_int, reply(typed)), i) << typed;
    EXPECT_EQ(answer(ask_double, reply(typed)), d) << typed;
  }
  EXPECT_EQ(answer(ask_int, press_return), -12);
  EXPECT_EQ(answer(ask_int, reply("5", "Escape")), -12);
  EXPECT_EQ(answer(ask_double, reply("5", "Escape")), -1.25);
  const auto ask_huge = [] { return fl_show_double("x", 1e300); };
  EXPECT_EQ(answer(ask_huge, press_return), 1e300) << "longer than most buffers, and proposed whole";
}

TEST(string_dialogs, shows_a_long_text_line_by_line) {
  for (const auto& [text, lines] : std::vector<std::tuple<std::string, std::vector<std::string>>>{
           {"", {""}}, {"one\n\nthrée\n", {"one", "", "thrée"}}, {"\n", {""}}, {"\n\n", {"", ""}}}) {
    std::vector<std::string> seen;
    pilot operator_;
    operator_.box()
        .then([&seen] {
          const Fl_Window& box = *Fl::modal();
          EXPECT_EQ(std::string(box.label()), "Messages");
          EXPECT_EQ(std::make_pair(box.w(), box.h()), std::make_pair(610, 570));
          auto& browser = dynamic_cast<Fl_Browser&>(*box.child(0));
          EXPECT_EQ(std::make_pair(browser.w(), browser.h()), std::make_pair(600, 500));
          for (int line = 1; line <= browser.size(); ++line) seen.emplace_back(browser.text(line));
        })
        .click(100, 100)  // a line: no end
        .click(275, 545);
    fl_show_Sbigmessages(text, 100);
    EXPECT_EQ(seen, lines) << text;
  }
  answer([] { return fl_show_Sbigmessages("text", 60), 0; }, close_it);
  answer([] { return fl_show_Sbigmessages("text", 60), 0; }, press_escape);
}

TEST(string_dialogs, saves_a_long_text) {
  const auto folder = std::filesystem::temp_directory_path() / ("dialogs." + std::to_string(getpid()));
  std::filesystem::create_directory(folder);
  std::filesystem::current_path(folder);
  std::filesystem::create_symlink("/proc/not_writable", "out.txt");  // not even for root
  const std::string text = "one %d\n\nthrée\n";
  const Fl_Window* dialog = nullptr;
  pilot operator_;
  const auto save = [&](const std::function<void(pilot&)>& choose) {
    operator_.click(105, 545).when([&] { return Fl::modal() != dialog; }).box();
    choose(operator_);
    operator_.when([&] { return Fl::modal() == dialog; }).box();
  };
  operator_.box().then([&] { dialog = Fl::modal(); });
  save([](pilot& p) { p.key("End").type("message.txt").key("Return"); });
  operator_.then([&] { EXPECT_EQ(contents("message.txt"), text); });
  save(press_return);  // the same file is proposed
  save([](pilot& p) { p.key("End").type("2").key("Escape"); });
  save([](pilot& p) {
    p.key("End");
    for (std::size_t n = 0; n < std::string("message.txt").size(); ++n) p.key("BackSpace");
    p.type("out.txt").key("Return");
  });
  operator_.click(275, 545);
  fl_show_Sbigmessages(text, 60);
  EXPECT_EQ(contents("message.txt"), text) << "one copy, to the byte";
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
  std::filesystem::current_path("/");
  std::filesystem::remove_all(folder);
}

TEST(string_dialogs, sets_the_texts_of_widgets) {
  a_window window;
  window.begin();
  auto& input = *new Fl_Input(0, 0, 100, 20);
  auto& browser = *new Fl_Browser(0, 20, 100, 100);
  auto label = std::make_unique<std::string>("Départ");
  Fl_Widget* const text = fl_add_Stext(FL_FLAT_BOX, 100, 150, 40, 20, *label);
  window.end();
  label.reset();
  EXPECT_STREQ(text->label(), "Départ");
  EXPECT_EQ(text->align(), FL_ALIGN_LEFT);
  EXPECT_EQ(text->box(), FL_FLAT_BOX);
  EXPECT_EQ(text->parent(), &window);
  fl_set_Sinput(&input, "à 5 %d");
  EXPECT_STREQ(input.value(), "à 5 %d");
  for (const auto& [n, expected] : std::vector<std::pair<int, const char*>>{
           {4, "Page"}, {0, ""}, {-1, "Page 12"}, {7, "Page 12"}, {100, "Page 12"}}) {
    fl_set_object_Slabel(text, "Page 12", n);
    EXPECT_STREQ(text->label(), expected) << n;
  }
  fl_add_browser_Sline(&browser, "one");
  fl_add_browser_Sline(&browser, "two");
  for (const int n : {0, 2, 3}) fl_replace_browser_Sline(&browser, n, "deux");
  EXPECT_EQ(browser.size(), 2);
  EXPECT_STREQ(browser.text(1), "one");
  EXPECT_STREQ(browser.text(2), "deux");
}

TEST(string_dialogs, draws_a_text_in_its_box) {
  a_window window;
  fl_drw_String(FL_ALIGN_RIGHT | FL_ALIGN_INSIDE, 100, 50, 100, 40, FL_BLUE, 30, FL_HELVETICA_BOLD, "l@->");
  EXPECT_EQ(fl_font(), FL_HELVETICA_BOLD);
  EXPECT_EQ(fl_size(), 30);
  EXPECT_EQ(fl_color(), FL_BLUE);
  const picture seen = window.look();
  EXPECT_GT(seen.count(blue, 150, 50, 50, 40), 0);
  EXPECT_EQ(seen.count(blue), seen.count(blue, 100, 50, 100, 40));
  fl_rectf(0, 0, 300, 200, FL_BACKGROUND_COLOR);
  fl_drw_String(FL_ALIGN_CENTER, 100, 50, 40, 40, FL_BLUE, 10, FL_HELVETICA, "@square");
  EXPECT_GT(window.look().count(blue), 100) << "a symbol, not its name";
}
