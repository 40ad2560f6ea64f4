#pragma once
// The box in which a plant shows a fault. Include gtest first.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/screen.h"
#include "tests/support/wait.h"

inline std::string not_loading(char wagon) {
  return std::string("ERREUR:\n Le wagon ") + wagon +
         " n'etait pas à son poste de chargement: remplissage partiel ou aucun remplissage!!!";
}
inline std::string not_unloading(char wagon) {
  return std::string("ERREUR:\n Le wagon ") + wagon +
         " n'etait pas à son poste de dechargement: aucun remplissage possible du wagon C !!!";
}

// A box's picture without its icon and its button, whose borders are the program's style.
inline picture text_of(window_id box) {
  const picture whole = picture_of(box);
  return whole.part(65, 0, whole.width() - 65, whole.height() - 40);
}

inline picture button_text_of(window_id box) {
  const picture whole = picture_of(box);
  return whole.part(whole.width() - 94, whole.height() - 31, 50, 15);
}

// Moves a box out of the way. The toolkit shows it in a corner, then moves it to the mouse, then paints it:
// only a painted one stays where it is put.
inline void put_aside(window_id box, int x, int y) {
  ASSERT_TRUE(wait_until([&] { return text_of(box).count(black) > 100; }));
  move_window(box, x, y);
}

// Whether the box shows the text: pixel by pixel like one that was asked to.
inline testing::AssertionResult box_says(window_id box, const std::string& text) {
  if (box == 0) return testing::AssertionFailure() << "no box";
  put_aside(box, 0, 0);
  process reference({built("message_box"), text, "Fermer"});
  window_id expected = 0;
  std::vector<window_id> known{box};
  for (const char* const title : {"mine de charbon", "commande manuelle", "trieuse"})
    known.push_back(window_titled(title));
  if (!wait_until([&] { return (expected = other_window_than(known)) != 0; }))
    return testing::AssertionFailure() << "no reference";
  put_aside(expected, 0, 600);
  const auto alike = [&] {
    return text_of(box) == text_of(expected) && button_text_of(box) == button_text_of(expected);
  };
  return wait_until(alike, std::chrono::seconds(5))
             ? testing::AssertionSuccess()
             : testing::AssertionFailure() << "another text than " << text;
}

inline void close_box(window_id box) {
  const place where = place_of(box);
  hands::click(where.x + where.w / 2, where.y + where.h / 2);  // the keyboard is its own now
  hands::key("Return");
}
