#!/usr/bin/env python3
"""What zant.hpp keeps from compiling: each misuse is an error where it stands, and its twin compiles."""
import argparse
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import tempfile

# Where the misuses stand. The header is compiled once, ahead of all.
PRELUDE = """
#include <string>
#include <vector>
#include "client/zant.h"
#include "modern/zant.hpp"
"""
AROUND = """
void around(zant::session& engine, zant::scene& scene, zant::symbol& red, zant::mesh& shape, zant::bitmap& picture,
            zant::vertex_map& map, zant::value<double>& number, Zant::Instance* instance, Zant::ProtoBase& protos) {
    static_cast<void>(engine), static_cast<void>(scene), static_cast<void>(red), static_cast<void>(shape);
    static_cast<void>(picture), static_cast<void>(map), static_cast<void>(number);
    static_cast<void>(instance), static_cast<void>(protos);
    float floats[4] = {};
    static_cast<void>(floats);
#line 1 "snippet"
%s
}
"""

# A misuse, and what was meant.
SNIPPETS = [
    # The first argument of the typed functions does not exist.
    ("scene.fg2_gradients(&protos, 0.5, 2);", "scene.fg2_gradients(0.5, 2);"),
    ("scene.fg2_gradients(instance, 0.5, 2);", "scene.fg2_gradients(0.5F, 2);"),
    ("scene.fg2_gradients(nullptr, 0.5, 2);", "scene.fg2_gradients(1, 2);"),
    ("zant::scene other(instance);", "zant::scene other(engine);"),
    ("zant::scene other(zant::session{});", "zant::session second; zant::scene other(second);"),
    # Arguments of another kind.
    ("scene.fg2_gradients(nullptr, 2);", "scene.fg2_gradients({}, 2);"),
    ('scene.fg2_gradients("0.5", 2);', "scene.fg2_gradients(0.5, 2.5);"),
    ("scene.sett1_logFile(nullptr);", 'scene.sett1_logFile("log");'),
    ("scene.sett1_logFile(5);", 'scene.sett1_logFile(std::string("5"));'),
    ("scene.fg1_showSamples(1);", "scene.fg1_showSamples(true);"),
    ('scene.fg1_showSamples("false");', "scene.fg1_showSamples(false);"),
    ("scene.lw1_ignoreItemId(1.5);", "scene.lw1_ignoreItemId(1);"),
    ("scene.lw1_ignoreItemId(true);", "scene.lw1_ignoreItemId(1U);"),
    ("scene.view1_offset(1);", "scene.view1_offset({1, 2});"),
    ('scene.view1_camFilter("red");', "scene.view1_camFilter(red);"),
    ("scene.meshOp1_flip(red);", "scene.meshOp1_flip(shape);"),
    ("scene.bitmapOp1_clear(shape);", "scene.bitmapOp1_clear(picture);"),
    ("scene.meshOp2_points(map, shape);", "scene.meshOp2_points(shape, map);"),
    ('Zant::Symbol old(*protos.buffer, "red"); scene.view1_camFilter(old);', "scene.view1_camFilter(number);"),
    # Lists.
    ('scene.meshAddPoly3(shape, 0, {"a", "b"});', "scene.meshAddPoly3(shape, 0, {1, 2, 3});"),
    ("scene.meshAddPoly3(shape, 0, std::vector<char>());", "scene.meshAddPoly3(shape, 0, std::vector<int>());"),
    ("scene.meshAddPoly3(shape, 0, floats + 1);", "scene.meshAddPoly3(shape, 0, {floats + 1, 3});"),
    ("scene.lightAdd1_group(std::vector<zant::symbol*>{&red});", "scene.lightAdd1_group({red, shape});"),
    ("scene.lightAdd1_group(std::vector<std::string>());", "scene.lightAdd1_group(std::vector<zant::symbol>());"),
    ("scene.lightAdd2_point({1, 2, 3}, {1, 1, 1});", "scene.lightAdd2_point({zant::vector(1, 2, 3)}, {1, 1, 1});"),
    # Angles say what they are measured in.
    ("zant::axes(90, 0, 0);", "zant::axes(zant::degrees(90), zant::degrees(0), zant::radians(0));"),
    ("zant::degrees angle = 90; static_cast<void>(angle);", "zant::degrees angle(90); static_cast<void>(angle);"),
    ("zant::radians angle = 1.5; static_cast<void>(angle);",
     "zant::radians angle = zant::degrees(90); static_cast<void>(angle);"),
    ("zant::coord_sys(zant::vector(1, 2));", "zant::coord_sys(zant::position{1, 2, 3});"),
    # Objects have a scene, a name and one owner.
    ('zant::symbol blue("blue");', 'zant::symbol blue(scene, "blue");'),
    ("zant::symbol blue(scene);", "zant::symbol blue;"),
    ("zant::symbol blue(scene, nullptr);", 'zant::symbol blue(scene, std::string("blue"));'),
    ('zant::symbol blue(engine, "blue");', 'zant::mesh blue(scene, "blue");'),
    ('scene.surface1_color(zant::symbol(scene, "gone at once"));', "scene.surface1_color(red);"),
    ('const zant::symbol blue(scene, "blue"); scene.surface1_color(blue);',
     'const zant::symbol blue(scene, "blue"); scene.view1_camFilter(blue);'),
    ("zant::symbol copy = red;", "zant::symbol moved = std::move(red);"),
    ("zant::symbol copy; copy = red;", "zant::symbol moved; moved = std::move(red);"),
    ("zant::mesh copy = shape;", "zant::mesh moved = std::move(shape);"),
    ("zant::bitmap copy = picture;", "zant::bitmap moved = std::move(picture);"),
    ("zant::vertex_map copy = map;", "zant::vertex_map moved = std::move(map);"),
    ("zant::value<double> copy = number;", "zant::value<double> moved = std::move(number);"),
    ("zant::scene copy = scene;", "zant::scene moved = std::move(scene);"),
    ("zant::session copy = engine;", "zant::session moved = std::move(engine);"),
    ("std::vector<zant::symbol> both{std::move(red), zant::symbol()};",
     "std::vector<zant::symbol> both; both.push_back(std::move(red));"),
    # Values, rows and pixels.
    ("zant::value<float> value;", "zant::value<double> value;"),
    ('number.set("text");', "number.set(1);"),
    ('zant::value<zant::coord_sys>(scene, "c").declare();', 'zant::value<zant::coord_sys>(scene, "c").link();'),
    ("const float constant[4] = {}; map.read(zant::rows(constant, 3));", "map.read(zant::rows(floats, 3));"),
    ("map.write(floats);", "map.write(zant::rows(floats, 3));"),
    ("picture.read(zant::const_pixels(floats, 1, 1, PixelFloatRgb));",
     "picture.read(zant::pixels(floats, 1, 1, PixelFloatRgb));"),
    ("shape.polygons_of(3, 5);", "shape.polygons_of(3, std::vector<int>{0, 1, 2});"),
    # Callbacks and scopes.
    ("scene.on_text([](int) {});", "scene.on_text([](std::string_view) {});"),
    ("scene.on_question([](std::string_view, std::string&) {});",
     "scene.on_question([](std::string_view, std::string&) { return true; });"),
    ("scene.on_failure([](int) {});", "scene.on_failure(zant::failure_handler([](const zant::failure&) {}));"),
    ("zant::scope group(scene);", "zant::scope group(scene, zant::on_failure::stop);"),
    ("zant::scope group(scene, true);", "zant::scope group(scene, zant::on_failure::go_on);"),
    ("zant::scope group(scene, zant::on_failure::stop); zant::scope copy = group;",
     "const zant::scope group(scene, zant::on_failure::stop);"),
    ("zant::scene_of<zant::looks_commands> few(engine); few.view0_render();",
     "zant::scene_of<zant::looks_commands> few(engine); few.surface1_color(red);"),
]


