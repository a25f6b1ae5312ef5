#!/usr/bin/env python3
"""Builds and runs every block of the README and the pages in docs/, as it is printed, against an installed package.

usage: docs_test.py PREFIX

A block is what lies between ``` fences; the first words of its fence say what is done with it:
  cpp         statements of a function that is given `instance`, or a whole program when it has a main
  cpp scene   statements of a function that is given a zant::session `engine` and a zant::scene `scene`
  cpp plugin  a plug-in, which is rehearsed
  sh          run in a copy of the project's folder, where build/demo holds the installed package
  sh install  run one after another in a copy of the sources, with a home folder of its own
  console     each line after a $ is run in the same way; the other lines are among what it prints, in their order
  cmake       part of a consumer's build
  cmake subproject  the same, with the sources in its folder third_party/zant
  output      what the block before it printed
  python      lines of examples/host.py
  json        a part of the installed description of the interface
Anything else, and what cannot be run, says why in its fence: ```sh not-run: it takes an hour. The reasons are printed.
Commands between single backquotes must exist, with the options that they name.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^```([^\n]*)\n(.*?)^```$", re.S | re.M)
PRELUDE = "#include <atomic>\n#include <cctype>\n#include <cstdio>\n#include <cstring>\n#include <iostream>\n" \
          "#include \"client/host.h\"\n#include \"client/zant.h\"\nusing namespace Zant;\n"
FACE_PRELUDE = "#include <cstdint>\n#include <cstdio>\n#include <string>\n#include <vector>\n#include <zant/zant.hpp>\n"

KINDS = ("sh", "sh install", "console", "cpp", "cpp scene", "cpp plugin", "cmake", "cmake subproject", "output", "python",
         "json")


class Page:
    def __init__(self, path):
        self.name = path.relative_to(ROOT).as_posix()
        text = path.read_text()
        self.prose = FENCE.sub("", text)
        self.blocks = [(match[1].strip(), match[2], text.count("\n", 0, match.start()) + 1)
                       for match in FENCE.finditer(text)]

    def take_unrun(self):
        """Takes the blocks out that say why they are not run. No other block may be unknown."""
        kept = []
        for kind, text, line in self.blocks:
            reason = kind.partition("not-run:")[2].strip()
            if reason:
                print(f"docs: {self.name}:{line} is not run: {reason}")
            elif kind not in KINDS:
                fail(self, line, f"a block of the kind '{kind}' has to say why it is not run")
            else:
                kept.append((kind, text, line))
        self.blocks = kept
        indented = re.search(r"\n\n {4}[^\s-]", self.prose)
        if indented:
            fail(self, 1, "an indented block, which says no kind: " + self.prose[indented.start():][:60])


def fail(page, line, message):
    sys.exit(f"{page.name}:{line}: {message}")


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=1200, **options)


def instance_program(statements):
    return (PRELUDE + f"static void block(Instance* instance) {{\n(void)instance;\n{statements}}}\n"
            "int main(int, char** argv) {\n    Library library(argv[1]);\n"
            "    Instance* instance = library.createInstance();\n    if (!instance) return 3;\n    block(instance);\n"
            "    library.releaseInstance(instance);\n}\n")


def scene_program(statements):
    return (FACE_PRELUDE + "static void block(zant::session& engine, zant::scene& scene) {\n(void)engine;\n"
            + statements + "}\nint main(int, char** argv) {\n    zant::session engine(argv[1]);\n    zant::scene scene(engine);\n"
            "    if (!scene) return 3;\n    block(engine, scene);\n}\n")


class Project:
    """The blocks of all pages as one consumer's project."""

    def __init__(self, folder, prefix):
        self.folder, self.prefix = folder, prefix
        self.lists = ["cmake_minimum_required(VERSION 3.20)", "project(Docs LANGUAGES C CXX)",
                      "set(CMAKE_CXX_STANDARD 17)", "find_package(Zant CONFIG REQUIRED)"]
        self.targets = {}

    def add(self, page, line, kind, text):
        name = re.sub(r"\W", "_", f"{page.name}_{line}")
        statements = f"#line {line + 1} \"{page.name}\"\n{text}"
        if kind == "cpp scene":
            source = scene_program(statements)
        elif kind == "cpp" and "int main(" not in text:
            source = instance_program(statements)
        else:
            source = text
        (self.folder / f"{name}.cpp").write_text(source)
        command = f"add_library({name} MODULE" if kind == "cpp plugin" else f"add_executable({name}"
        library = "Zant::testkit" if "testkit/" in source else "Zant::modern"
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


