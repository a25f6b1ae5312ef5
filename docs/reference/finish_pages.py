#!/usr/bin/env python3
"""Links the typed functions in code to their place on the page of their command, and refuses pages that are too large.

usage: finish_pages.py INPUT_DIRECTORY HTML_DIRECTORY
"""
import pathlib
import re
import sys

LARGEST = 500_000
CODE = re.compile(r'<div class="line">.*?</div>|<code>[^<]*</code>')
NAME = re.compile(r"(?<!\w)([a-zA-Z]+\d+u?(?:_\w+)?)(?=\(|</code>)")  # parameters have such names too
SCRIPTED = re.compile(r' onclick="[^"]*"')  # of Doxygen's scripts, which no page loads
LOADED = re.compile(r'(?:src|href)="([^"#?]+\.(?:js|css))"')


def functions_of(pages):
    """The address of each typed function."""
    return {function: f"{path.stem}.html#{function}" for path in pages.glob("command_*.md")
            for function in re.findall(r"@anchor (\w+)", path.read_text())}


def linked(text, functions):
    def link(match):
        address = functions.get(match[1])
        return f'<a class="code" href="{address}">{match[1]}</a>' if address else match[1]
    return CODE.sub(lambda code: NAME.sub(link, code[0]), text)


def weight_of(path, folder):
    """Bytes of a page with the scripts and styles that it loads."""
    parts = {folder / name for name in LOADED.findall(path.read_text())}
    return path.stat().st_size + sum(part.stat().st_size for part in parts)


def main():
    pages, folder = (pathlib.Path(name) for name in sys.argv[1:])
    functions = functions_of(pages / "docs/commands")
    for path in folder.glob("*.html"):
        text = path.read_text()
        new = SCRIPTED.sub("", linked(text, functions))
        if new != text:
            path.write_text(new)
    weights = {path.name: weight_of(path, folder) for path in folder.glob("*.html")}
    weights["search_index.js"] = (folder / "search_index.js").stat().st_size
    largest = max(weights, key=weights.get)
    too_large = [f"{name}: {weight} bytes" for name, weight in weights.items() if weight > LARGEST]
    if too_large:
        sys.exit(f"more than {LARGEST} bytes to load:\n" + "\n".join(too_large))
    print(f"pages: {len(weights) - 1}, the largest {largest} with {weights[largest]} bytes")


if __name__ == "__main__":
    main()
