#!/usr/bin/env python3
"""The first three recipes are what plug-in authors copy: they are short, and build without a warning with either
compiler, in C++17 and C++20, with and without exceptions.

usage: recipes_test.py HEADERS COMPILER...
"""
import concurrent.futures
import functools
import itertools
import os
import pathlib
import re
import subprocess
import sys

RECIPES = pathlib.Path(__file__).resolve().parent.parent / "examples" / "recipes"
# What uses the engine: the recipe, and what main() does after it has looked at its arguments.
PIECES = re.compile(r"^// ---- The recipe\n(.*?)^// ---- End of the recipe$.*^        return 2;\n    }\n(.*?)^}$", re.S | re.M)
CODE = re.compile(r"^ *(?!//)\S", re.M)
SHORT = ("mesh.cpp", "camera.cpp", "picture.cpp")
LONGEST = 25
WARNINGS = "-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Werror".split()


def check_length(program):
    lines = sum(len(CODE.findall(piece)) for piece in PIECES.search((RECIPES / program).read_text()).groups())
    print(f"{program}: {lines} lines of code use the engine")
    return [] if lines <= LONGEST else [f"{program}: they are to be at most {LONGEST}"]


def check_build(headers, build):
    program, compiler, standard, exceptions = build
    # With optimisation, which is when the compilers look for values that are not set.
    command = [compiler, f"-std={standard}", *exceptions, "-O2", *WARNINGS, "-I", headers, "-c",
               RECIPES / program, "-o", "/dev/null"]
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return [] if result.returncode == 0 else [f"{' '.join(map(str, command))}\n{result.stdout}"]


def main():
    headers, compilers = sys.argv[1], sys.argv[2:]
    faults = sum(map(check_length, SHORT), [])
    builds = list(itertools.product(SHORT, compilers, ("c++17", "c++20"), ([], ["-fno-exceptions"])))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        faults += sum(workers.map(functools.partial(check_build, headers), builds), [])
    if faults or not builds:
        sys.exit("\n".join(faults) or "no compiler was given")
    print(f"{len(builds)} builds of recipes are without a warning")


if __name__ == "__main__":
    main()