class Stage:
    """The project's folder as a reader has it after scripts/demo, with the installed package as what was built."""

    def __init__(self, folder, prefix, texts):
        self.folder = folder
        demo = folder / "build" / "demo"
        demo.mkdir(parents=True)
        for entry in ROOT.iterdir():
            if entry.name != "build":
                (folder / entry.name).symlink_to(entry)
        for shared in ("bin", "share"):
            (demo / shared).symlink_to(prefix / shared)
        (demo / "lib").symlink_to(pathlib.Path(engine_of(prefix / "bin" / "zant")).parents[1])
        examples = set(re.findall(r"build/demo/examples/(\w+)", texts))
        if examples:
            commands = [["cmake", "-S", ROOT / "examples", "-B", demo / "examples", "-G", "Ninja",
                         f"-DCMAKE_PREFIX_PATH={prefix}"],
                        ["cmake", "--build", demo / "examples", "--target", *(f"example_{x}" for x in examples)]]
            for command in commands:
                result = run(command)
                if result.returncode:
                    sys.exit(result.stdout)

    def shell(self, page, line, script):
        result = run(["bash", "-e", "-c", script], cwd=self.folder)
        if result.returncode:
            fail(page, line, f"exit code {result.returncode}\n{result.stdout}")
        return result.stdout

    def console(self, page, line, text):
        for part in re.split(r"^\$ ", text, flags=re.M)[1:]:
            command, _, wanted = part.partition("\n")
            printed = run(["bash", "-c", command], cwd=self.folder).stdout
            at = 0
            for row in filter(str.strip, wanted.splitlines()):
                found = printed.find(row + "\n", at)
                if found < 0:
                    fail(page, line, f"$ {command}\nexpected\n{row}\nprinted\n{printed}")
                at = found + len(row)


class Newcomer:
    """Installs from a copy of the sources, as the README says, and builds a project that has them in a folder."""

    def __init__(self, folder):
        self.sources, self.home, self.parent = folder / "sources", folder / "home", folder / "parent"
        for made in (self.home, self.parent / "third_party"):
            made.mkdir(parents=True)

    def copy_sources(self):
        if not self.sources.exists():
            ignored = shutil.ignore_patterns("build", ".git")
            shutil.copytree(ROOT, self.sources, ignore=ignored)
            (self.parent / "third_party" / "zant").symlink_to(self.sources)

    def install(self, page, line, script):
        self.copy_sources()
        environment = {**os.environ, "HOME": str(self.home), "CCACHE_BASEDIR": str(self.sources)}
        result = run(["bash", "-e", "-c", script], cwd=self.sources, env=environment)
        if result.returncode:
            fail(page, line, f"exit code {result.returncode}\n{result.stdout}")

    def build_subproject(self, page, line, text):
        self.copy_sources()
        (self.parent / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.20)\nproject(Parent LANGUAGES C CXX)\n"
            f"add_library(my_plugin MODULE {ROOT}/examples/listener.cpp)\n{text}")
        for command in (["cmake", "-S", ".", "-B", "build", "-G", "Ninja"], ["cmake", "--build", "build"]):
            result = run(command, cwd=self.parent)
            if result.returncode:
                fail(page, line, result.stdout)


def engine_of(program):
    return next(program.parent.parent.glob("**/zant/loopback")).as_posix() + "/"


def check_commands(page, program):
    """The commands inside sentences: they exist, with the options that they are given."""
    for command in re.findall(r"`((?:scripts/|zant |build/demo/bin/zant )[^`]+)`", page.prose):
        words = command.split()
        if words[0].startswith("scripts/"):
            if not os.access(ROOT / words[0], os.X_OK):
                fail(page, 1, f"no {words[0]}")
        elif words[1].startswith("-"):
            if run([program, *words[1:]]).returncode:
                fail(page, 1, command)
        else:
            usage = run([program, words[1], "--help"])
            for option in [word for word in words if word.startswith("--")]:
                if usage.returncode or not re.search(re.escape(option) + r"\b", usage.stdout):
                    fail(page, 1, f"{command}: {usage.stdout}")


