#pragma once
// The language of what programs say: French, as the texts stand in the source, or English, from the
// catalogue that is made of po/en.po.
#include <initializer_list>
#include <string>

// The text in the language that the locale of messages asks for (LC_ALL, LC_MESSAGES, LANG, the first of
// them that is set and not empty): English when it begins with "en", French otherwise; French too where the
// catalogue is not found or lacks the text. It stays valid, and may be asked for by any thread.
//
// The catalogue is ../share/locale/en/LC_MESSAGES/wagons.mo beside the program's folder, else where the
// project was built, else where it is installed. It is looked for once, when English is asked for first;
// LANGUAGE is set to "en" in the environment then, for the system's gettext() as for children.
[[gnu::format_arg(1)]] const char* tr(const char* french);

// The same with each "{}" in it replaced by the next of the parts.
std::string tr(const char* french, std::initializer_list<std::string> parts);
