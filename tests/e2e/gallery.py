#!/usr/bin/python3
"""Saves a picture of a page of the Gallery and, with --reference, compares it with a kept one."""

import argparse
import pathlib
import subprocess
import sys
import tempfile

from display import Display, Program, Timeout, wait_for

# A component may differ by this part of its range before a pixel counts as different, and so many of
# the picture's pixels may: other versions of the toolkit and of the fonts draw edges a little darker.
FUZZ = "8%"
MOST_DIFFERENT = 0.01
MANY_COLORS = 300  # what the whole drawing has, and a half-drawn one has not
SCREEN = "1280x1024x24"
CONTROLS_TAB = (110, 16)  # the place of the second tab


def take(display, page, picture):
    window = display.window("Gallery")

    def colors():
        return int(display.run("import", "-window", window, "-format", "%k", "info:-"))

    wait_for("the window to be drawn", lambda: colors() > MANY_COLORS)
    if page == "controls":
        drawing = colors()
        display.click_in(window, *CONTROLS_TAB)
        wait_for("the other page to be drawn", lambda: drawing != colors() == colors())
    display.screenshot(window, picture)


def size_of(path):
    text = subprocess.run(["identify", "-format", "%w %h", str(path)], check=True,
                          capture_output=True, text=True).stdout
    return tuple(int(number) for number in text.split())


def compare(picture, reference, difference):
    """The part of the pixels that differ; a picture of them is saved."""
    if size_of(picture) != size_of(reference):
        raise RuntimeError(f"{picture} is {size_of(picture)}, the reference {size_of(reference)}")
    result = subprocess.run(["compare", "-metric", "AE", "-fuzz", FUZZ, str(picture),
                             str(reference), str(difference)], capture_output=True, text=True)
    if result.returncode > 1:
        raise RuntimeError(f"compare: {result.stderr.strip()}")
    width, height = size_of(picture)
    return float(result.stderr.split()[0]) / (width * height)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bundle", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--reference", type=pathlib.Path)
    parser.add_argument("--page", choices=("drawing", "controls"), default="drawing")
    arguments = parser.parse_args()
    arguments.out.parent.mkdir(parents=True, exist_ok=True)
    executable = arguments.bundle / "Contents/MacOS/Gallery"
    try:
        with tempfile.TemporaryDirectory() as home, Display(SCREEN) as display, \
                Program(display, executable, pathlib.Path(home)):
            take(display, arguments.page, arguments.out)
        if arguments.reference:
            different = compare(arguments.out, arguments.reference,
                                arguments.out.with_suffix(".difference.png"))
            print(f"{different:.4%} of the pixels differ, at most {MOST_DIFFERENT:.0%} may")
            if different > MOST_DIFFERENT:
                return 1
    except (Timeout, RuntimeError, OSError) as error:
        print(f"gallery failed: {error}", file=sys.stderr)
        return 1
    print(f"saved {arguments.out}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
