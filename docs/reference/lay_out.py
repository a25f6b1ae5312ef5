#!/usr/bin/env python3
"""Lays out what Doxygen reads for the reference: pages, headers and examples, and the head that every page gets.

usage: lay_out.py INPUT_DIRECTORY PROTOS_H HEADER

Run it in the project's folder. Prints the files of the pages in the order in which a reader meets them.
"""
import html
import pathlib
import re
import sys

from filter import example_page, filter_file, page_name

REFERENCE = pathlib.Path(__file__).parent
FIRST = "guide"
INTERNAL = ("architecture", "decisions")
LANGUAGES = {".cpp": "cpp", ".h": "cpp", ".c": "cpp", ".py": "python"}
GROUPS = ("geometry", "looks", "lights", "rendering", "files")


def title_of(path):
    return re.search(r"^# (.*)$", path.read_text(), re.M)[1].replace("`", "")


def is_internal(path):
    return path.stem in INTERNAL or path.parent == pathlib.Path(".")


def pages_in_order():
    """The guide, the how-to pages as the README lists them, those that it does not list, and what is internal."""
    readme = pathlib.Path("README.md").read_text()

    def place(path):
        listed = readme.find(f"]({path.as_posix()})")
        return path.stem != FIRST, is_internal(path), listed if listed >= 0 else len(readme), path.name

    pages = [path for path in (*pathlib.Path(".").glob("*.md"), *pathlib.Path("docs").glob("*.md"))
             if path.name != "README.md"]
    return sorted(pages, key=place)


def copy_filtered(path, target):
    place = target / path
    place.parent.mkdir(parents=True, exist_ok=True)
    place.write_text("\n".join(filter_file(path)) + "\n")
    return place


def write_protos(header, target):
    """What the header says of all functions. Their declarations stand on the pages of the commands."""
    head = re.split(r"^// The group ", header.read_text(), flags=re.M)[0]
    place = target / "client/protos/protos.h"
    place.write_text(head + "/// @file\n/// The declarations of the functions stand on the pages of the "
                     "[command words](@ref commands).\n\n#endif\n")
    place.write_text("\n".join(filter_file(place)) + "\n")


def comment_of(text):
    """The first sentence of the comment that a file begins with; command files have none."""
    if not re.match(r'#|//|/\*|"""', text):
        return "Commands for `zant run` and `zant check`."
    lines = []
    for line in re.sub(r'^#!.*\n|"""', "", text).splitlines():
        bare = re.sub(r"^(//|/?\*+/?|#)?\s*", "", line).removesuffix("*/").strip()
        if not bare:
            break
        lines.append(bare)
    return re.split(r"(?<=\.)\s", " ".join(lines))[0]


def examples():
    order = (".cpp", ".h", ".c", ".py", ".zant", ".txt", "")
    return sorted((path for path in pathlib.Path("examples").rglob("*") if path.is_file()),
                  key=lambda path: (path.parts[:-1], order.index(path.suffix), path.name))


def write_examples(target):
    """A page with the source of each file in examples/ and its folders, and one that lists them."""
    folder = target / "docs/examples"
    folder.mkdir(parents=True)
    rows = []
    for path in examples():
        text, name = path.read_text(), example_page(path.name)
        fence = LANGUAGES.get(path.suffix, "{.unparsed}")
        (folder / f"{name}.md").write_text(
            f"# {path.name} {{#{name}}}\n\nThe file `{path}`.\n\n```{fence}\n{text.rstrip()}\n```\n")
        rows.append(f"| @subpage {name} | {html.escape(comment_of(text), quote=False)} |")
    overview = folder / "examples.md"
    overview.write_text("# Examples {#examples}\n\nSmall hosts, each one file, and command files. They are built with the "
                        "project and against an installed copy of it.\n\n| File | |\n|---|---|\n" + "\n".join(rows) + "\n")
    return overview


def link(address, text):
    return f'<a href="$relpath^{address}.html">{html.escape(text)}</a>'


def menu(title, links):
    return f'<details name="menu"><summary>{title}</summary><div>{"".join(links)}</div></details>'


def navigation(pages):
    how_to = [link(page_name(path), title_of(path)) for path in pages if path.stem != FIRST and not is_internal(path)]
    internal = [link(page_name(path), title_of(path)) for path in pages if is_internal(path)]
    groups = [link("commands", "All commands")] + [link(f"group_{group}", group.capitalize()) for group in GROUPS]
    sources = [link("examples", "All examples")] + [link(example_page(path.name), path.name) for path in examples()]
    return "\n".join([link(FIRST, "Guide"), menu("How to", how_to), menu("Commands", groups), menu("Examples", sources),
                      link("annotated", "Classes"), link("files", "Headers"), menu("Project", internal)])


def main():
    target, protos, header = (pathlib.Path(name) for name in sys.argv[1:])
    pages = pages_in_order()
    copied = [copy_filtered(path, target) for path in [pathlib.Path("README.md"), *pages]]
    for folder in ("own", "client", "modern", "testkit"):
        for path in pathlib.Path(folder).rglob("*.h*"):
            if "generator" not in path.parts:
                copy_filtered(path, target)
    copy_filtered(pathlib.Path("docs/reference/namespace.dox"), target)
    write_protos(protos, target)
    overview = write_examples(target)
    header.write_text((REFERENCE / "header.html").read_text().replace("@NAVIGATION@", navigation(pages)))
    how_to = 1 + sum(not is_internal(path) for path in pages)
    order = [*copied[:how_to], target / "docs/commands", overview, *copied[how_to:]]
    print(" ".join(path.as_posix() for path in order))


if __name__ == "__main__":
    main()
