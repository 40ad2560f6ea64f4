#include <gtest/gtest.h>

#include "bibliocpp/formspp/io_test_panels.h"
#include "tests/support/a_window.h"
#include "tests/support/pilot.h"

#include <array>
#include <optional>

namespace {

constexpr rgb yellow{255, 255, 0};

void settle(Fl_Window& window) {
  wait_until([&] {
    Fl::wait(0.01);
    return window.visible_r() && !window.damage();
  });
}

struct an_input_panel {
  std::optional<a_window> outer;
  std::optional<OFD_simulator_input> panel;
  int xoff = 0;
  int init = 7, quit = 7;
  std::array<int, 3> values{7, 7, 7};

  explicit an_input_panel(bool embedded) {
    if (embedded) {
      xoff = 30;
      outer.emplace(500, 300);
      panel.emplace(&*outer, xoff, 300);
      outer->redraw();
    } else {
      panel.emplace(300);
    }
    for (const char* name : {"a", "b", "@c"}) panel->add(name);
    settle(window());
  }
  Fl_Window& window() { return *Fl::first_window(); }
  void click(int x, int y) { hands::click(window().x_root() + xoff + x, window().y_root() + y); }
  void mark(int line) { click(20, 40 + 16 * (line - 1)); }
  void mark_sticky(int line) { click(220, 40 + 16 * (line - 1)); }
  void press_init() { click(40, 280); }
  void press_go() { click(210, 280); }
  void press_quit() { click(360, 280); }
  void check(const std::function<void()>& work) {
    pilot operator_;
    operator_.then(work);
    panel->check(&init, &quit, values.data());
  }
};

using in_order = std::array<int, 3>;

}  // namespace

class input_panel : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(both_forms, input_panel, testing::Values(false, true),
                         [](const auto& form) { return form.param ? "embedded" : "standalone"; });

TEST_P(input_panel, delivers_a_signal_once_unless_it_is_sticky) {
  an_input_panel p(GetParam());
  p.check([&] {
    p.mark(1);
    p.mark(3);
    p.mark_sticky(3);
    p.press_go();
  });
  EXPECT_EQ(p.values, (in_order{1, 0, 1}));
  EXPECT_EQ(p.init, 0);
  EXPECT_EQ(p.quit, 0);
  p.check([&] { p.press_go(); });
  EXPECT_EQ(p.values, (in_order{0, 0, 1}));
  p.check([&] {
    p.mark(2);
    p.press_init();
  });
  EXPECT_EQ(p.init, 1);
  EXPECT_EQ(p.values, (in_order{0, 0, 1})) << "INIT delivers nothing";
  p.check([&] { p.press_go(); });
  EXPECT_EQ(p.values, (in_order{0, 0, 0}));
  p.check([&] {
    p.mark(3);
    p.press_go();
  });
  p.check([&] { p.press_go(); });
  EXPECT_EQ(p.values, (in_order{0, 0, 1})) << "INIT has left the sticky mark";
}

TEST_P(input_panel, ends_with_quit_and_with_its_window) {
  an_input_panel p(GetParam());
  p.check([&] { p.press_quit(); });
  EXPECT_EQ(p.quit, 1);
  p.quit = 0;
  p.check([&] { hands::close(fl_xid(&p.window())); });
  EXPECT_EQ(p.quit, 1);
  EXPECT_EQ(p.values, (in_order{7, 7, 7}));
}

TEST_P(input_panel, shows_values_as_marks) {
  an_input_panel p(GetParam());
  in_order shown{1, 0, 1};
  p.panel->eval(&p.quit, shown.data());
  EXPECT_EQ(p.quit, 0);
  p.check([&] { p.press_go(); });
  EXPECT_EQ(p.values, shown);
  for (const bool by_button : {true, false}) {
    by_button ? p.press_quit() : hands::close(fl_xid(&p.window()));
    EXPECT_TRUE(wait_until([&] {
      p.panel->eval(&p.quit, shown.data());
      return p.quit == 1;
    }));
  }
}

namespace {

struct an_output_panel {
  std::optional<a_window> outer;
  std::optional<OFD_simulator_output> panel;
  int xoff = 0;
  std::vector<int> values;

