#!/usr/bin/env python3
"""Makes the index that search.js searches: pages, headings, forms of commands, typed functions, classes and members.

usage: search_index.py INPUT_DIRECTORY TAG_FILE HTML_DIRECTORY

What each field of the index means stands in search.js.
"""
import html
import json
import pathlib
import re
import sys
import xml.etree.ElementTree

REFERENCE = pathlib.Path(__file__).parent
KINDS = {"how-to": 1.3, "command": 1.25, "form": 1.15, "example": 1.0, "class": 1.1, "member": 0.9, "file": 0.8,
         "project": 0.8}
INTERNAL = ("architecture", "decisions")
HEADING = re.compile(r"^(#+) (.*?) \{#([\w-]+)\}$")
FORM = re.compile(r"^\| `([^`]+)` \| .*? \| (@anchor .*) \|$")
MOST_OF_A_SENTENCE = 160


class Index:
    def __init__(self):
        self.pages = {}
        self.entries = []

    def add(self, kind, address, page_title, anchor, title, words=""):
        page = self.pages.setdefault(address, (len(self.pages), page_title))[0]
        self.entries.append([list(KINDS).index(kind), page, anchor, title, words])

    def write(self, path, synonyms):
        index = {"pages": [[address, title] for address, (_, title) in self.pages.items()],
                 "kinds": [[kind, weight, kind in ("command", "form")] for kind, weight in KINDS.items()],
                 "synonyms": synonyms, "entries": self.entries}
        path.write_text("var searchIndex = " + json.dumps(index, separators=(",", ":"), ensure_ascii=False) + ";\n")


def plain(markup):
    """Text without the marks of Markdown and HTML."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", html.unescape(re.sub(r"<[^>]*>", "", markup)))
    return re.sub(r"@(?:ref|subpage) ", "", re.sub(r"[`*]", "", text))


def unique_words(text):
    return " ".join(dict.fromkeys(re.findall(r"\w{2,}", plain(text))))


def sections_of(path):
    """Level, title, anchor and text of each heading. Of code only the comments count: its names are everywhere."""
    sections, in_code = [], False
    for line in path.read_text().splitlines():
        heading = None if in_code else HEADING.match(line)
        if line.startswith("```"):
            in_code = not in_code
        elif heading:
            sections.append([len(heading[1]), plain(heading[2]), heading[3], []])
        elif sections and (not in_code or re.match(r"\s*(//|#) ", line)):
            sections[-1][3].append(line)
    return sections


def add_page(index, path, kind):
    address = page_title = None
    for level, title, anchor, lines in sections_of(path):
        if level == 1:
            address, page_title = "index.html" if anchor == "mainpage" else f"{anchor}.html", title
        index.add(kind, address, page_title, "" if level == 1 else anchor, title, unique_words(" ".join(lines)))


def keywords_of(notation):
    """A form without the letters of its arguments, from the third word on."""
    return " ".join(word for word in notation.split() if len(word) > 2 or word.islower() and len(word) > 1)


def add_command(index, path):
    """The page, a section for each keyword, and an entry for forms that have more keywords."""
    word = path.stem.removeprefix("command_")
    address, sections = f"{path.stem}.html", sections_of(path)
    for level, title, anchor, lines in sections:
        name, _, _ = title.partition(" (")
        by_keywords = {name: []}
        for form in filter(None, map(FORM.match, lines)):
            by_keywords.setdefault(keywords_of(form[1]), []).extend(re.findall(r"@anchor (\w+)", form[2]))
        index.add("command", address, word, anchor if level > 1 else "", name, " ".join(by_keywords.pop(name)))
        for keywords, functions in by_keywords.items():
            index.add("form", address, word, functions[0], keywords, " ".join(functions))


def brief_of(page, anchor):
    """The first sentence that stands below a member of a class or a header."""
    match = re.search(rf'id="{anchor}"(.*?)(?:<a id="|$)', page, re.S)
    text = match and re.search(r'<div class="memdoc">\s*<p>(.*?)</p>', match[1], re.S)
    return plain(re.sub(r"\s+", " ", text[1]))[:MOST_OF_A_SENTENCE] if text else ""


def add_names(index, tag_file, folder):
    """Classes and headers, with their members. A member that stands on two pages counts once."""
    known, pages = set(), {}
    for compound in xml.etree.ElementTree.parse(tag_file).getroot():
        kind, name = compound.get("kind"), compound.findtext("name")
        if kind in ("class", "struct", "union", "file") and not name.endswith((".md", ".dox")):
            file = compound.findtext("filename")
            file = file if file.endswith(".html") else f"{file}.html"
            index.add("file" if kind == "file" else "class", file, name, "", name)
        for member in compound.findall("member"):
            file, anchor = member.findtext("anchorfile"), member.findtext("anchor")
            if (file, anchor) in known or not (folder / file).is_file():
                continue
            known.add((file, anchor))
            page = pages.setdefault(file, (folder / file).read_text())
            index.add("member", file, name, anchor, member.findtext("name"), brief_of(page, anchor))


def synonyms():
    rows = []
    for line in (REFERENCE / "synonyms.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            said, meant = line.split(":")
            rows.append([said.strip(), [one.strip() for one in meant.split(",")]])
    return rows


def check(index, folder):
    """Every address has to lead somewhere."""
    texts = {}
    addresses = {number: address for address, (number, _) in index.pages.items()}
    for _, page, anchor, title, _ in index.entries:
        address = addresses[page]
        text = texts.setdefault(address, (folder / address).read_text())
        if anchor and f'id="{anchor}"' not in text:
            sys.exit(f"search: {title}: {address} has no place {anchor}")


def main():
    pages, tag_file, folder = (pathlib.Path(name) for name in sys.argv[1:])
    index = Index()
    for path in sorted(pages.glob("*.md")) + sorted((pages / "docs").glob("*.md")):
        internal = path.stem in INTERNAL or (path.parent == pages and path.stem != "README")
        add_page(index, path, "project" if internal else "how-to")
    for path in sorted((pages / "docs/examples").glob("*.md")):
        add_page(index, path, "example")
    for path in sorted((pages / "docs/commands").glob("*.md")):
        add_command(index, path) if path.stem.startswith("command_") else add_page(index, path, "command")
    add_names(index, tag_file, folder)
    check(index, folder)
    index.write(folder / "search_index.js", synonyms())
    print(f"search: {len(index.entries)} entries on {len(index.pages)} pages")


if __name__ == "__main__":
    main()
