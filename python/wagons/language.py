"""The language of what the package says: French, as the texts stand in it, or English, from the programs' catalogue."""

import gettext
import os
from functools import cache
from pathlib import Path


@cache
def _english() -> gettext.NullTranslations:
    """The catalogue is looked for in TEXTDOMAINDIR where that is set, else in share/locale of the folders above the
    package, be it installed or in a built project."""
    given, above = os.environ.get("TEXTDOMAINDIR"), Path(__file__).resolve().parents
    folders = [given] if given else [str(folder / part / "share/locale") for folder in above for part in ("", "build")]
    found = [folder for folder in folders if gettext.find("wagons", folder, ["en"])]
    return gettext.translation("wagons", found[0] if found else None, ["en"], fallback=True)


def tr(french: str) -> str:
    """The text in the language that LC_ALL, LC_MESSAGES or LANG (the first of them that is set and not empty)
    asks for: English when it begins with "en", French otherwise, and where there is no catalogue."""
    for name in ("LC_ALL", "LC_MESSAGES", "LANG"):
        value = os.environ.get(name)
        if value:
            return _english().gettext(french) if value.startswith("en") else french
    return french
