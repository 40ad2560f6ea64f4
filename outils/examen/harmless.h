#pragma once
#include <string>

// Text of strangers (names, standard error, faults) as one line that is safe in a terminal, in XML and on a
// page: valid UTF-8, of which control characters, marks of direction and bytes that are no UTF-8 are written
// as
// "\n", "\t", "\x1b", "\u202e"; cut to `most` characters, the last of them "…" then.
std::string harmless(const std::string& text, std::size_t most = 200);

// The same with "&", "<", ">" and quotes as XML and HTML want them.
std::string as_markup(const std::string& text, std::size_t most = 200);

// Of UTF-8.
std::size_t characters_in(const std::string& text);
