"""Writes docs/performance.md and its charts from what the benchmark programs have measured."""
import json
import os
import pathlib
import platform
import re
import subprocess

from chart import chart

SUBJECTS = {
    "commands": "Whole commands, as text and as binary blocks",
    "engine": "The boundary with the engine",
    "language": "Reading the command language",
    "numbers": "The text of numbers",
    "pixels": "Copies between pixel formats",
    "values": "Vectors, matrices and angles",
}


class Result:
    """One line of a results file, as bench/ratio.h describes it."""

    def __init__(self, fields):
        self.contest, self.name, self.side = fields[:3]
        self.ns, self.quartile1, self.quartile3, self.ratio, self.low, self.high, self.target = map(float, fields[3:])
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


def table(results):
    rows = ["| | | ns | quartiles | ratio | 95 % interval | target |", "|---|---|---:|---:|---:|---:|---:|"]
    last = None
    for result in results:
        interval = f"{result.low:.2f} to {result.high:.2f}" if result.ratio else ""
        target = f"{result.target:g}{' **missed**' if result.missed else ''}" if result.target else ""
        name = f"**{result.name}**" if result.side == "ours" else result.name
        rows.append(f"| {result.contest if result.contest != last else ''} | {name} | {figure(result.ns)} | "
                    f"{figure(result.quartile1)} to {figure(result.quartile3)} | {result.ratio:.2f} | {interval} | {target} |")
        last = result.contest
    return rows


def throughput(path):
    """What Google Benchmark measured: speeds without a peer."""
    if not path.exists():
        return []
    rows = ["| | MB/s | commands/s |", "|---|---:|---:|"]
    for entry in json.loads(path.read_text())["benchmarks"]:
        rows.append(f"| `{entry['name']}` | {entry['bytes_per_second'] / 1e6:.0f} | {entry['items_per_second']:,.0f} |")
    return rows


def section(name, results, speeds, folder):
    lines = [f"## {SUBJECTS.get(name, name)}", "", f"`scripts/bench {name}`", ""]
    rows = chart_rows(results)
    if rows:
        picture = folder / "performance" / f"{name}.svg"
        picture.parent.mkdir(parents=True, exist_ok=True)
        picture.write_text(chart(SUBJECTS.get(name, name), rows))
        missed = sum(one.missed for one, _, _ in rows)
        targets = sum(one.target != 0 for one, _, _ in rows)
        lines += [f"![{SUBJECTS.get(name, name)}: {len(rows)} comparisons](performance/{name}.svg)", "",
                  f"{len(rows)} comparisons, {targets} with a target, {missed} missed.", "",
                  "<details><summary>Every figure</summary>", "", *table(results), "", "</details>", ""]
    return lines + ([*speeds, ""] if speeds else [])


def write_report(folder, measured, cache, load):
    """Writes performance.md into a folder. `measured` holds (name, results file, throughput file)."""
    lines = ["# Performance", "",
             "Written by `scripts/bench --report`, which builds and runs every benchmark; do not edit. Each figure stands",
             "beside what a user would pick instead, in the same process, taking turns. A ratio is ours to the best peer,",
             "turn by turn, so 0.5 is twice as fast; below 1 is good. A target counts as missed when the whole interval",
             "lies above it.", "",
             f"Machine: {machine(cache)}.", "",
             "Times are for one item: a number, a command, a pixel. Compared as it is asked for: a copy within one pixel format",
             "has memcpy as its peer, whatever else there is.", "",
             f"Load before it began: {load:.1f} (0 would be an idle machine; other work makes the intervals wider).", ""]
    for name, results, speeds in measured:
        lines += section(name, read_results(results), throughput(speeds), folder)
    (folder / "performance.md").write_text("\n".join(lines).rstrip() + "\n")