  explicit an_output_panel(bool embedded, int height = 405) {
    if (embedded) {
      xoff = 30;
      outer.emplace(300, height);
      panel.emplace(&*outer, xoff, height, "Sorties");
      outer->redraw();
    } else {
      panel.emplace(height, "Sorties");
    }
    settle(window());
  }
  Fl_Window& window() { return *Fl::first_window(); }
  void add(int n) {
    for (; n > 0; --n) {
      panel->add("s" + std::to_string(values.size()));
      values.push_back(static_cast<int>(values.size()) % 2);
    }
  }
  // The colour of each lamp that is shown, from the top.
  std::vector<rgb> lamps() {
    settle(window());
    const picture seen = look_at(window());
    std::vector<rgb> shown;
    for (int line = 0; 34 + 16 * line < window().h() - 40; ++line) {
      const rgb colour = seen.at(xoff + 11, 39 + 16 * line);
      if (colour != grey) shown.push_back(colour);
    }
    return shown;
  }
  std::vector<std::string> names() {
    std::vector<std::string> shown;
    for (int i = 0; i < window().children(); ++i)
      if (const auto* const list = dynamic_cast<Fl_Browser*>(window().child(i)))
        for (int line = 1; line <= list->size(); ++line) shown.emplace_back(list->text(line));
    return shown;
  }
  void press(const Fl_Button* button) {
    const std::vector<std::string> before = names();
    hands::click(window().x_root() + button->x() + 10, window().y_root() + button->y() + 10);
    wait_until([&] {
      Fl::wait(0.01);
      return names() != before;
    });
  }
};

}  // namespace

class output_panel : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(both_forms, output_panel, testing::Values(false, true),
                         [](const auto& form) { return form.param ? "embedded" : "standalone"; });

TEST_P(output_panel, lights_a_lamp_beside_each_name) {
  an_output_panel p(GetParam());
  p.add(3);
  EXPECT_EQ(p.names(), (std::vector<std::string>{"s0", "s1", "s2"}));
  EXPECT_EQ(p.lamps(), (std::vector<rgb>{red, red, red})) << "not known yet";
  p.panel->eval(p.values.data());
  EXPECT_EQ(p.lamps(), (std::vector<rgb>{yellow, blue, yellow}));
  p.values = {1, 0, -1};
  p.panel->eval(p.values.data());
  EXPECT_EQ(p.lamps(), (std::vector<rgb>{blue, yellow, red}));
  p.panel->check();
  for (const int line : {-1, 3, 19, 20, 1000}) p.panel->internal_colorise(line);
  EXPECT_EQ(p.lamps().size(), 3U);
}

TEST_P(output_panel, keeps_the_last_name_of_a_page_beside_its_lamp) {
  an_output_panel p(GetParam());
  p.add(20);
  settle(p.window());
  const picture seen = look_at(p.window());
  const int last_lamp = 34 + 16 * 19;
  EXPECT_GT(seen.count(black, p.xoff + 24, last_lamp, 60, 12), 5) << "the name";
  EXPECT_EQ(seen.count(black, p.xoff + 24, last_lamp + 17, 60, 12), 0) << "and nothing below";
}

TEST_P(output_panel, turns_pages) {
  an_output_panel p(GetParam());
  p.add(20);
  EXPECT_EQ(p.lamps().size(), 20U);
  p.add(1);
  EXPECT_EQ(p.names(), std::vector<std::string>{"s20"}) << "the 21st signal turns the page";
  EXPECT_EQ(p.lamps().size(), 1U);
  p.panel->next_page();
  EXPECT_EQ(p.names(), std::vector<std::string>{"s20"});
  p.press(p.panel->my_moins_button());
  EXPECT_EQ(p.names().front(), "s0");
  p.panel->previous_page();
  EXPECT_EQ(p.names().size(), 20U);
  p.add(25);
  EXPECT_EQ(p.names().front(), "s40") << "one page forward an addition";
  EXPECT_EQ(p.names().size(), 6U);
  p.press(p.panel->my_moins_button());
  EXPECT_EQ(p.names().front(), "s20");
  p.panel->eval(p.values.data());
  p.press(p.panel->my_plus_button());
  EXPECT_EQ(p.names().front(), "s40");
  EXPECT_EQ(p.lamps().front(), yellow) << "values of other pages are kept";
}

TEST(output_panel, is_of_use_without_signals_and_with_hardly_any_height) {
  an_output_panel p(true, 80);
  p.panel->next_page();
  p.panel->previous_page();
  EXPECT_TRUE(p.names().empty());
  p.add(2);
  EXPECT_EQ(p.names(), std::vector<std::string>{"s1"});
}

TEST(io_test_panels, leave_the_group_that_was_being_filled_as_it_was) {
  Fl_Window under_construction(100, 100);
  a_window other;
  Fl_Group::current(&under_construction);
  OFD_simulator_input input(300);
  OFD_simulator_output output(300, std::string("gone at once").c_str());
  OFD_simulator_output embedded(&other, 0, 300, "embedded");
  EXPECT_EQ(under_construction.children(), 0);
  EXPECT_EQ(Fl_Group::current(), &under_construction);
  under_construction.end();
}
