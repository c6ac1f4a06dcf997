#!/usr/bin/python3
"""port_docs.py [--write] SOURCE_FOLDER

The tables of docs/porting.md, and the header in which missing entries of message maps are errors with their cure,
come from the tables of `vmcore port scan` (tools/vmcore/port/*.txt). Fails when one of the two is not what these
say; with --write makes it so.
"""

import pathlib
import re
import sys

SHOWN = 6  # of the names in a line of what is missing


def areas(path):
    """(area, [(names, columns...)]) in the order of the file."""
    found = []
    for line in path.read_text().splitlines():
        if line.startswith("["):
            found.append((line[1:-1], []))
        elif line and not line.startswith("#"):
            found[-1][1].append([column.strip() for column in line.split(" | ")])
    return found


def code(name):
    return f"`{name}`"


def escape(text):
    return text.replace("<", "&lt;").replace("*", "\\*")


def difference_row(names, differs, cure):
    # Of members only the first one names its class, when all are of one.
    words = names.split(", ")
    owners = {word.rpartition("::")[0] for word in words}
    if len(owners) == 1 and "" not in owners:
        words[1:] = [word.rpartition("::")[2] for word in words[1:]]
    return ", ".join(map(code, words)), escape(differs), escape(cure)


def missing_row(names, instead):
    words = [word if "::" in word else word.split(":")[0] for word in names.split()]
    more = len(words) - SHOWN
    shown = ", ".join(map(code, words[:SHOWN] if more > 1 else words))
    return shown + (f" and {more} more" if more > 1 else ""), escape(instead)


def table(path, heading, row):
    lines = []
    for area, entries in areas(path):
        lines += ["", f"### {area}", "", heading, "|" + "---|" * (heading.count("|") - 1)]
        lines += ["| " + " | ".join(row(*entry)) + " |" for entry in entries]
    return "\n".join(lines[1:]) + "\n"


def with_tables(page, data):
    for name, heading, row in (("differences", "| name | what differs | what a port does |", difference_row),
                               ("missing", "| missing | instead |", missing_row)):
        text = table(data / f"{name}.txt", heading, row)
        marks = f"<!-- {name} -->\n", f"<!-- end of {name} -->"
        page, count = re.subn(f"({marks[0]}).*?({marks[1]})", lambda m: f"{m[1]}\n{text}\n{m[2]}", page,
                              flags=re.DOTALL)
        assert count == 1, f"docs/porting.md has no place for {name}"
    return page


ENTRIES = """\
// Entries of message maps that this library does not have: each is one error of the compiler that names its
// cure. A pragma, because a static_assert in a map speaks up once for every way the map is compiled.
// Made by tools/port_docs.py of tools/vmcore/port/missing.txt.
#pragma once

// clang-format off
"""


def entries_header(data):
    rows = [row for _, entries in areas(data / "missing.txt") for row in entries]
    text = ENTRIES
    for name, cure in sorted((name, row[1]) for row in rows for name in row[0].split()):
        if name.startswith("ON_"):
            assert '"' not in cure and "\\" not in cure, f"{name}: no quotes in its advice"
            text += f'#define {name}(...) _Pragma("GCC error \\"{name} is not there. Instead: {cure}\\"")\n'
    return text


def main():
    root = pathlib.Path(sys.argv[-1])
    data = root / "tools/vmcore/port"
    page = root / "docs/porting.md"
    wanted = {page: with_tables(page.read_text(), data),
              root / "include/vmcore/wnd/messageMapMissing.h": entries_header(data)}
    wrong = [path for path, text in wanted.items() if not path.is_file() or path.read_text() != text]
    if "--write" in sys.argv:
        for path in wrong:
            path.write_text(wanted[path])
    elif wrong:
        print(f"{wrong[0]} and {data}/*.txt differ: run tools/port_docs.py --write .")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
