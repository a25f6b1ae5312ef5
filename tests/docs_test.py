#!/usr/bin/env python3
"""Builds and runs every block of the README and the pages in docs/ against an installed package.

usage: docs_test.py PREFIX

A block is what stands between ``` fences; its first word says what is done with it:
  cpp         statements of a function that is given `instance`, or a whole program when it has a main
  cpp plugin  a plug-in, which is rehearsed
  sh          run in the project's folder, with the installed program; the project's own scripts run elsewhere
  cmake       part of a consumer's build
  output      what the block before it printed
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^```([^\n]*)\n(.*?)^```$", re.S | re.M)
PRELUDE = "#include <atomic>\n#include <cctype>\n#include <cstdio>\n#include <cstring>\n#include <iostream>\n" \
          "#include \"client/host.h\"\n#include \"client/zant.h\"\nusing namespace Zant;\n"


class Page:
    def __init__(self, path):
        self.name = path.relative_to(ROOT).as_posix()
        text = path.read_text()
        self.blocks = [(match[1].strip(), match[2], text.count("\n", 0, match.start()) + 1)
                       for match in FENCE.finditer(text)]


def fail(page, line, message):
    sys.exit(f"{page.name}:{line}: {message}")


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=300, **options)


class Project:
    """The blocks of all pages as one consumer's project."""

    def __init__(self, folder, prefix):
        self.folder, self.prefix = folder, prefix
        self.lists = ["cmake_minimum_required(VERSION 3.20)", "project(Docs LANGUAGES C CXX)",
                      "set(CMAKE_CXX_STANDARD 17)", "find_package(Zant CONFIG REQUIRED)"]
        self.targets = {}

    def add(self, page, line, kind, text):
        name = re.sub(r"\W", "_", f"{page.name}_{line}")
        whole = kind != "cpp" or "int main(" in text
        source = text if whole else (
            PRELUDE + f"static void block(Instance* instance) {{\n(void)instance;\n#line {line + 1} \"{page.name}\"\n"
            + text + "}\nint main(int, char** argv) {\n    Library library(argv[1]);\n"
            "    Instance* instance = library.createInstance();\n    if (!instance) return 3;\n    block(instance);\n"
            "    library.releaseInstance(instance);\n}\n")
        (self.folder / f"{name}.cpp").write_text(source)
        command = f"add_library({name} MODULE" if kind == "cpp plugin" else f"add_executable({name}"
        library = "Zant::testkit" if "testkit/" in source else "Zant::client"
        self.lists += [f"{command} {name}.cpp)", f"target_link_libraries({name} PRIVATE {library})"]
        if kind == "cpp plugin":
            self.lists.append(f"set_target_properties({name} PROPERTIES CXX_VISIBILITY_PRESET hidden)")
        self.targets[page.name, line] = name

    def add_cmake(self, text):
        wanted = set(re.findall(r"target_link_libraries\((\w+)", text))
        for name in wanted:
            (self.folder / f"{name}.cpp").write_text("int main() { return 0; }\n")
            self.lists.append(f"add_executable({name} {name}.cpp)")
        self.lists.append(text)

    def build(self):
        (self.folder / "CMakeLists.txt").write_text("\n".join(self.lists) + "\n")
        for command in (["cmake", "-S", ".", "-B", "build", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={self.prefix}"],
                        ["cmake", "--build", "build"]):
            result = run(command, cwd=self.folder)
            if result.returncode:
                sys.exit(result.stdout)


def run_shell(page, line, text, program, folder):
    lines = [row for row in text.splitlines() if row and not re.match(r"scripts/(demo|test|bench)\b", row)]
    script = "\n".join(lines).replace("build/demo/bin/zant", str(program)).replace("build/", f"{folder}/")
    script = script.replace("/opt/engine/", f"{engine_of(program)}")
    result = run(["bash", "-e", "-c", script], cwd=ROOT)
    if result.returncode:
        fail(page, line, f"exit code {result.returncode}\n{result.stdout}")
    return result.stdout


def engine_of(program):
    return next(program.parent.parent.glob("**/zant/loopback")).as_posix() + "/"


def main():
    prefix = pathlib.Path(sys.argv[1]).resolve()
    program = prefix / "bin" / "zant"
    pages = [Page(path) for path in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]]
    folder = pathlib.Path(tempfile.mkdtemp())
    project = Project(folder, prefix)
    for page in pages:
        for kind, text, line in page.blocks:
            if kind in ("cpp", "cpp plugin"):
                project.add(page, line, kind, text)
            elif kind == "cmake":
                project.add_cmake(text)
    project.build()

    counts = {}
    for page in pages:
        printed = ""
        for kind, text, line in page.blocks:
            counts[kind] = counts.get(kind, 0) + 1
            target = folder / "build" / project.targets.get((page.name, line), "")
            if kind == "sh":
                printed = run_shell(page, line, text, program, folder)
            elif kind == "cpp plugin":
                module = target.with_name("lib" + target.name + ".so")
                exported = run(["nm", "-D", "--defined-only", module]).stdout.split()[2::3]
                if not exported or any(not symbol.startswith("zantPlugin") for symbol in exported):
                    fail(page, line, f"the plug-in exports {exported}")
                result = run([program, "rehearse", module])
                if result.returncode:
                    fail(page, line, result.stdout)
            elif kind == "cpp":
                result = run([target, engine_of(program)])
                # A whole program names the engine's directory itself: it must survive that none is there.
                if result.returncode and not ("int main(" in text and result.returncode == 3):
                    fail(page, line, f"exit code {result.returncode}\n{result.stdout}")
                printed = result.stdout
            elif kind == "output" and text not in printed:
                fail(page, line, f"expected\n{text}\nprinted\n{printed}")
    shutil.rmtree(folder)
    for wanted in ("sh", "cpp", "cpp plugin", "cmake", "output"):
        if not counts.get(wanted):
            sys.exit(f"no {wanted} block was found: the pages are not where they should be")
    print("docs: " + ", ".join(f"{count} {kind or 'plain'}" for kind, count in sorted(counts.items())))


if __name__ == "__main__":
    os.environ.pop("ZANT_LOOPBACK_FAULT", None)
    main()
