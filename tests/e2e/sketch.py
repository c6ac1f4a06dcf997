#!/usr/bin/python3
"""Opens a drawing in the Sketch, draws and selects a shape with real keys and a real mouse, and saves a picture of it;
or opens each of its dialogs and saves a picture of each, sketch-<dialog>.png."""

import argparse
import pathlib
import sys
import tempfile

from display import Display, Program, Timeout, wait_for

WINDOW = " - Sketch$"


class Tour:
    """A walk through the dialogs, each with something in it."""

    def __init__(self, display, folder):
        self.display = display
        self.folder = folder
        self.main = display.window(WINDOW)
        display.wait_drawn(self.main)

    def picture(self, name, title, *keys):
        """A picture of the window with its frame, after keys that change what it shows."""
        window = self.display.window(title)
        self.display.wait_active(window)
        self.display.wait_drawn(window)
        if keys:
            before = self.display.wait_still(window)
            self.display.key(*keys)
            self.display.wait_still(window, other_than=before)
        path = self.folder / f"sketch-{name}.png"
        self.display.screenshot(window, path, "-frame")
        print(f"saved {path}")

    def leave(self, title):
        self.display.key("Escape")
        wait_for(f"the end of '{title}'", lambda: not self.display.find(title))
        self.display.window(WINDOW)

    def run(self):
        display = self.display
        display.key("ctrl+e")
        self.picture("pen", "^Pen$", "alt+w", "ctrl+a", "1", "2", "alt+t")
        self.leave("^Pen$")
        display.menu("alt+f", "u")
        self.picture("page-size", "^Page Setup$")
        self.picture("page-grid", "^Page Setup$", "ctrl+Tab")
        self.leave("^Page Setup$")
        display.key("ctrl+l")
        self.picture("shapes", "^Shapes$", "Down")
        self.leave("^Shapes$")
        display.key("F7")
        display.click_in(self.main, 600, 250)
        self.picture("text", "^Text$", *"letters")
        self.leave("^Text$")
        display.menu("alt+h", "a")
        self.picture("about", "^About Sketch$")
        self.leave("^About Sketch$")


def draw(display, picture):
    window = display.window(WINDOW)
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
    print(f"saved {picture}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bundle", type=pathlib.Path, required=True)
    parser.add_argument("--file", type=pathlib.Path, required=True)
    what = parser.add_mutually_exclusive_group(required=True)
    what.add_argument("--out", type=pathlib.Path, help="the picture of the drawing")
    what.add_argument("--dialogs", type=pathlib.Path, help="the folder for the pictures of the dialogs")
    arguments = parser.parse_args()
    (arguments.dialogs or arguments.out.parent).mkdir(parents=True, exist_ok=True)
    executable = arguments.bundle / "Contents/MacOS/Sketch"
    try:
        with tempfile.TemporaryDirectory() as home, Display() as display, \
                Program(display, executable, pathlib.Path(home), arguments.file):
            if arguments.dialogs:
                Tour(display, arguments.dialogs).run()
            else:
                draw(display, arguments.out)
    except (Timeout, RuntimeError, OSError) as error:
        print(f"sketch failed: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
