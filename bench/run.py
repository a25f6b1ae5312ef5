#!/usr/bin/env python3
"""Runs benchmark programs, each to its end whatever the others did, and says at the end which targets were missed.

usage: run.py FOLDER [--report FOLDER] [NAME...]

Runs NAME_bench of the first FOLDER, all of them without a NAME. --report writes performance.md and its charts into a
folder. Exit code 1 when a target was missed or a program died.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

from report import read_results, write_report


def run(program, results, speeds):
    """Runs one program. Returns what is to be said of it at the end."""
    environment = {**os.environ, "ZANT_BENCH_RESULTS": str(results),
                   "BENCHMARK_OUT": str(speeds), "BENCHMARK_OUT_FORMAT": "json"}
    code = subprocess.run([program], env=environment).returncode
    missed = [result.describe() for result in read_results(results) if result.missed]
    if code != 0 and not missed:
        missed.append(f"ended with code {code}")
    return missed


def main():
    arguments = argparse.ArgumentParser(description="Runs benchmark programs.")
    arguments.add_argument("folder", type=pathlib.Path)
    arguments.add_argument("--report", type=pathlib.Path, help="folder of performance.md")
    arguments.add_argument("names", nargs="*")
    options = arguments.parse_args()
    if options.report and options.names:
        arguments.error("a report is of all programs")
    programs = [options.folder / f"{name}_bench" for name in options.names]
    programs = programs or sorted(options.folder.glob("*_bench"))
    if not programs or not all(program.exists() for program in programs):
        sys.exit(f"bench: not there: {', '.join(p.name for p in programs if not p.exists()) or 'any program'}")
    load = os.getloadavg()[0]
    said, measured = [], []
    with tempfile.TemporaryDirectory() as work:
        for program in programs:
            name = program.name[:-len("_bench")]
            print(f"\n== {name}", flush=True)
            results, speeds = (pathlib.Path(work) / f"{name}.{end}" for end in ("tsv", "json"))
            said += [f"{name}: {trouble}" for trouble in run(program, results, speeds)]
            measured.append((name, results, speeds))
        if options.report:
            write_report(options.report, measured, options.folder.parent / "CMakeCache.txt", load)
    print("\n" + ("\n".join(["missed:", *said]) if said else "every target met"))
    sys.exit(1 if said else 0)


if __name__ == "__main__":
    main()
