#!/usr/bin/env python3
"""Checks every example of the command reference against an installed package, in all four spellings.

usage: reference_test.py PREFIX

The examples are taken from the pages that the installed program writes for the reference. Every function of the
installed header has to stand there once, as a place and as it is declared. The C++ statements are built
as one program and run on the loopback engine through each encoding: the engine's transcript has to hold the plain text
of the page. Quick text and binary words are converted to text and have to be the same.
"""
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile

from docs_test import PRELUDE, Project, engine_of, run

COMMAND_WORDS = 98
FUNCTIONS = 2165
EXAMPLE = re.compile(r"```cpp\n(.*?)```\n\n.*?" + 3 * r"```\{\.unparsed\}\n(.*?)```\n\n", re.S)
# The engine's transcript shows what these commands bring instead of the commands themselves.
# Nobody types here, and so `interactive` brings nothing: what comes before it stays the last line.
NESTED = {'include "room.zant";': 'echo "included";', 'parse "fg reset;","my plug-in";': "fg reset;",
          "interactive;": "var object8,1;"}
# And the engine refuses what this one says: a window without a width. So nothing of it and of what follows is sent.
REFUSED = "view window,(1,0.5,0.25),(0,2,0);"
OBJECTS = "".join(f"var object{number},1;" for number in ("", *range(2, 9)))


class Example:
    def __init__(self, page, match):
        self.page = page
        self.statements, self.plain, self.quick, self.words = (text.strip() for text in match.groups())

    def fail(self, what, found):
        sys.exit(f"{self.page}: {what} is not {self.plain}\nbut {found}\n{self.statements}")


def read_pages(folder):
    pages = sorted(folder.glob("command_*.md"))
    if len(pages) != COMMAND_WORDS:
        sys.exit(f"{len(pages)} pages of command words, not {COMMAND_WORDS}")
    examples = []
    for path in pages:
        text = path.read_text()
        found = [Example(path.name, match) for match in EXAMPLE.finditer(text)]
        if not found or len(found) != text.count("| Form |"):
            sys.exit(f"{path.name}: {len(found)} examples in {text.count('| Form |')} sections")
        examples += found
    return examples


def check_functions(folder, header):
    """What the compiler declares and what the pages declare, each on the page of its command word, are the same."""
    def squeezed(text):
        return [re.sub(r"\s+", " ", found) for found in re.findall(r"^void \w+\([^;]*\);", text, re.M)]
    declared, places, wanted = [], [], squeezed(header.read_text().replace(" ZANT_NEEDS_FIRST", ""))
    for path in sorted(folder.glob("command_*.md")):
        text, word = path.read_text(), path.stem.removeprefix("command_")
        found = re.findall(r"@anchor (\w+)", text)
        strangers = [name for name in found if not re.match(word + r"\d+u?(_|$)", name)]
        if strangers:
            sys.exit(f"{path.name}: functions of other commands: {strangers}")
        places += found
        declared += squeezed("".join(re.findall(r"```\{\.cpp\}\n(.*?)```", text, re.S)))
    names = [re.match(r"void (\w+)", text)[1] for text in wanted]
    if len(wanted) != FUNCTIONS or sorted(declared) != sorted(wanted) or sorted(places) != sorted(names):
        sys.exit(f"{len(wanted)} functions, {len(places)} places and {len(declared)} declarations on the pages: "
                 f"{sorted(set(declared) ^ set(wanted))[:5]} {sorted(set(places) ^ set(names))[:5]}")


def program_of(examples):
    """Each example between a set of objects that it may name, and a line of the transcript that says its number."""
    blocks = "\n".join(f"static void block{number}(Prototyper& proto) {{\n{example.statements}\n"
                       f"echo1(proto.protos(), \"end {number}\");\n}}" for number, example in enumerate(examples))
    names = ", ".join(f"block{number}" for number in range(len(examples)))
    return (f"{PRELUDE}#include <memory>\n{blocks}\nint main(int, char** argv) {{\n    Library library(argv[1]);\n"
            "    Instance* instance = library.createInstance();\n    if (!instance) return 3;\n"
            f"    for (const auto block : {{{names}}})\n        for (int encoding = 0; encoding < 3; ++encoding) {{\n"
            f"            DirectPrototyper direct(instance);\n            direct.parse(\"{OBJECTS}\");\n"
            "            Prototyper quick(instance), text(new CommandTextBuffer(instance));\n"
            "            Prototyper* protos[] = {&text, &quick, &direct};\n            block(*protos[encoding]);\n"
            "        }\n    library.releaseInstance(instance);\n}\n")


def check_statements(examples, folder, prefix):
    project = Project(folder, prefix)
    page = type("Page", (), {"name": "reference"})
    project.add(page, 0, "cpp", program_of(examples))
    project.build()
    (folder / "room.zant").write_text('echo "included";\n')
    transcript = folder / "transcript"
    result = run([folder / "build" / project.targets["reference", 0], engine_of(prefix / "bin" / "zant")],
                 cwd=folder, stdin=subprocess.DEVNULL, env={**os.environ, "ZANT_LOOPBACK_TRANSCRIPT": str(transcript)})
    if result.returncode:
        sys.exit(f"exit code {result.returncode}\n{result.stdout}")
    lines = transcript.read_text().splitlines()
    for number, example in enumerate(examples):
        sent = [lines[index - 1] for index, line in enumerate(lines) if line == f'echo "end {number}";']
        expected = NESTED.get(example.plain, example.plain)
        if sent != (0 if example.plain == REFUSED else 3) * [expected]:
            example.fail("what the C++ example sent as text, quick text and binary", sent)


def block_of(example):
    """The bytes of the words; what stands beside them has to say the same."""
    block = b""
    for line in example.words.splitlines():
        word = struct.pack("<Q", int(line[:16], 16))
        value = re.match(r"  (-?\d[^ ]*)", line[18:])
        text = re.match(r'  "(.*)"$', line[18:])
        if (value and struct.unpack("<d", word)[0] != float(value[1])) or (text and word.rstrip(b"\0").decode() != text[1]):
            sys.exit(f"{example.page}: {line} says something else than its word")
        block += word
    return block


def check_conversion(examples, what, content, program, folder):
    (folder / "commands").write_bytes(content)
    result = subprocess.run([program, "convert", "--to", "text", folder / "commands"], capture_output=True, text=True)
    converted = result.stdout.splitlines()
    for example, text in zip(examples, converted):
        if text != example.plain:
            example.fail(what, text)
    if result.returncode or len(converted) != len(examples):
        sys.exit(f"{what}: {len(converted)} of {len(examples)} commands\n{result.stderr}")


def main():
    prefix = pathlib.Path(sys.argv[1]).resolve()
    program = prefix / "bin" / "zant"
    folder = pathlib.Path(tempfile.mkdtemp())
    header = prefix / "include/zant/client/protos/protos.h"
    written = run([program, "reference", "--header", header, folder / "pages"])
    if written.returncode:
        sys.exit(written.stdout)
    check_functions(folder / "pages", header)
    examples = read_pages(folder / "pages")
    check_conversion(examples, "quick text", "\n".join(example.quick for example in examples).encode(), program, folder)
    check_conversion(examples, "the binary block", b"".join(block_of(example) for example in examples), program, folder)
    check_statements(examples, folder, prefix)
    shutil.rmtree(folder)
    print(f"reference: {COMMAND_WORDS} command words, {len(examples)} examples in four spellings")


if __name__ == "__main__":
    os.environ.pop("ZANT_LOOPBACK_FAULT", None)
    main()
