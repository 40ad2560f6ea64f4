"""test_catalogue.py PROJECT: po/en.po has the English of every text of the programs, and of nothing else."""
import re
import subprocess
import sys
import tempfile
from difflib import unified_diff
from pathlib import Path


def told(*words):
    return subprocess.run(words, check=True, stdout=subprocess.PIPE, text=True).stdout


def messages(file, *choice):
    """A message a paragraph, wherever it stands in the sources."""
    return told("msgattrib", *choice, "--no-location", "--no-wrap", "--sort-output", file).split("\n\n")


project = Path(sys.argv[1])
catalogue = project / "po/en.po"
with tempfile.TemporaryDirectory() as folder:
    fresh, compiled = Path(folder, "en.po"), Path(folder, "wagons.mo")
    told(project / "script/translations", fresh)
    found = list(unified_diff(messages(catalogue), messages(fresh), "po/en.po", "the sources", n=0, lineterm=""))
    for choice in ("--untranslated", "--only-fuzzy"):
        found += [f"{choice}: {text}" for text in messages(catalogue, choice)[1:]]
    told("msgfmt", "--check-format", "--output-file", compiled, catalogue)
for text in messages(catalogue):
    french, _, english = text.partition("\nmsgstr ")
    if french.count("{}") != english.count("{}"):
        found.append(f"not as many places: {text}")
print("\n".join(found) or "every text is translated")
sys.exit(bool(found))