def compiled(command, snippet):
    answer = subprocess.run(command + ["-x", "c++", "-"], input=AROUND % snippet, capture_output=True, text=True,
                            check=False)
    return answer.returncode == 0, answer.stderr


def problem(command, misuse):
    """What is wrong with a misuse, or nothing."""
    is_compiled, said = compiled(command, misuse)
    if is_compiled:
        return f"compiles: {misuse}"
    return None if re.search(r"^snippet:1:\d+: ", said, re.MULTILINE) else f"is an error elsewhere: {misuse}\n{said}"


def problem_of_twins(command):
    blocks = [f'{{\n#line {number} "twin"\n{twin}\n}}' for number, (_, twin) in enumerate(SNIPPETS)]
    is_compiled, said = compiled(command, "\n".join(blocks))
    return None if is_compiled else "what was meant does not compile, by its number in the table from 0:\n" + said


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--cxx", required=True)
    parser.add_argument("--include", nargs="+", required=True)
    options = parser.parse_args()
    command = [options.cxx, "-std=c++17", "-fsyntax-only", *(f"-I{folder}" for folder in options.include)]
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:
        prelude = pathlib.Path(folder, "prelude.h")
        prelude.write_text(PRELUDE)
        subprocess.run([part for part in command if part != "-fsyntax-only"] +
                       ["-x", "c++-header", str(prelude), "-o", f"{prelude}.gch"], check=True)
        command += ["-include", str(prelude)]
        problems = [*pool.map(lambda row: problem(command, row[0]), SNIPPETS), problem_of_twins(command)]
    problems = [text for text in problems if text]
    if problems:
        sys.exit("\n".join(problems))
    print(f"{len(SNIPPETS)} misuses do not compile, and what was meant does")


if __name__ == "__main__":
    main()
