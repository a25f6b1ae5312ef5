"""Writes docs/performance.md and its charts from what the benchmark programs have measured."""
import os
import pathlib
import platform
import re
import subprocess

from chart import chart

SUBJECTS = {
    "commands": "Whole commands, as text and as binary blocks",
    "engine": "The boundary with the engine",
    "modern": "zant.hpp beside the typed functions",
    "language": "Reading the command language",
    "numbers": "The text of numbers",
    "pixels": "Copies between pixel formats",
    "preview": "Rays of the preview engine",
    "values": "Vectors, matrices and angles",
}


class Result:
    """One line of a results file, as bench/contest.h describes it."""

    def __init__(self, fields):
        self.contest, self.name, self.side = fields[:3]
        self.ns, self.quartile1, self.quartile3, self.ratio, self.low, self.high, self.target, self.repeated = map(float, fields[3:])
        self.missed = self.target != 0 and self.low > self.target
        self.label = self.contest

    def describe(self):
        return f"{self.contest}: {self.name} {self.ratio:.2f} ({self.low:.2f} to {self.high:.2f}), target {self.target:g}"


def read_results(path):
    lines = path.read_text().splitlines() if path.exists() else []
    return [Result(row.split("\t")) for row in lines]


def contests(results):
    """Of each contest ours, the peers and what stands aside, in the order of the program."""
    grouped = {}
    for result in results:
        grouped.setdefault(result.contest, {"ours": [], "peer": [], "aside": []})[result.side].append(result)
    return grouped


def chart_rows(results):
    rows = []
    for contest, sides in contests(results).items():
        for one in sides["ours"] if sides["peer"] else []:
            if len(sides["ours"]) > 1:
                one.label = f"{contest}: {one.name}"
            rows.append((one, sides["peer"], sides["aside"]))
    return rows


def processor():
    for row in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if row.startswith("model name"):
            return re.sub(r"\s+", " ", row.split(":", 1)[1]).strip()
    return platform.machine()


def machine(cache):
    """Processor, compiler and settings, without names of hosts and folders."""
    entries = dict(re.findall(r"^(\w+):\w+=(.*)$", cache.read_text(), re.M)) if cache.exists() else {}
    compiler = entries.get("CMAKE_CXX_COMPILER", "c++")
    version = subprocess.run([compiler, "--version"], stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]
    kind = entries.get("CMAKE_BUILD_TYPE", "Release")
    flags = entries.get(f"CMAKE_CXX_FLAGS_{kind.upper()}", "")
    return (f"{processor()}, {os.cpu_count()} processors, {platform.system()} on {platform.machine()}; {version}, "
            f"{kind} (`{flags}`)")


def figure(value):
    return f"{value:.3g}" if value < 1000 else f"{value:.0f}"


def count_columns(result, contest, counts):
    """Instructions, and their ratio to the peer that needs the fewest; nothing where they were not counted."""
    one = counts.get((result.contest, result.name))
    if not one:
        return " | "
    peers = [counts[peer.contest, peer.name].each for peer in contest["peer"] if (peer.contest, peer.name) in counts]
    ratio = one.each / min(peers) if peers else None
    over = result.side == "ours" and ratio and result.target and ratio > result.target
    return f"{figure(one.each)} | {'' if ratio is None else f'{ratio:.2f}'}{' **over**' if over else ''}"


def table(results, counts):
    rows = ["| | | ns | quartiles | ratio | 95 % interval | instructions | ratio | target | repeated |",
            "|---|---|---:|---:|---:|---:|---:|---:|---:|---:|"]
    grouped, last = contests(results), None
    for result in results:
        interval = f"{result.low:.2f} to {result.high:.2f}" if result.ratio else ""
        ratio = f"{result.ratio:.2f}" if result.ratio else ""
        target = f"{result.target:g}{' **missed**' if result.missed else ''}" if result.target else ""
        name = f"**{result.name}**" if result.side == "ours" else result.name
        first = result.contest != last
        rows.append(f"| {result.contest if first else ''} | {name} | {figure(result.ns)} | {figure(result.quartile1)} to "
                    f"{figure(result.quartile3)} | {ratio} | {interval} | {count_columns(result, grouped[result.contest], counts)} | {target} | "
                    f"{f'{result.repeated:.0f}' if first else ''} |")
        last = result.contest
    return rows


def section(name, results, counts, folder):
    lines = [f"## {SUBJECTS.get(name, name)}", "", f"`scripts/bench {name}`", ""]
    rows = chart_rows(results)
    if rows:
        picture = folder / "performance" / f"{name}.svg"
        picture.parent.mkdir(parents=True, exist_ok=True)
        picture.write_text(chart(SUBJECTS.get(name, name), rows))
        missed = sum(one.missed for one, _, _ in rows)
        targets = sum(one.target != 0 for one, _, _ in rows)
        lines += [f"![{SUBJECTS.get(name, name)}: {len(rows)} comparisons](performance/{name}.svg)", "",
                  f"{len(rows)} comparisons, {targets} with a target, {missed} missed.", ""]
    return lines + ["<details><summary>Every figure</summary>", "", *table(results, counts), "", "</details>", ""]


def write_report(folder, measured, cache, load):
    """Writes performance.md into a folder. `measured` holds (name, results, counts by contest and contestant)."""
    lines = ["# Performance", "",
             "Written by `scripts/bench --report`, which builds and runs every benchmark; do not edit. Each figure stands",
             "beside what a user would pick instead, in the same process, taking turns on one processor. A ratio is ours to",
             "the best peer, turn by turn, so 0.5 is twice as fast; below 1 is good. A target counts as missed when the whole",
             "interval lies above it. Rounds in which the processor was taken away, or was slower than usual at a known piece",
             "of work, were repeated: how many of each contest stands in the last column.", "",
             "Instructions are counted by callgrind, in a run of their own. They do not depend on other work on the machine and",
             "are the same in every run; their ratio is to the peer that needs the fewest. Where a count is over a target that",
             "the time meets, instructions are not what costs: memcpy moves 32 bytes with one, and sums that need each other",
             "wait.", "",
             f"Machine: {machine(cache)}.", "",
             "Figures are for one item: a number, a command, a pixel, a byte of what is read (1000 / ns is MB/s). Compared as it",
             "is asked for: a copy within one pixel format has memcpy as its peer, where that does the same.", "",
             f"Load before it began: {load:.1f} (0 would be an idle machine).", ""]
    for name, results, counts in measured:
        lines += section(name, results, counts, folder)
    (folder / "performance.md").write_text("\n".join(lines).rstrip() + "\n")
