#include <gtest/gtest.h>

#include "bibliocpp/formspp/io_test_panels.h"
#include "tests/support/a_window.h"
#include "tests/support/operate.h"

#include <memory>
#include <utility>

namespace {

// A panel in its own window, or embedded 30 pixels from the left of another.
template <typename Panel, typename... Title>
struct a_panel {
  std::unique_ptr<a_window> outer;
  std::unique_ptr<Panel> panel;
  int xoff = 0;

  a_panel(bool embedded, int height, Title... title) {
    if (embedded) {
      outer = std::make_unique<a_window>(500, height);
      panel = std::make_unique<Panel>(outer.get(), xoff = 30, height, title...);
      outer->redraw();
    } else {
      panel = std::make_unique<Panel>(height, title...);
    }
  }
  Fl_Window& window() { return *Fl::first_window(); }
  picture look() {
    wait_until([&] { return Fl::wait(0.01), is_painted(&window()); });
    return look_at(window());
  }
  void click(int x, int y) { click_in(window(), xoff + x, y); }
};

constexpr int INIT = 40, GO = 210, QUIT = 360;  // places of the buttons

struct an_input_panel : a_panel<OFD_simulator_input> {
  int init = 7, quit = 7;
  std::vector<int> values{7, 7, 7};

  explicit an_input_panel(bool embedded) : a_panel(embedded, 300) {
    for (const char* name : {"a", "b", "@c"}) panel->add(name);
    look();
  }
  // The values after a click on each marked line, then on the button at x.
  const std::vector<int>& press(int x, const std::vector<int>& lines_to_mark = {}) {
    for (const int line : lines_to_mark) click(20, 24 + 16 * line);
    click(x, 280);
    panel->check(&init, &quit, values.data());
    return values;
  }
};

struct an_output_panel : a_panel<OFD_simulator_output, const char*> {
  std::vector<int> values;

  explicit an_output_panel(bool embedded, int height = 405) : a_panel(embedded, height, "Sorties") { look(); }
  void add(int n) {
    for (; n > 0; --n) {
      panel->add("s" + std::to_string(values.size()));
      values.push_back(static_cast<int>(values.size()) % 2);
    }
  }
  // A letter for the colour of each lamp that is shown, then the first name.
  std::string page() {
    const picture seen = look();
    std::string shown;
    for (int y = 39; y < seen.height() - 40; y += 16) {
      const rgb lamp = seen.at(xoff + 11, y);
      if (lamp != grey)
        shown += lamp == red ? 'r' : lamp == blue ? 'b' : lamp == rgb{255, 255, 0} ? 'y' : '?';
    }
    for (int i = 0; i < window().children(); ++i)
      if (const auto* const list = dynamic_cast<Fl_Browser*>(window().child(i)))
        if (list->size() > 0) shown.append(" ").append(list->text(1));
    return shown;
  }
  std::string page_after(const Fl_Button* button) {
    const std::string before = page();
    click(button->x() - xoff + 10, button->y() + 10);
    wait_until([&] { return page() != before; });
    return page();
  }
};

}  // namespace

class io_test_panels : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(both_forms, io_test_panels, testing::Values(false, true));

TEST_P(io_test_panels, deliver_a_signal_once_unless_it_is_sticky_and_quit_with_their_window) {
  an_input_panel p(GetParam());
  p.click(220, 24 + 16 * 3);  // the third is sticky
  EXPECT_EQ(p.press(GO, {1, 3}), (std::vector{1, 0, 1}));
  EXPECT_EQ(p.press(GO), (std::vector{0, 0, 1}));
  EXPECT_TRUE(p.init == 0 && p.quit == 0);
  EXPECT_EQ(p.press(INIT, {2}), (std::vector{0, 0, 1})) << "INIT delivers nothing";
  EXPECT_TRUE(p.init == 1 && p.quit == 0);
  EXPECT_EQ(p.press(GO), (std::vector{0, 0, 0}));
  p.press(GO, {3});
  EXPECT_EQ(p.press(GO), (std::vector{0, 0, 1})) << "INIT has left the sticky mark";
  std::vector<int> shown{256, 0, 2};
  p.panel->eval(&p.quit, shown.data());
  EXPECT_EQ(p.press(GO), (std::vector{1, 0, 1})) << "a mark stands for 1 or 0";
  p.press(QUIT);
  EXPECT_EQ(std::exchange(p.quit, 0), 1);
  hands::close(fl_xid(&p.window()));
  EXPECT_TRUE(wait_until([&] { return p.panel->eval(&p.quit, p.values.data()), p.quit == 1; }));
  p.quit = 0;
  p.panel->check(&p.init, &p.quit, p.values.data());
  EXPECT_EQ(p.quit, 1) << "there is nothing left to press";
}

TEST_P(io_test_panels, light_a_lamp_beside_each_name_page_by_page) {
  an_output_panel p(GetParam());
  p.add(20);
  EXPECT_EQ(p.page(), std::string(20, 'r') + " s0") << "not known yet";
  const picture seen = p.look();
  EXPECT_GT(seen.dark(p.xoff + 24, 34 + 16 * 19, 60, 12), 5) << "the last name, beside the last lamp";
  EXPECT_EQ(seen.dark(p.xoff + 24, 34 + 16 * 19 + 17, 60, 12), 0);
  p.add(1);
  EXPECT_EQ(p.page(), "r s20") << "the 21st signal turns the page";
  p.panel->next_page();
  EXPECT_EQ(p.page(), "r s20");
  p.panel->previous_page();
  p.panel->previous_page();
  p.values[3] = -1;
  p.panel->eval(p.values.data());
  EXPECT_EQ(p.page(), "ybyrybybybybybybybyb s0");
  p.add(22);
  EXPECT_EQ(p.page(), "rrr s40");
  EXPECT_EQ(p.page_after(p.panel->my_moins_button()), "y" + std::string(19, 'r') + " s20")
      << "values are kept";
  EXPECT_EQ(p.page_after(p.panel->my_plus_button()), "rrr s40");
  p.panel->check();
  for (const int line : {-1, 3, 20}) p.panel->internal_colorise(line);
  EXPECT_EQ(p.page(), "rrr s40") << "no such lines";
}

TEST(io_test_panels, do_with_little_and_leave_the_callers_group_alone) {
  an_output_panel p(true, 80);
  p.panel->next_page();
  EXPECT_EQ(p.page(), "");
  p.add(2);
  EXPECT_EQ(p.page(), "r s1");
  Fl_Window under_construction(100, 100);
  const OFD_simulator_input input(300);
  const OFD_simulator_output output(300, "");
  EXPECT_TRUE(under_construction.children() == 0 && Fl_Group::current() == &under_construction);
  under_construction.end();
}
