#!/usr/bin/env python3
"""A folder includes only folders above it: the order is that of the table in docs/architecture.md."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = re.compile(r"^\| `([\w/]+)/` \|", re.M)
INCLUDE = re.compile(r'^#include "([^"]+)"', re.M)


def floor_of(path, floors):
    """The number of the deepest folder of the table that holds the path; none for what stands outside of it."""
    return next((floors.index(folder) for folder in sorted(floors, key=len, reverse=True)
                 if path.startswith(folder + "/")), None)


def main():
    floors = TABLE.findall((ROOT / "docs" / "architecture.md").read_text())
    checked, wrong = 0, []
    for file in sorted(path for folder in floors for path in (ROOT / folder).rglob("*.[hci]*")):
        name = file.relative_to(ROOT).as_posix()
        for included in INCLUDE.findall(file.read_text()):
            above = floor_of(included, floors)
            if above is None:
                continue
            checked += 1
            if above > floor_of(name, floors):
                wrong.append(f"{name} includes {included}, which stands on a floor above it")
    if wrong or checked < 300 or len(floors) < 15:
        sys.exit("\n".join(wrong) or f"only {checked} includes of {len(floors)} folders were found")
    print(f"{checked} includes between {len(floors)} folders go one way")


if __name__ == "__main__":
    main()
