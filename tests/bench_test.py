#!/usr/bin/env python3
"""Runs bench/run.py on programs that are scripts: one misses its target, one dies, and the others run all the same.

So is the counter of instructions: it writes the counts that stand in a file beside the program."""
import os
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent

LINES = [  # contest, contestant, side, ns, quartiles, ratio, low, high, target, repeated
    "adding <&>\tours\tours\t50\t40\t60\t0.5\t0.4\t0.6\t0.3\t0",
    "adding <&>\tpeer\tpeer\t100\t90\t110\t1\t1\t1\t0\t0",
    "noisy\tours\tours\t110\t90\t200\t1.1\t0.9\t1.4\t1\t0",
    "noisy\tpeer\tpeer\t100\t90\t110\t1\t1\t1\t0\t0",
    "noisy\tfar peer\tpeer\t9000\t90\t110\t90\t80\t99\t0\t0",
    "noisy\tno peer\taside\t50\t40\t60\t0.5\t0.4\t0.6\t0\t0",
    "alone\tours\tours\t7\t6\t8\t0\t0\t0\t0\t0",
]


def demand(condition, message):
    if not condition:
        sys.exit(f"bench_test: {message}")


def program(folder, name, lines, code):
    body = "".join(f"printf '%s\\n' '{line}' >> \"$ZANT_BENCH_RESULTS\"\n" for line in lines)
    path = folder / f"{name}_bench"
    path.write_text(f"#!/bin/sh\necho '{name} ran'\n{body}exit {code}\n")
    path.chmod(0o755)


def counter(folder):
    """A valgrind of our own, which writes parts as callgrind does."""
    path = folder / "valgrind"
    path.write_text(f"""#!{sys.executable}
import pathlib, sys
out = next(word.partition("=")[2] for word in sys.argv if word.startswith("--callgrind-out-file="))
file = pathlib.Path(sys.argv[-1] + ".counts")
for part, line in enumerate(file.read_text().splitlines() if file.exists() else sys.exit(7), 1):
    label, _, total = line.rpartition(" ")
    pathlib.Path(f"{{out}}.{{part}}").write_text(f"desc: Trigger: Client Request: {{label}}\\ntotals: {{total}}\\n")
""")
    path.chmod(0o755)


def counts(folder, name, **each):
    sides = {"ours": "ours", "peer": "peer"}
    (folder / f"{name}_bench.counts").write_text("".join(f"adding <&>|{one}|{sides[one]}|10 {10 * count}\n" for one, count in each.items()))


def bench(folder, *options):
    return subprocess.run([sys.executable, ROOT / "bench" / "run.py", folder, *options],
                          env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def check_counts(folder):
    file = folder / "counts.tsv"

    def said(*options):
        done = bench(folder, *options, "--file", file, "a")
        return done.returncode, done.stdout

    demand(said("--counts")[0] == 0 and "\nadding <&>" in said("--counts")[1], said("--counts"))
    demand("a\tadding <&>\tours\t50\n" in file.read_text() and "peer" not in file.read_text(), file.read_text())
    for ours, code, part in ((51, 0, "counts as before"), (52, 1, "needs 52, the file says 50"), (48, 0, "needs 48 in place of 50")):
        counts(folder, "a", ours=ours)
        demand(said("--check-counts")[0] == code and part in said("--check-counts")[1], said("--check-counts"))
    counts(folder, "a")
    demand(said("--check-counts")[0] == 1 and "not there any more" in said("--check-counts")[1], said("--check-counts"))
    file.write_text(file.read_text().replace("Counted with: ", "Counted with: another "))
    demand(said("--check-counts")[0] == 0 and "not compared" in said("--check-counts")[1], said("--check-counts"))


def main():
    with tempfile.TemporaryDirectory() as work:
        folder, docs = pathlib.Path(work) / "bench", pathlib.Path(work) / "docs"
        folder.mkdir()
        docs.mkdir()
        program(folder, "a", LINES, 1)
        program(folder, "b", [], 7)
        program(folder, "c", LINES[2:4], 0)
        counter(folder)
        counts(folder, "a", ours=50, peer=100)

        everything = bench(folder, "--report", docs)
        demand(everything.returncode == 1, "a missed target is no success")
        demand(all(f"{name} ran" in everything.stdout for name in "abc"), "not all programs ran:\n" + everything.stdout)
        said = everything.stdout.split("missed:\n")[1].splitlines()
        demand(said == ["a: adding <&>: ours 0.50 (0.40 to 0.60), target 0.3", "b: ended with code 7"], said)

        page = (docs / "performance.md").read_text()
        demand(page.count("**missed**") == 1 and "2 comparisons, 2 with a target, 1 missed" in page, page)
        demand("far peer" in page and "alone" in page and str(ROOT) not in page and work not in page, page)
        demand("| 50 | 0.50 **over** | 0.3 **missed** |" in page, page)
        picture = ElementTree.parse(docs / "performance" / "a.svg").getroot()
        words = [element.text for element in picture.iter() if element.tag.endswith("}text")]
        demand("adding <&>" in words and "noisy" in words and "alone" not in words, words)
        kinds = [element.get("class") for element in picture.iter()]
        demand(kinds.count("target") == 3 and kinds.count("missed") == 3 and "›" in words, kinds)  # legend included

        check_counts(folder)
        demand(bench(folder, "c").returncode == 0, "a target that noise alone may have missed counts as met")
        demand(bench(folder, "d").returncode not in (0, None) and "not there" in bench(folder, "d").stdout, "no program d")
    print("bench: all fine")


if __name__ == "__main__":
    main()
