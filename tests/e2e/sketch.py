#!/usr/bin/python3
"""Opens a drawing in the Sketch, draws and selects a shape with real keys and a real mouse, and saves a picture."""

import argparse
import pathlib
import sys
import tempfile

from display import Display, Program, Timeout


def drive(display, picture):
    window = display.window(" - Sketch$")
    display.wait_drawn(window)
    left, top, _, _ = display.geometry(window)

    def drag(start, end):
        display.run("xdotool", "mousemove", str(left + start[0]), str(top + start[1]), "mousedown", "1",
                    "mousemove", str(left + end[0]), str(top + end[1]), "mouseup", "1")

    display.key("F6")
    drag((560, 190), (660, 240))  # a cloud
    display.window(r"^house.sketch \* - Sketch$")
    display.key("F2")
    display.click(left + 560, top + 215)
    display.screenshot(window, picture)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bundle", type=pathlib.Path, required=True)
    parser.add_argument("--file", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    arguments.out.parent.mkdir(parents=True, exist_ok=True)
    executable = arguments.bundle / "Contents/MacOS/Sketch"
    try:
        with tempfile.TemporaryDirectory() as home, Display() as display, \
                Program(display, executable, pathlib.Path(home), arguments.file):
            drive(display, arguments.out)
    except (Timeout, RuntimeError, OSError) as error:
        print(f"sketch failed: {error}", file=sys.stderr)
        return 1
    print(f"saved {arguments.out}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
