#!/usr/bin/env python3
"""Runs benchmark programs, each to its end whatever the others did, and says at the end which targets were missed.

usage: run.py FOLDER [--report FOLDER | --counts | --check-counts] [--file FILE] [NAME...]

Runs NAME_bench of the first FOLDER, all of them without a NAME. --report writes performance.md and its charts into a
folder, of times and of counts. --counts counts instructions instead of time and renews a file, bench/counts.tsv
without --file; --check-counts counts ours alone and holds them against it. Exit code 1 when a target was missed, an operation
needs over 3 % more than the file says, or a program died.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

import counts
from report import read_results, write_report


def run(program, results):
    """Runs one program. Returns what is to be said of it at the end."""
    code = subprocess.run([program], env={**os.environ, "ZANT_BENCH_RESULTS": str(results)}).returncode
    missed = [result.describe() for result in read_results(results) if result.missed]
    if code != 0 and not missed:
        missed.append(f"ended with code {code}")
    return missed


def name_of(program):
    return program.name[:-len("_bench")]


def counts_of(program):
    """For the report, which does without those of a program that died."""
    try:
        return {one.key: one for one in counts.count(program, "all")}
    except subprocess.CalledProcessError:
        return {}


def measure(programs, cache, report):
    """Runs the programs, and writes the report when there is a folder for it."""
    load = os.getloadavg()[0]
    said, measured = [], []
    with tempfile.TemporaryDirectory() as work:
        for program in programs:
            name = name_of(program)
            print(f"\n== {name}", flush=True)
            results = pathlib.Path(work) / f"{name}.tsv"
            said += [f"{name}: {trouble}" for trouble in run(program, results)]
            measured.append((program, read_results(results)))
    if report:
        write_report(report, [(name_of(program), results, counts_of(program)) for program, results in measured], cache, load)
    print("\n" + ("\n".join(["missed:", *said]) if said else "every target met"))
    return 1 if said else 0


def renew_counts(file, programs, cache):
    counted = {}
    for program in programs:
        counted[name_of(program)] = counts.count(program, "all")
        print(f"\n== {name_of(program)}")
        counts.show(counted[name_of(program)])
    counts.write(file, counted, counts.compiler(cache))
    return 0


def check_counts(file, programs, cache):
    counted = {name_of(program): counts.count(program, "ours") for program in programs}
    worse, better = counts.compare(file, counted, counts.compiler(cache))
    print("\n".join([*worse, *better]) or f"{sum(map(len, counted.values()))} counts as before")
    if worse or better:
        print("scripts/bench --counts renews the file, when that is what is meant")
    return 1 if worse else 0


def main():
    arguments = argparse.ArgumentParser(description="Runs benchmark programs.")
    arguments.add_argument("folder", type=pathlib.Path)
    arguments.add_argument("--report", type=pathlib.Path, help="folder of performance.md")
    arguments.add_argument("--counts", action="store_true")
    arguments.add_argument("--check-counts", action="store_true")
    arguments.add_argument("--file", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent / "counts.tsv")
    arguments.add_argument("names", nargs="*")
    options = arguments.parse_intermixed_args()
    if options.report and options.names:
        arguments.error("a report is of all programs")
    programs = [options.folder / f"{name}_bench" for name in options.names]
    programs = programs or sorted(options.folder.glob("*_bench"))
    if not programs or not all(program.exists() for program in programs):
        sys.exit(f"bench: not there: {', '.join(p.name for p in programs if not p.exists()) or 'any program'}")
    cache = options.folder.parent / "CMakeCache.txt"
    if options.counts or options.check_counts:
        sys.exit((renew_counts if options.counts else check_counts)(options.file, programs, cache))
    sys.exit(measure(programs, cache, options.report))


if __name__ == "__main__":
    main()
