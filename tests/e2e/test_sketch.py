#!/usr/bin/python3
"""The ported sample, worked with a real mouse and keys: what it saves tells what it did."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from display import Display, Program, wait_for

bundle = None  # Sketch.app

WINDOW = " - Sketch$"


class Sketch(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.home = pathlib.Path(self.folder.name)
        self.file = self.home / "drawing.sketch"
        self.display = self.enterContext(Display())
        self.start()

    def start(self, *arguments, **environment):
        self.program = self.enterContext(Program(
            self.display, bundle / "Contents/MacOS/Sketch", self.home, *arguments,
            environment={"VMCORE_MESSAGEBOX": "", **environment}))
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

    def type(self, text):
        self.display.run("xdotool", "type", "--clearmodifiers", text)

    def titled(self, title):
        wait_for(f"the title '{title}'", lambda: self.display.find(f"^{title}$"))

    def dialog(self, key, title, *then):
        """Opens a dialog, presses keys in it, and waits for its end."""
        self.display.key(key)
        self.display.window(title)
        for each in then:
            self.display.key(each)
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

    def test_what_the_mouse_draws_is_saved_and_opened_again(self):
        self.drag((300, 200), (320, 260), (350, 220))
        self.titled(r"Untitled \* - Sketch")
        for key, start, end in (("F4", (300, 300), (400, 340)), ("F5", (450, 200), (550, 260)),
                                ("F6", (450, 300), (550, 360)), ("F5", (600, 200), (610, 210))):
            self.display.key(key)
            self.drag(start, end)
        self.display.key("ctrl+z")
        self.display.key("ctrl+z")
        self.display.key("ctrl+y")
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
        self.display.key("F2")
        self.display.click(*self.at(450, 230))  # the rectangle's left edge
        self.display.key("Left", "Up", "Up", "ctrl+d", "Delete")
        moved = self.save()
        self.assertEqual(moved[4][-1], f"{sizes[1][0] - 1},{sizes[1][1] - 2}")
        self.display.key("ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+s")
        wait_for("the drawing as it was", lambda: self.file.read_text() == before)

    def test_dialogs_change_pen_page_and_shapes(self):
        self.dialog("ctrl+e", "^Pen$", "alt+t", "alt+w", "ctrl+a", "1", "2", "Return")
        self.display.key("F6")
        self.drag((300, 200), (400, 300))
        self.display.key("F7")
        self.display.click(*self.at(450, 200))
        self.display.window("^Text$")
        self.type("Hello, world")
        self.display.key("Return")
        wait_for("the end of the dialog", lambda: not self.display.find("^Text$"))
        self.display.window(WINDOW)
        self.dialog("ctrl+l", "^Shapes$", "Down", "alt+b", "Escape")
        self.display.menu("alt+f", "u")
        self.display.window("Page Setup")
        self.display.key("alt+w", "ctrl+a", "6", "4", "0", "ctrl+Tab", "alt+a", "ctrl+a", "2", "5",
                         "Return")
        wait_for("the end of the sheet", lambda: not self.display.find("Page Setup"))
        self.display.window(WINDOW)
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
