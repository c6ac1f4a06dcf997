#!/usr/bin/python3
"""check_headers.py COMPILER INCLUDE_FOLDER

Compiles every public header alone, as C++17 with warnings as errors, and checks that headers include
nothing but each other and the C++ standard library.
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"][^>"]+[>"])', re.MULTILINE)
STANDARD = re.compile(r"<[a-z_]+>")  # <vector>, <cstdint>: no folder, no ending


def foreign_includes(header, folder):
    for name in INCLUDE.findall(header.read_text()):
        if not STANDARD.fullmatch(name) and not (folder / name[1:-1]).is_file():
            yield f"{header.relative_to(folder)} includes {name}"


def compile_alone(compiler, header, folder):
    result = subprocess.run(
        [compiler, "-std=c++17", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Wshadow",
         "-Wnon-virtual-dtor", "-Werror", f"-I{folder}", "-x", "c++", "-"],
        # Twice: a header must also bear being included again.
        input=f"#include <{header.relative_to(folder)}>\n" * 2,
        capture_output=True, text=True)
    return result.stderr if result.returncode else ""


def main():
    compiler, folder = sys.argv[1], pathlib.Path(sys.argv[2]).resolve()
    headers = sorted(folder.rglob("*.h"))
    problems = [text for header in headers for text in foreign_includes(header, folder)]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        problems += filter(None, pool.map(lambda header: compile_alone(compiler, header, folder),
                                          headers))
    print("\n".join(problems) or f"{len(headers)} headers compile alone")
    return 1 if problems or not headers else 0


if __name__ == "__main__":
    sys.exit(main())
