#!/usr/bin/env python3
"""Adds the headings of all pages to the search of a reference that Doxygen has built.

usage: index_headings.py HTML_DIRECTORY PAGE...

Doxygen's search finds names and titles of pages by how they begin. With this it finds headings as well, by how each of
their words begins: "imageSampler", "image sampler" and "sampler" give the heading "sett imageSampler (image sampler)".
"""
import json
import pathlib
import re
import sys

from filter import filter_page

HEADING = re.compile(r"^(#+) (.*) \{#([\w-]+)\}$")
SHORTEST_WORD = 3


def headings_of(path):
    """Title and address of each heading below the page's own."""
    file = None
    for line in filter_page(path):
        heading = HEADING.match(line)
        if not heading:
            continue
        if heading[1] == "#":
            page = heading[2]
            file = "index.html" if heading[3] == "mainpage" else f"{heading[3]}.html"
        else:
            yield heading[2], page, f"{file}#{heading[3]}"


def key_of(text):
    """As convertToId() of the search page spells what is typed."""
    return "".join(c if re.match(r"[a-z0-9]", c) or ord(c) >= 128 else f"_{ord(c):02x}" for c in text.lower())


def entries_of(path, html):
    for title, page, address in headings_of(path):
        file, anchor = address.split("#")
        if f'id="{anchor}"' not in (html / file).read_text():
            sys.exit(f"{path}: {file} has no heading {anchor}")
        name, _, spoken = title.rstrip(")").partition(" (")
        for text in (name, spoken):
            for word in re.finditer(r"[\w-]+", text):
                if len(word[0]) >= SHORTEST_WORD or word.start() == 0:
                    found = text[word.start():]
                    shown = f"{found}: {name}" if text == spoken else name
                    yield found, [shown, [f"../{address}", 1, page]]


def add(entries, html):
    """The entries of each first letter stand in a file of their own."""
    letters = re.search(r'0: "(.*?)"', (html / "search" / "searchdata.js").read_text())[1]
    by_letter = {}
    for text, entry in entries:
        by_letter.setdefault(text[0].lower(), []).append((key_of(text), entry))
    for letter, more in by_letter.items():
        if letter not in letters:  # no name begins with it, and the search does not look for it
            continue
        file = html / "search" / f"all_{letters.index(letter):x}.js"
        present = file.read_text().splitlines()
        rows = [row.rstrip(",") for row in present if row.startswith("  [")]
        rows += [f"  ['{key}_h{number}',{json.dumps(entry)}]" for number, (key, entry) in enumerate(more)]
        rows.sort(key=lambda row: re.sub(r"_h?\d+$", "", row.split("'")[1]))
        file.write_text("var searchData=\n[\n" + ",\n".join(rows) + "\n];\n")


def main():
    html = pathlib.Path(sys.argv[1])
    entries = [entry for name in sys.argv[2:] for entry in entries_of(pathlib.Path(name), html)]
    add(entries, html)
    print(f"search: {len(set(entry[1][0] for _, entry in entries))} headings added")


if __name__ == "__main__":
    main()
