"""test_translations.py PROJECT: each page says the same in both languages, as far as a program can tell."""
import collections
import pathlib
import re
import sys

LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)")
Page = collections.namedtuple("Page", "levels blocks tables links")


def read(path):
    """What is not prose: the levels of headings, blocks of code, tables as rows of cells, files linked to."""
    page, fence, table, before = Page([], [], [], []), False, False, ""
    for line in path.read_text().splitlines():
        if line.startswith("```") or fence:
            if not fence:
                page.blocks.append("")
            page.blocks[-1] += line + "\n"
            fence = not fence if line.startswith("```") else fence
        elif line.startswith("    ") and (not before or before.startswith("    ")):
            if not before:
                page.blocks.append("")
            page.blocks[-1] += line + "\n"
        else:
            if line.startswith("#"):
                page.levels.append(line.split()[0])
            if line.startswith("|"):
                if not table:
                    page.tables.append([])
                page.tables[-1].append(line.replace(r"\|", "").strip("|").split("|"))
            table = line.startswith("|")
            page.links.extend((path.parent / target).resolve() for target in LINK.findall(line))
        before = line
    return page


def quoted(row):
    return sorted(re.findall(r"`[^`]+`", "|".join(row)))


def differences(english, french, in_french):
    """Sentences; in_french gives a page's other half."""
    ours, theirs = read(english), read(french)
    for path, page, other in ((english, ours, french), (french, theirs, english)):
        yield from (f"{path} links to {link}, which is not there" for link in page.links if not link.exists())
        if other.resolve() not in page.links:
            yield f"{path} has no link to {other}"
    if ours.levels != theirs.levels:
        yield f"{french} has headings of the levels {theirs.levels}, not {ours.levels}"
    if len(ours.blocks) != len(theirs.blocks):
        yield f"{french} has {len(theirs.blocks)} blocks of code, not {len(ours.blocks)}"
    for one, other in zip(ours.blocks, theirs.blocks):
        for line, same in zip(one.splitlines() + ["(its end)"], other.splitlines() + ["(its end)"]):
            if line != same:
                yield f"{french} has in a block of code {same!r}, not {line!r}"
                break
    if len(ours.tables) != len(theirs.tables):
        yield f"{french} has {len(theirs.tables)} tables, not {len(ours.tables)}"
    for number, (one, other) in enumerate(zip(ours.tables, theirs.tables), 1):
        if [len(row) for row in one] != [len(row) for row in other]:
            yield f"{french}, table {number}: rows or columns differ in number"
        for n, (row, same) in enumerate(zip(one, other), 1):
            if quoted(row) != quoted(same):
                yield f"{french}, table {number}, row {n} has {quoted(same)}, not {quoted(row)}"
    wanted = {in_french.get(link, link) for link in ours.links} - {french.resolve()}
    for link in sorted(wanted ^ (set(theirs.links) - {english.resolve()})):
        yield f"{french} {'does not link' if link in wanted else 'links'} to {link}, unlike {english}"


project = pathlib.Path(sys.argv[1])
pages = {page: page.parent / "fr" / page.name for page in sorted(project.glob("doc/*.md"))}
if (project / "README.fr.md").exists():
    pages[project / "README.md"] = project / "README.fr.md"
in_french = {english.resolve(): french.resolve() for english, french in pages.items() if french.exists()}
found = [f"{english} has no {french}" for english, french in pages.items() if not french.exists()]
for english, french in pages.items():
    if french.exists():
        found += differences(english, french, in_french)
print("\n".join(found) or f"{len(pages)} pages are the same in both languages")
sys.exit(bool(found) or not pages)
