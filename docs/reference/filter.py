"""Gives files the shape that Doxygen wants to read. lay_out.py applies it to what it copies.

Pages: headings get the names that links use, links between pages go by these names, and blocks of code keep only the
language that Doxygen can colour. Headers: a comment that stands alone speaks of the file, and in C headers every
comment is documentation.
"""
import pathlib
import re

C_HEADERS = ("zant_records.h", "zant_c.h")
LANGUAGES = ("cpp", "python")


def page_name(path):
    return "mainpage" if path.stem == "README" else path.stem


def anchor(page, title):
    words = re.sub(r"[^\w\- ]", "", title.lower()).strip().replace(" ", "-")
    return f"{page}_{words}"


def example_page(name):
    return "example_" + re.sub(r"\W", "_", name)


def link(page, match):
    text, target, place = match.groups()
    if "://" in target or target.startswith("@ref"):
        return match[0]
    if target.endswith(".md") or (not target and place):
        name = page_name(pathlib.Path(target)) if target else page
        name = anchor(name, place[1:]) if place else name
        return f"@ref {name}" if text == target else f"[{text}](@ref {name})"
    if target == "examples/":
        return f"[{text}](@ref examples)"
    if target.startswith(("examples/", "../examples/")) and not target.endswith("/"):
        return f"[{text}](@ref {example_page(pathlib.Path(target).name)})"
    return text  # files of the project that are no page


def filter_page(path):
    page = page_name(path)
    in_code = False
    for line in path.read_text().splitlines():
        fence = re.match(r"```(\w*)", line)
        if fence:
            in_code = not in_code
            if in_code and "{" not in line:
                line = f"```{fence[1]}" if fence[1] in LANGUAGES else "```{.unparsed}"
        elif not in_code:
            heading = re.match(r"(#+) ([^{]+)$", line)
            if heading:
                name = page if heading[1] == "#" else anchor(page, heading[2])
                line = f"{line} {{#{name}}}"
            line = re.sub(r"\[([^\]]+)\]\(([^)#]*)(#[^)]*)?\)", lambda match: link(page, match), line)
        yield line


def filter_c_header(path):
    text = re.sub(r"^/\* ----.*\n", "", path.read_text(), flags=re.M)
    text = text.replace("/*", "/** @file\n *", 1)
    text = re.sub(r"^( *)/\* ", r"\1/** ", text, flags=re.M)
    return re.sub(r"(?<=\S)( +)/\* ", r"\1/**< ", text).splitlines()


def filter_header(path):
    """A comment outside of classes with nothing directly below it speaks of the file."""
    text = path.read_text()
    return re.sub(r"((?:^///.*\n)+)(?=\n)", r"/// @file\n\1", text, flags=re.M).splitlines()


def filter_file(path):
    if path.suffix == ".md":
        return filter_page(path)
    if path.suffix not in (".h", ".hpp"):
        return path.read_text().splitlines()
    return filter_c_header(path) if path.name in C_HEADERS else filter_header(path)
