#!/usr/bin/python3
"""The ported sample, worked with a real mouse and keys: what it saves tells what it did."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from display import Display, Program, wait_for
from trace import Trace

bundle = None  # Sketch.app

WINDOW = " - Sketch$"
SELECT, LINE, RECTANGLE, ELLIPSE, TEXT = 32771, 32773, 32774, 32775, 32776
FILL_TINT, SHAPE_BACK = 1017, 1052
UNDO, REDO = 0xE12B, 0xE12C
VIEW = {"class": "CSketchView"}


class Sketch(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.home = pathlib.Path(self.folder.name)
        self.file = self.home / "drawing.sketch"
        self.display = self.enterContext(Display())
        self.start()

    def start(self, *arguments, **environment):
        self.trace = Trace(self.home / f"trace{len(arguments)}.jsonl")
        self.program = self.enterContext(Program(
            self.display, bundle / "Contents/MacOS/Sketch", self.home, *arguments,
            environment={**self.trace.environment(), "VMCORE_MESSAGEBOX": "", **environment}))
        self.window = self.display.window(WINDOW)
        self.display.wait_drawn(self.window)

    def at(self, x, y):
        left, top, _, _ = self.display.geometry(self.window)
        return str(left + x), str(top + y)

    def drag(self, *points):
        steps = ["mousemove", *self.at(*points[0]), "mousedown", "1"]
        for point in points[1:]:
            steps += ["mousemove", *self.at(*point)]
        self.display.run("xdotool", *steps, "mouseup", "1")
        self.trace.expect("WM_LBUTTONUP", **VIEW)

    def command(self, key, number):
        """Presses an accelerator and waits until the window has taken it."""
        self.trace.skip()
        self.display.key(key)
        self.trace.expect("WM_COMMAND", low=number)

    def type(self, text):
        self.display.run("xdotool", "type", "--clearmodifiers", text)

    def titled(self, title):
        wait_for(f"the title '{title}'", lambda: self.display.find(f"^{title}$"))

    def end(self, title, key):
        """Ends the dialog by a key."""
        self.display.key(key)
        wait_for(f"the end of '{title}'", lambda: not self.display.find(title))
        self.display.window(WINDOW)

    def save(self):
        """The shapes in the file, without the page."""
        self.display.key("ctrl+s")
        if not self.file.exists():
            self.display.window("Save As")
            self.type(str(self.file))
            self.display.key("Return")
        self.titled("drawing.sketch - Sketch")
        return [line.split() for line in self.file.read_text().splitlines()[1:]]

    def test_windows_show_the_icon_of_the_script(self):
        icon = lambda: self.display.run("xprop", "-id", self.window, "_NET_WM_ICON")
        wait_for("the icon", lambda: "48 x 48" in icon())

    def test_what_the_mouse_draws_is_saved_and_opened_again(self):
        self.drag((300, 200), (320, 260), (350, 220))
        self.titled(r"Untitled \* - Sketch")
        for key, tool, start, end in (("F4", LINE, (300, 300), (400, 340)),
                                      ("F5", RECTANGLE, (450, 200), (550, 260)),
                                      ("F6", ELLIPSE, (450, 300), (550, 360)),
                                      ("F5", RECTANGLE, (600, 200), (610, 210))):
            self.command(key, tool)
            self.drag(start, end)
        self.command("ctrl+z", UNDO)
        self.command("ctrl+z", UNDO)
        self.command("ctrl+y", REDO)
        lines = self.save()
        self.assertEqual([line[0] for line in lines],
                         ["page", "grid", "freehand", "line", "rectangle", "ellipse"])
        self.assertGreaterEqual(len(lines[2]), 4 + 2, "points")
        sizes = [tuple(map(int, line[-1].split(","))) for line in lines[3:]]
        starts = [tuple(map(int, line[-2].split(","))) for line in lines[3:]]
        self.assertEqual([(e[0] - s[0], e[1] - s[1]) for s, e in zip(starts, sizes)],
                         [(100, 40), (100, 60), (100, 60)])
        self.display.close(self.window)
        self.assertEqual(self.program.wait(), 0)

        before = self.file.read_text()
        self.start(self.file)
        self.titled("drawing.sketch - Sketch")
        self.command("F2", SELECT)
        self.display.click(*self.at(450, 230))  # the rectangle's left edge
        self.display.key("Left", "Up", "Up", "ctrl+d", "Delete")
        moved = self.save()
        self.assertEqual(moved[4][-1], f"{sizes[1][0] - 1},{sizes[1][1] - 2}")
        self.display.key("ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+s")
        wait_for("the drawing as it was", lambda: self.file.read_text() == before)

    def test_dialogs_change_pen_page_and_shapes(self):
        self.display.key("ctrl+e")
        self.display.window("^Pen$")
        self.command("alt+t", FILL_TINT)
        self.display.key("alt+w", "ctrl+a", "9", "9", "Return")
        self.display.window("^Sketch$")  # says that no pen is so wide
        self.display.key("Return")
        wait_for("the end of the message", lambda: not self.display.find("^Sketch$"))
        self.display.window("^Pen$")
        self.display.key("alt+w", "ctrl+a", "1", "2")
        self.end("^Pen$", "Return")
        self.command("F6", ELLIPSE)
        self.drag((300, 200), (400, 300))
        self.command("F7", TEXT)
        self.display.click(*self.at(450, 200))
        self.display.window("^Text$")
        self.type("Hello, world")
        self.end("^Text$", "Return")
        self.display.key("ctrl+l")
        self.display.window("^Shapes$")
        self.command("alt+b", SHAPE_BACK)  # of the topmost, which is selected
        self.end("^Shapes$", "Escape")
        self.display.menu("alt+f", "u")
        self.display.window("Page Setup")
        self.display.key("alt+w", "ctrl+a", "6", "4", "0")
        self.display.key("ctrl+Tab", "alt+a", "ctrl+a", "2", "5")
        self.end("Page Setup", "Return")
        page, grid, text, ellipse = self.save()
        self.assertEqual(page, ["page", "640", "480"])
        self.assertEqual(grid, ["grid", "25", "show"])
        self.assertEqual(text[0::4], ["text", "Hello,"], "sent to the back")
        self.assertEqual((ellipse[0], ellipse[2]), ("ellipse", "12"))
        self.assertNotEqual(ellipse[3], "-", "a tint")

        self.display.key("ctrl+p")
        self.display.window("Print to File")
        pdf = self.home / "drawing.pdf"
        self.display.key("ctrl+a")
        self.type(str(pdf))
        self.display.key("Return")
        wait_for("the page", lambda: pdf.exists() and pdf.stat().st_size)
        printed = subprocess.run(["pdftotext", pdf, "-"], capture_output=True, text=True, check=True)
        self.assertIn("Hello, world", printed.stdout)

    def test_a_window_with_changes_asks_before_it_closes(self):
        self.drag((300, 200), (320, 260))
        self.display.close(self.window)
        self.display.window("^Sketch$")
        self.display.key("Escape")
        wait_for("the end of the question", lambda: not self.display.find("^Sketch$"))
        self.titled(r"Untitled \* - Sketch")
        self.display.window(WINDOW)
        self.display.menu("alt+f", "x")
        self.display.window("^Sketch$")
        self.display.key("alt+n")
        self.assertEqual(self.program.wait(), 0)

    def test_a_file_that_is_none_is_refused_with_its_line(self):
        self.file.write_text("Sketch 1\npage 700 500\ncircle 3\n")
        self.display.close(self.window)
        self.program.wait()
        self.start(self.file, VMCORE_MESSAGEBOX="log")
        wait_for("the refusal", lambda: "'circle' is not known" in self.program.log())
        self.assertIn("drawing.sketch, line 3:", self.program.log())
        self.titled("Untitled - Sketch")


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1))
    unittest.main(verbosity=2)
