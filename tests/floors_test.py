#!/usr/bin/env python3
"""A folder includes only folders above it: the order is that of the table in docs/architecture.md. And the platform is
known to own/ alone, there to sources that are named for it."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = re.compile(r"^\| `([\w/]+)/` \|", re.M)
INCLUDE = re.compile(r'^#include "([^"]+)"', re.M)
PLATFORM = re.compile(r"^ *# *(?:if.*\b(?:_WIN32|__MINGW\w+|__linux__|__unix__|__APPLE__)\b"
                      r"|include <(?:sys/.*|(?:dlfcn|elf|fcntl|io|link|poll|pthread|signal|spawn|unistd|windows)\.h)>).*", re.M)
KNOWS_PLATFORM = re.compile(r"^own/\w+(posix|windows)\.cpp$")


def floor_of(path, floors):
    """The number of the deepest folder of the table that holds the path; none for what stands outside of it."""
    return next((floors.index(folder) for folder in sorted(floors, key=len, reverse=True)
                 if path.startswith(folder + "/")), None)


def main():
    floors = TABLE.findall((ROOT / "docs" / "architecture.md").read_text())
    checked, known, wrong = 0, 0, []
    for file in sorted(path for folder in floors for path in (ROOT / folder).rglob("*.[hci]*")):
        name = file.relative_to(ROOT).as_posix()
        text = file.read_text()
        found = PLATFORM.findall(text)
        known += len(found)
        if not KNOWS_PLATFORM.match(name):
            wrong += [f"{name}: '{line}' belongs into a source of own/ that is named for its platform" for line in found]
        for included in INCLUDE.findall(text):
            above = floor_of(included, floors)
            if above is None:
                continue
            checked += 1
            if above > floor_of(name, floors):
                wrong.append(f"{name} includes {included}, which stands on a floor above it")
    if wrong or checked < 300 or len(floors) < 15 or known < 20:
        sys.exit("\n".join(wrong) or f"only {checked} includes of {len(floors)} folders and {known} of a platform found")
    print(f"{checked} includes between {len(floors)} folders go one way")


if __name__ == "__main__":
    main()
