#!/usr/bin/env python3
"""Spells the catalogue out a second time, for the tests: one row per typed command function.

Shares nothing with the generator. Keyword numbers are read from the comments beside the words in enums.cpp, so that a
word that has slipped into another slot is noticed.

Usage: expand.py ENUMS.CPP CATALOGUE-FILE... > rows.cpp
"""

import re
import sys

ARGUMENTS = ["d", "i", "b", "u", "s", "V", "A", "C", "S", "N", "B", "M", "X", "Ld", "LV", "LC", "LS"]


def read_tables(source):
    """Table name -> {number: word}, by the number that stands beside each word."""
    tables = {}
    for name, body in re.findall(r"const char\* const (\w+)\[\d+\] = \{(.*?)\};", source, re.S):
        words = re.findall(r"/\*\s*(\d+) \*/ (?:\"(\w+)\"|nullptr),", body)
        tables[name] = {int(number): word for number, word in words if word}
    return tables


def read_catalogue(paths):
    """The catalogue's lines as they are: tails, and groups with their commands."""
    tails, groups = {}, []
    for path in paths:
        with open(path, encoding="ascii") as file:
            for line in file:
                line = line.split("#")[0].rstrip()
                if line.startswith("tail "):
                    name, value = re.fullmatch(r"tail (\S+) = (.*)", line).groups()
                    tails[name] = value
                elif line.startswith("group "):
                    groups.append((line.split()[1], []))
                elif line.startswith("command "):
                    groups[-1][1].append((line.split()[1], {}, []))
                elif line.startswith("    after "):
                    where, table = line.strip()[len("after "):].split(": ")
                    groups[-1][1][-1][1][where] = table
                elif line.startswith("    "):
                    groups[-1][1][-1][2].append(line.strip())
    return tails, groups


class Expansion:
    def __init__(self, tables, tails, groups):
        self.tables = tables
        self.tails = tails
        self.lines = {command[0]: command[2] for group in groups for command in group[1]}

    def forms(self, line):
        """All forms of one line, as lists of words."""
        if line == "(bare)":
            return [[]]
        inner = re.fullmatch(r"([^\[\]]*)\[(.*)\]", line)
        if inner:
            head = inner.group(1).strip()
            longer = self.forms((head + " " + inner.group(2)).strip())
            return self.with_tail(head.split()) + longer
        return self.with_tail(line.split())

    def with_tail(self, words):
        if not words or words[-1] not in self.tails:
            return [words]
        return [words[:-1] + rest for rest in self.tail_forms(self.tails[words[-1]])]

    def tail_forms(self, value):
        if value.startswith("keywords of "):
            table = self.tables[value.split()[-1]]
            return [[table[number]] for number in sorted(table)]
        lines = self.lines[value.split()[-1]] if value.startswith("forms of ") else value.split("; ")
        return [form for line in lines for form in self.forms(line)]


def function_name(command, words, wide):
    count = sum(word in ARGUMENTS for word in words)
    keywords = [word for word in words if word not in ARGUMENTS]
    return "_".join([command + str(count) + ("u" if wide else "")] + keywords)


def sequence(command, words, paths, tables):
    """What the function sends: number:word for a keyword, the letter of an argument."""
    def keyword(table, word):
        numbers = [number for number, other in tables[table].items() if other == word]
        return "%d:%s" % (numbers[0], word)

    parts, path = [keyword("cmd_strings", command)], command
    for word in words:
        parts.append(word if word in ARGUMENTS else keyword(paths[path], word))
        path += " " + word
    return " ".join(parts)


def rows(tables, tails, groups):
    expansion = Expansion(tables, tails, groups)
    for group, commands in groups:
        for command, paths, lines in commands:
            for words in [form for line in lines for form in expansion.forms(line)]:
                for wide in [False, True] if "s" in words else [False]:
                    letters = [word for word in words if word in ARGUMENTS]
                    types = ", ".join("W" if wide and letter == "s" else letter for letter in letters)
                    name = function_name(command, words, wide)
                    yield '    {"%s", "%s", "%s", "%s", %s, callOf<Parameters<%s>>(%s)},' % (
                        group, command, name, sequence(command, words, paths, tables), str(wide).lower(), types, name)


def main(enums, catalogue):
    with open(enums, encoding="ascii") as file:
        tables = read_tables(file.read())
    print('#include "tests/vocabulary/row.h"\n\nnamespace Vocabulary {\n\nconst std::vector<Row> rows = {')
    print("\n".join(rows(tables, *read_catalogue(catalogue))))
    print("};\n\n}  // namespace Vocabulary")


main(sys.argv[1], sys.argv[2:])
