#!/usr/bin/env python3
"""What is special to a compiler or processor stands in own/compiler.h, or where one of its macros asks for it."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("own", "client", "modern", "description", "testkit", "language", "engines", "app", "examples")
SPECIAL = re.compile(r"__builtin_|__attribute__|\[\[(gnu|clang)::|\basm\b|\b_mm_|\b__m128|mmintrin|arm_neon|__int128|"
                     r"#pragma GCC|_Pragma|__GNUC__|__SSE2__|__x86_64__|__aarch64__")
ASKS = re.compile(r"#if(def)?\b.*\bZANT_[A-Z0-9_]+_(CODE|SUMS)\b")


def special_lines(text):
    """Each line with something special, with its number and whether a macro of own/compiler.h has asked for it."""
    asked = []
    for number, line in enumerate(text.splitlines(), 1):
        line = line.partition("//")[0]
        if re.match(r"#if", line):
            asked.append(bool(ASKS.match(line)))
        elif re.match(r"#el", line):
            asked[-1] = False
        elif re.match(r"#endif", line):
            asked.pop()
        if SPECIAL.search(line):
            yield number, any(asked)


def main():
    guarded, wrong = 0, []
    for file in sorted(path for folder in FOLDERS for path in (ROOT / folder).rglob("*.[hci]*")):
        if file == ROOT / "own" / "compiler.h":
            continue
        for number, is_asked in special_lines(file.read_text()):
            guarded += is_asked
            if not is_asked:
                wrong.append(f"{file.relative_to(ROOT)}:{number}: special to a compiler or processor; see own/compiler.h")
    if wrong or guarded < 10:
        sys.exit("\n".join(wrong) or f"only {guarded} guarded lines were found")
    print(f"{guarded} lines are special to a compiler or processor, each with a plain form beside it")


if __name__ == "__main__":
    main()