def check_quotation(page, line, kind, text, prefix):
    if kind == "python":
        source = (ROOT / "examples" / "host.py").read_text()
        if textwrap.dedent(text) not in "\n".join(unindented(source)):
            fail(page, line, "examples/host.py has other lines")
        return
    interface = json.loads(next(prefix.glob("**/zant_interface.json")).read_text())
    wanted, found = json.loads(text), []
    walk(interface, lambda value: found.append(value) if value == wanted else None)
    if not found:
        fail(page, line, "no such part in the description of the interface")


def unindented(source):
    """The source once for each indentation that a quotation of it may have lost."""
    for depth in range(0, 13, 4):
        yield re.sub(rf"^ {{{depth}}}", "", source, flags=re.M)


def walk(value, visit):
    visit(value)
    for inner in value.values() if isinstance(value, dict) else value if isinstance(value, list) else []:
        walk(inner, visit)


def run_plugin(page, line, target, program):
    module = target.with_name("lib" + target.name + ".so")
    # Each has an address, a kind and a name. One of the kind u keeps the plug-in's file open.
    exported = [line.split()[1:] for line in run(["nm", "-D", "--defined-only", module]).stdout.splitlines()]
    # Templates of the C++ run-time library are exported whatever a plug-in asks for: without optimisation they are there.
    others = [name for kind, name in exported
              if kind == "u" or not re.match(r"zantPlugin|_Z(Z?NK?|TI|TS|TV)?(St|9__gnu_cxx)", name)]
    if not exported or others:
        fail(page, line, f"the plug-in exports {others}")
    result = run([program, "rehearse", module])
    if result.returncode:
        fail(page, line, result.stdout)


def run_cpp(page, line, text, target, program):
    result = run([target, engine_of(program)])
    # A whole program that names the engine's directory itself finds none there: it says so, and ends with 3.
    without = "int main(" in text and result.returncode == 3 and result.stdout
    if result.returncode and not without:
        fail(page, line, f"exit code {result.returncode}\n{result.stdout}")
    return result.stdout


def run_blocks(page, project, stage, newcomer, prefix, counts):
    program = prefix / "bin" / "zant"
    printed = ""
    for kind, text, line in page.blocks:
        counts[kind] = counts.get(kind, 0) + 1
        target = project.folder / "build" / project.targets.get((page.name, line), "")
        if kind == "sh":
            printed = stage.shell(page, line, text)
        elif kind == "sh install":
            newcomer.install(page, line, text)
        elif kind == "cmake subproject":
            newcomer.build_subproject(page, line, text)
        elif kind == "console":
            stage.console(page, line, text)
        elif kind == "cpp plugin":
            run_plugin(page, line, target, program)
        elif kind in ("cpp", "cpp scene"):
            printed = run_cpp(page, line, text, target, program)
        elif kind == "output" and text not in printed:
            fail(page, line, f"expected\n{text}\nprinted\n{printed}")
        elif kind in ("python", "json"):
            check_quotation(page, line, kind, text, prefix)


def main():
    prefix = pathlib.Path(sys.argv[1]).resolve()
    pages = [Page(path) for path in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]]
    folder = pathlib.Path(tempfile.mkdtemp())
    (folder / "blocks").mkdir()
    project = Project(folder / "blocks", prefix)
    for page in pages:
        page.take_unrun()
        check_commands(page, prefix / "bin" / "zant")
        for kind, text, line in page.blocks:
            if kind in ("cpp", "cpp scene", "cpp plugin"):
                project.add(page, line, kind, text)
            elif kind == "cmake":
                project.add_cmake(text)
    project.build()
    (folder / "project").mkdir()
    stage = Stage(folder / "project", prefix, "".join(text for page in pages for _, text, _ in page.blocks))

    newcomer = Newcomer(folder)
    counts = {}
    for page in pages:
        run_blocks(page, project, stage, newcomer, prefix, counts)
    shutil.rmtree(folder)
    for wanted in KINDS:
        if not counts.get(wanted):
            sys.exit(f"no {wanted} block was found: the pages are not where they should be")
    print("docs: " + ", ".join(f"{count} {kind}" for kind, count in sorted(counts.items())))


if __name__ == "__main__":
    os.environ.pop("ZANT_LOOPBACK_FAULT", None)
    main()
