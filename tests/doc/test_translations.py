"""test_translations.py PROJECT: each page says the same in both languages, as far as a program can tell."""
import os
import re
import sys
from itertools import zip_longest
from pathlib import Path


def read(path):
    """What is not prose: blocks of code as lists of lines, headings, tables as rows of cells, links and their anchors."""
    blocks, headings, tables, links = [], [], [], []
    fenced, before = False, ""
    for line in path.read_text(encoding="utf-8").splitlines():
        indented = line.startswith("    ") and (not before or before.startswith("    "))
        if fenced or indented or line.startswith("```"):
            if not (fenced or indented and before):
                blocks.append([])
            blocks[-1].append(line)
            fenced ^= line.startswith("```")
        elif line.startswith("|"):
            if not before.startswith("|"):
                tables.append([])
            tables[-1].append(line.strip("|").split("|"))
        elif line.startswith("#"):
            headings.append(line)
        if not (fenced or indented):
            links += [(Path(os.path.relpath(path.parent / (to or path.name))), anchor)
                      for to, anchor in re.findall(r"\]\(([^)#:]*)#?([^):]*)\)", line)]
        before = line
    return blocks, headings, tables, links


def anchors(page):
    """What a heading can be called by, where pages are shown."""
    return [re.sub(r"[^\w -]", "", heading.lower()).strip().replace(" ", "-") for heading in read(page)[1]]


def fixed(row):
    """What no translation changes: texts in backticks and digits."""
    return sorted(re.findall(r"`[^`]+`|\d+", "|".join(row)))


def differences(english, french):
    blocks, headings, tables, all_links = read(english)
    french_blocks, french_headings, french_tables, all_french_links = read(french)
    for path, to in ((english, all_links), (french, all_french_links)):
        yield from (f"{path} links to {link}#{anchor}, which is not there" for link, anchor in to
                    if not link.exists() or anchor and anchor not in anchors(link))
    levels, french_levels = ([line.split()[0] for line in lines] for lines in (headings, french_headings))
    links, french_links = ([link for link, _ in to] for to in (all_links, all_french_links))
    if levels != french_levels:
        yield f"{french} has the headings {' '.join(french_levels)}, {english} has {' '.join(levels)}"
    if len(blocks) != len(french_blocks):
        yield f"{french} has {len(french_blocks)} blocks of code, {english} has {len(blocks)}"
    for block, french_block in zip(blocks, french_blocks):
        lines = [pair for pair in zip_longest(block, french_block, fillvalue="(its end)") if pair[0] != pair[1]]
        if lines:
            yield f"{french} has in a block of code {lines[0][1]!r}, {english} has {lines[0][0]!r}"
    if len(tables) != len(french_tables):
        yield f"{french} has {len(french_tables)} tables, {english} has {len(tables)}"
    for n, (table, french_table) in enumerate(zip(tables, french_tables), 1):
        if [len(row) for row in table] != [len(row) for row in french_table]:
            yield f"{french}, table {n}: its rows or columns are not as many as in {english}"
        for row, french_row in zip(table, french_table):
            if fixed(row) != fixed(french_row):
                yield f"{french}, table {n} has {fixed(french_row)}, {english} has {fixed(row)}"
    if french not in links or english not in french_links:
        yield f"{english} and {french} do not lead to each other"
    # Otherwise both lead to the same, a French page to French ones.
    wanted = {pages.get(link, link) for link in links if link != french}
    for link in sorted(wanted ^ {link for link in french_links if link != english}):
        yield f"{french} {'does not link' if link in wanted else 'links'} to {link}, unlike {english}"


os.chdir(sys.argv[1])
pages = {page: page.parent / "fr" / page.name for page in sorted(Path("doc").glob("*.md"))}
pages |= {page: page.with_suffix(".fr.md") for page in (Path("README.md"), Path("python/README.md"))}
found = [f"{english} has no {french}" for english, french in pages.items() if not french.exists()]
for english, french in pages.items():
    if french.exists():
        found += differences(english, french)
print("\n".join(found) or f"{len(pages)} pages are the same in both languages")
sys.exit(bool(found) or not pages)
