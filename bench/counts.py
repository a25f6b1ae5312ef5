"""Counts the instructions of the benchmark programs with callgrind, and holds them against bench/counts.tsv."""
import os
import pathlib
import re
import subprocess
import tempfile

TOLERANCE = 0.03
HEAD = """# Instructions for one item of each of ours, written by scripts/bench --counts: program, contest, contestant, count.
# Counted with: """
# The C library picks other versions of its functions on other processors: these are the ones that all have.
PLAIN_PROCESSOR = "glibc.cpu.hwcaps=-AVX512F,-AVX512VL,-AVX2,-AVX,-ERMS,-FSRM,-FMA,-FMA4,-BMI1,-BMI2"


class Count:
    """What a contestant's one turn needed, for each item."""

    def __init__(self, label, instructions):
        self.contest, self.name, self.side, items = label.split("|")
        self.each = instructions / int(items)
        self.key = (self.contest, self.name)


def count(program, whose):
    """All counts of one program: of ours alone, or of all contestants. Raises CalledProcessError when it dies."""
    with tempfile.TemporaryDirectory() as work:
        out = pathlib.Path(work) / "out"
        environment = {**os.environ, "ZANT_BENCH_COUNTS": whose, "GLIBC_TUNABLES": PLAIN_PROCESSOR}
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={out}", program],
                       env=environment, stdout=subprocess.DEVNULL, check=True)
        texts = [part.read_text() for part in sorted(pathlib.Path(work).glob("out.*"), key=lambda part: int(part.suffix[1:]))]
    labels = [re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M) for text in texts]
    totals = [re.search(r"^(?:totals|summary): (\d+)", text, re.M) for text in texts]
    return [Count(label[1], int(total[1])) for label, total in zip(labels, totals) if label]


def compiler(cache):
    """The version of the compiler that a build folder uses: another one makes other instructions."""
    named = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache.read_text(), re.M) if cache.exists() else None
    return subprocess.run([named[1] if named else "c++", "--version"], stdout=subprocess.PIPE, text=True).stdout.splitlines()[0]


def show(counts):
    """Each contest with the ratio to the peer that needs the fewest."""
    last = None
    for one in counts:
        if one.contest != last:
            print(f"\n{one.contest:40} {'instructions':>12} {'ratio':>8}")
        last = one.contest
        peers = [peer.each for peer in counts if peer.contest == one.contest and peer.side == "peer"]
        ratio = f"{one.each / min(peers):8.2f}" if peers else ""
        print(f"  {one.name:38} {one.each:12.1f} {ratio}")


def write(file, counted, version):
    """Renews what the file says of some programs, and leaves what it says of others."""
    _, known = read(file)
    rows = {key: value for key, value in known.items() if key[0] not in counted}
    rows.update({(program, *one.key): one.each for program, counts in counted.items() for one in counts if one.side == "ours"})
    lines = ["\t".join([*key, f"{value:.4g}"]) for key, value in sorted(rows.items())]
    file.write_text(HEAD + version + "\n" + "\n".join(lines) + "\n")


def read(file):
    """The compiler that the file was made with, and the counts."""
    if not file.exists():
        return "", {}
    text = file.read_text()
    rows = [line.split("\t") for line in text.splitlines() if line and not line.startswith("#")]
    return re.search(r"^# Counted with: (.*)$", text, re.M)[1], {tuple(row[:3]): float(row[3]) for row in rows}


def compare(file, counted, version):
    """What is to be said of counts beside the file's: the second part does not make it fail."""
    known_version, known = read(file)
    if version != known_version:
        return [], [f"not compared: the file is of {known_version}, this is {version}"]
    worse, better = [], []
    for program, counts in counted.items():
        for one in counts:
            before = known.get((program, *one.key))
            if before is None or one.each > before * (1 + TOLERANCE):
                worse.append(f"{program}: {one.contest}: {one.name} needs {one.each:.4g}, the file says {before or 'nothing'}")
            elif one.each < before * (1 - TOLERANCE):
                better.append(f"{program}: {one.contest}: {one.name} needs {one.each:.4g} in place of {before:.4g}")
    counted_keys = {(program, *one.key) for program, counts in counted.items() for one in counts}
    worse += [f"{': '.join(key)} is not there any more" for key in known if key[0] in counted and key not in counted_keys]
    return worse, better
