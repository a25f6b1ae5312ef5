"""Checks zant_interface.json against the headers by two routes that share nothing with the program that writes it.

Every line of the description becomes an assertion that a C99 compiler (for what an engine sees: a C++17 compiler)
accepts or refuses; and the names in the description are those that a reading of the headers' text finds.
"""
import argparse
import json
import pathlib
import re
import subprocess
import sys
import unittest

options = None

C_PRELUDE = """
#include "client/capi/zant_c.h"
#define CHECK(number, condition) typedef char Check##number[(condition) ? 1 : -1]
"""
CPP_PRELUDE = """
#include <type_traits>
#include <utility>
#include "client/engine/instance.h"
using namespace Zant;
#define CHECK(number, condition) static_assert(condition, "line of the description")
"""


class Assertions:
    """A source text with one numbered assertion for each statement of the description."""

    def __init__(self, prelude):
        self.count = 0
        self.text = prelude

    def check(self, condition):
        self.text += f"CHECK({self.count}, {condition});\n"
        self.count += 1

    def declare(self, text):
        self.text += text + "\n"
        self.count += 1

    def records(self, records, same_type):
        for record in records:
            name = record["name"]
            self.check(f"sizeof({name}) == {record['size']}")
            for field in record["fields"]:
                self.check(f"offsetof({name}, {field['name']}) == {field['offset']}")
                self.check(f"sizeof((({name}*)0)->{field['name']}) == {field['size']}")
                same_type(name, field)

    def enumerations(self, enumerations):
        for enumeration in enumerations:
            for name, value in enumeration["values"].items():
                self.check(f"{name} == {value}")


def c_assertions(description):
    source = Assertions(C_PRELUDE)

    def same_type(record, field):  # a pointer to the field converts only to a pointer to the same type
        source.declare(f"__typeof__({field['c']})* typeOf{source.count}({record}* r) {{ return &r->{field['name']}; }}")

    source.records(description["records"], same_type)
    source.enumerations(description["enumerations"])
    for function in description["functions"]:  # declaring a function again with another type is an error
        arguments = ", ".join(f"__typeof__({argument['c']}) {argument['name']}" for argument in function["arguments"])
        source.declare(f"__typeof__({function['result']['c']}) {function['name']}({arguments or 'void'});")
    return source


def cpp_assertions(engine):
    source = Assertions(CPP_PRELUDE)

    def same_type(record, field):
        source.check(f"(std::is_same_v<decltype({record}::{field['name']}), {field['c']}>)")

    source.records(engine["records"], same_type)
    source.enumerations(engine["enumerations"])
    for table in engine["tables"]:
        source.check(f"sizeof({table['name']}) == {8 * table['slotCount']}")
        for slot in table["slots"]:
            place = f"{table['name']}::{slot['name']}"
            arguments = ", ".join(argument["c"] for argument in slot["arguments"])
            source.check(f"offsetof({table['name']}, {slot['name']}) == {8 * slot['slot']}")
            source.check(f"(std::is_same_v<decltype({place}), {slot['result']['c']} (*)({arguments})>)")
    return source


def compile_text(compiler, flags, language, text):
    command = [compiler, *flags, "-fsyntax-only", "-Werror", "-I", str(options.source), "-x", language, "-"]
    return subprocess.run(command, input=text, text=True, capture_output=True)


def compile_c(text):
    return compile_text(options.cc, ["-std=c99", "-Wall", "-Wextra"], "c", text)


def compile_cpp(text):
    return compile_text(options.cxx, ["-std=c++17", "-Wall", "-Wextra"], "c++", text)


def header(name):
    text = (options.source / name).read_text()
    return re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.S)


def last_words(text, separator):
    """The declared names: the last word of each part, without its array bounds."""
    parts = [re.sub(r"\[\d*\]", "", part).strip() for part in text.split(separator)]
    return [re.search(r"\w+$", part).group() for part in parts if part and part != "void"]


class DescriptionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.description = json.loads(options.description.read_text())
        cls.engine = cls.description["engine"]

    def test_every_line_is_what_the_c_compiler_says(self):
        source = c_assertions(self.description)
        result = compile_c(source.text)
        self.assertEqual(result.returncode, 0, result.stderr)
        fields = sum(len(record["fields"]) for record in self.description["records"])
        values = sum(len(enumeration["values"]) for enumeration in self.description["enumerations"])
        self.assertEqual(source.count, len(self.description["records"]) + 3 * fields + values + 16)

    def test_every_line_for_engines_is_what_the_cpp_compiler_says(self):
        source = cpp_assertions(self.engine)
        result = compile_cpp(source.text)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertGreater(source.count, 100)

    def test_records_are_those_of_the_header(self):
        declared = {
            name: last_words(body, ";")
            for body, name in re.findall(r"typedef (?:struct|union) \w+ \{(.*?)\} (\w+);",
                                         header("client/records/zant_records.h"), re.S)
        }
        described = {record["name"]: [field["name"] for field in record["fields"]]
                     for record in self.description["records"]}
        self.assertEqual(described, declared)

    def test_enumerations_are_those_of_the_header(self):
        declared = [re.findall(r"\w+(?= =)", body)
                    for body in re.findall(r"enum \w*\s*\{(.*?)\}", header("client/records/zant_records.h"), re.S)]
        described = [list(enumeration["values"]) for enumeration in self.description["enumerations"]]
        self.assertEqual(described, declared)

    def test_functions_are_those_of_the_header_and_of_the_export_list(self):
        declared = {name: last_words(arguments, ",")
                    for name, arguments in re.findall(r"^ZANT_API [^;]*?(\w+)\(([^;]*)\);",
                                                      header("client/capi/zant_c.h"), re.M)}
        described = {function["name"]: [argument["name"] for argument in function["arguments"]]
                     for function in self.description["functions"]}
        self.assertEqual(described, declared)
        exported = re.findall(r"Zant\w+", (options.source / "client/capi/zant.map").read_text())
        self.assertEqual(set(described), set(exported))
        self.assertEqual(len(described), 16)

    def test_records_for_engines_have_no_hole(self):
        for record in self.engine["records"]:
            end = 0
            for field in record["fields"]:
                self.assertEqual(field["offset"], end, record["name"])
                end += field["size"]
            self.assertEqual(record["size"], end, record["name"])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--description", type=pathlib.Path, required=True)
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--cc", required=True)
    parser.add_argument("--cxx", required=True)
    options, rest = parser.parse_known_args()
    unittest.main(argv=[sys.argv[0], *rest])
