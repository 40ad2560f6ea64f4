#pragma once
// Text in pages of the viewer's markup.

#include <string>
#include <vector>

// Of a page, in characters: what fits on paper.
constexpr int page_width = 108;
constexpr const char* columns_for_text = "#C T108 T";

// What the markup or its printed form would take for its own: "#", "(", ")" and backslashes become "*", "[",
// "]" and "/". Strangers' text must have been made harmless before.
std::string in_page(const std::string& text);

// The text, made fit for the page, as lines of columns_for_text, broken at blanks where it has some.
void add_wrapped(std::vector<std::string>& page, const std::string& text);
