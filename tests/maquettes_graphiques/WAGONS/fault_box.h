#pragma once
// The box in which the mine shows a fault. Include gtest first.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

// A box's picture without its icon and its button, whose borders are the program's style.
inline picture text_of(window_id box) {
  const picture whole = picture_of(box);
  return whole.part(65, 0, whole.width() - 65, whole.height() - 40);
}

// Whether the box shows the text; closes it.
inline testing::AssertionResult box_says(window_id box, const std::string& text) {
  if (box == 0) return testing::AssertionFailure() << "no box";
  process reference({built("message_box"), text});
  const std::vector<window_id> known{box, window_titled("mine de charbon"),
                                     window_titled("commande manuelle")};
  window_id expected = 0;
  if (!wait_until([&] { return (expected = other_window_than(known)) != 0; }))
    return testing::AssertionFailure() << "no reference";
  const auto same = [&] {  // once both are painted, and out of each other's way
    move_window(box, 0, 0);
    move_window(expected, 0, 600);
    const place a = place_of(box), b = place_of(expected);
    return a.y == 0 && b.y == 600 && a.w == b.w && a.h == b.h && text_of(box).count(black) > 100 &&
           text_of(box) == text_of(expected);
  };
  return wait_until(same, std::chrono::seconds(5))
             ? testing::AssertionSuccess()
             : testing::AssertionFailure() << "another text than " << text;
}

inline void close_box(window_id box) {
  const place where = place_of(box);
  hands::click(where.x + where.w / 2, where.y + where.h / 2);  // the keyboard is its own now
  hands::key("Return");
}
