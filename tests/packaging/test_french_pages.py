"""test_french_pages.py <folder of manual pages>: each page has a French one in fr/, with the same options, numbers,
references and sections, so that who changes one is reminded of the other."""
import collections
import pathlib
import re
import sys

english_pages = pathlib.Path(sys.argv[1])


def facts(page):
    text = re.sub(r"\A'.*|\\f.|\\~", " ", page.read_text("UTF-8").replace(r"\-", "-"))
    return {
        "options": set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", text)),
        "numbers": collections.Counter(re.findall(r"\d+", text)),
        "references": collections.Counter(re.findall(r"(?m)^\..*?(\w+) \(\d\)", text)),
        "sections": len(re.findall(r"(?m)^\.S[HS]", text)),
    }


wrong = []
for page in sorted(english_pages.glob("*.1")):
    french_page = english_pages / "fr" / page.name
    if not french_page.exists():
        wrong.append(f"{page.name}: no French page")
        continue
    english, french = facts(page), facts(french_page)
    wrong += [f"{page.name}: {what}: {english[what]} in English, {french[what]} in French"
              for what in english if english[what] != french[what]]
sys.exit("\n".join(wrong) or None)
