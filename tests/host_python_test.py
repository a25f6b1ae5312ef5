"""Runs examples/host.py as a user would, against the loopback engine and against none."""
import argparse
import pathlib
import re
import subprocess
import sys
import tempfile
import textwrap
import unittest

options = None


def run(*arguments):
    command = [sys.executable, str(options.host), "--library", str(options.library), *map(str, arguments)]
    return subprocess.run(command, capture_output=True, text=True, timeout=60)


class HostTest(unittest.TestCase):
    def test_drives_the_engine_and_reads_values_back(self):
        result = run(options.engine, *options.commands)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        lines = result.stdout.splitlines()
        self.assertRegex(lines[0], r"^host\.py: engine version [1-9]\d*, host version 3000$")
        for file in options.commands:
            self.assertIn(f"host.py: {file} parsed, code 0", lines)
        self.assertTrue(any(line.startswith("engine: ") and len(line) > len("engine: ") for line in lines))
        self.assertEqual(lines[-5:], [
            "host.py: hostNumber is 2.5",
            "host.py: hostText is read back",
            "host.py: hostVector is [1.0, -2.0, 0.5]",
            "host.py: hostAxes is [15.0, 30.0, -45.0] degrees",
            "host.py: engine unloaded, version is now 0",
        ])

    def test_says_what_is_wrong_with_the_commands(self):
        with tempfile.TemporaryDirectory() as folder:
            wrong = pathlib.Path(folder, "wrong.zant")
            wrong.write_text('echo "before";\nnoSuchCommand 1;\n')
            result = run(options.engine, wrong, "/nonexistent/file.zant")
        self.assertEqual(result.returncode, 1)
        self.assertIn("engine: before", result.stdout)
        self.assertRegex(result.stdout, r"engine: .*wrong\.zant.*noSuchCommand")
        self.assertNotIn("wrong.zant parsed, code 0", result.stdout)
        self.assertIn("/nonexistent/file.zant cannot be read", result.stderr)
        self.assertIn("host.py: engine unloaded, version is now 0", result.stdout)

    def test_survives_what_is_missing(self):
        result = run("/nonexistent", *options.commands)
        self.assertEqual((result.returncode, result.stderr), (3, "host.py: no engine in /nonexistent\n"))
        self.assertEqual(run().returncode, 2)
        for missing in ["--library", "--description"]:
            result = run(missing, "/nonexistent/file", options.engine)
            self.assertEqual(result.returncode, 2)
            self.assertIn("/nonexistent/file", result.stderr)
            self.assertNotIn("Traceback", result.stderr)


    def test_the_page_quotes_the_host_as_it_is(self):
        page = (options.host.parent.parent / "docs/hosts-in-other-languages.md").read_text()
        blocks = re.findall(r"^```python\n(.*?)^```$", page, re.S | re.M)
        self.assertEqual(len(blocks), 5)
        host = options.host.read_text()
        for block in blocks:
            quoted = [textwrap.indent(block, " " * depth) for depth in (0, 4, 8)]
            self.assertTrue(any(text in host for text in quoted), block)
        for line in re.findall(r"^```json\n(.*?)\n```$", page, re.S | re.M):
            self.assertIn(line, options.description.read_text())


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--host", type=pathlib.Path, required=True)
    parser.add_argument("--library", type=pathlib.Path, required=True)
    parser.add_argument("--description", type=pathlib.Path, required=True)
    parser.add_argument("--engine", type=pathlib.Path, required=True)
    parser.add_argument("--commands", type=pathlib.Path, nargs="+", required=True)
    options = parser.parse_args()
    unittest.main(argv=[sys.argv[0]])
