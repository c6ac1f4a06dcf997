#!/usr/bin/python3
"""check_docs.py SOURCE_FOLDER

Fails when a link in the documentation leads nowhere, or a file named in backticks does not exist. A name counts as
one of a file of the project when it begins with one of its folders, or ends as sources and pages do; it may be
written from the project's folder, from the page's, from a module's or an include folder's, or stand alone.
"""

import pathlib
import re
import sys

FENCED = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\]\(([^)\s#]*)(?:#([^)\s]*))?\)")
QUOTED = re.compile(r"`([\w.*+-]+(?:/[\w.*+-]+)*/?)`")
SOURCE = re.compile(r".*\.(?:cpp|h|md|py)$")
GENERATED = "build/"
BASES = ["", "docs", "include", "include/vmcore", "src"]
OF_READERS = {"hello.cpp", "panel.cpp"}  # what the pages have the reader write


def anchors(page):
    """What a link behind '#' may name: the headings, as browsers of repositories spell them."""
    headings = re.findall(r"^#+ (.*)$", FENCED.sub("", page.read_text()), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken_links(page, text):
    for target, anchor in LINK.findall(text):
        if re.match(r"\w+:", target):
            continue
        path = page.parent / target if target else page
        if not path.exists():
            yield f"link to {target}"
        elif anchor and anchor not in anchors(path):
            yield f"link to {target}#{anchor}: there is no such heading"


def exists(root, files, name):
    if any(next(root.glob(f"{base}/{name}".strip("/")), None) for base in BASES):
        return True
    return "/" not in name and any(file.match(name) for file in files)


def missing_files(root, folders, files, text):
    for name in QUOTED.findall(text):
        of_project = name.split("/")[0] in folders and "/" in name or SOURCE.match(name)
        if not of_project or name.startswith(GENERATED) or name in OF_READERS:
            continue
        if not exists(root, files, name):
            yield f"file {name}"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    folders = {path.name for path in root.iterdir() if path.is_dir()}
    files = [path for folder in folders - {"build", ".git"} for path in (root / folder).rglob("*")]
    pages = sorted([*root.glob("*.md"), *root.glob("docs/*.md")])
    problems = []
    for page in pages:
        text = FENCED.sub("", page.read_text())
        for what in [*broken_links(page, text), *missing_files(root, folders, files + pages, text)]:
            problems.append(f"{page.relative_to(root)}: {what}")
    print("\n".join(problems) or f"{len(pages)} pages name what is there")
    return 1 if problems or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
