#pragma once
// The language of what programs say: French, or English where the locale asks for it.

// The one of two wordings that the locale of messages asks for (LC_ALL, LC_MESSAGES, LANG, the first of
// them that is set and not empty): English when it begins with "en", French otherwise. Looked up once.
const char* in_language(const char* french, const char* english);
bool in_french();
