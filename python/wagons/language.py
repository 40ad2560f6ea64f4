"""The language of what the package says: French, or English where the locale asks for it."""

import os


def in_language(french: str, english: str) -> str:
    """The one of two wordings that LC_ALL, LC_MESSAGES or LANG (the first of them that is set and not empty)
    asks for: English when it begins with "en", French otherwise."""
    for name in ("LC_ALL", "LC_MESSAGES", "LANG"):
        value = os.environ.get(name)
        if value:
            return english if value.startswith("en") else french
    return french
