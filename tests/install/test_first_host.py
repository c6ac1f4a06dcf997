#!/usr/bin/python3
"""test_first_host.py BUILD_FOLDER COMPILER

Builds every step of docs/first-host.md from a staged install, exactly as the page shows it, and uses it on a
virtual display as the page says.
"""

import pathlib
import re
import sys
import tempfile
import unittest

from stranger import ROOT, run, sanitizers  # before the next line: finds the folder of display
from display import Display, Program, wait_for

PAGE = ROOT / "docs/first-host.md"
FILE = re.compile(r"^`([\w.]+)`:\n\n```\w+\n(.*?)^```", re.MULTILINE | re.DOTALL)
build = compiler = None


def steps():
    """The files of each step; what a step does not show stays as it was."""
    files = {}
    for part in PAGE.read_text().split("\n## ")[1:]:
        shown = dict(FILE.findall(part))
        if shown:
            files = {**files, **shown}
            yield files


class FirstHost(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="vmcore-first-host-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        run("cmake", "--install", build, "--prefix", cls.folder / "prefix")
        cls.library = next((cls.folder / "prefix").rglob("libVMCore.so")).parent
        cls.programs = [cls.build_step(number, files) for number, files in enumerate(steps(), 1)]

    @classmethod
    def build_step(cls, number, files):
        source = cls.folder / f"step{number}"
        source.mkdir()
        for name, text in files.items():
            (source / name).write_text(text)
        run("cmake", "-S", source, "-B", source / "build",
            f"-DCMAKE_PREFIX_PATH={cls.folder / 'prefix'}", f"-DCMAKE_CXX_COMPILER={compiler}",
            "-DCMAKE_CXX_FLAGS=" + " ".join(["-Wall", "-Wextra", "-Werror", *sanitizers(build)]))
        run("cmake", "--build", source / "build")
        return source / "build/hello.app/Contents/MacOS/hello"

    def start(self, display, step):
        program = self.enterContext(Program(
            display, self.programs[step - 1], self.folder,
            environment={"VMCORE_MESSAGEBOX": "", "LD_LIBRARY_PATH": str(self.library)}))
        display.window("Hello")
        return program

    def test_every_step_does_what_the_page_says(self):
        self.assertEqual(3, len(self.programs))
        with Display() as display:
            program = self.start(display, 1)
            display.close(display.find("Hello"))
            self.assertEqual(0, program.wait())

            program = self.start(display, 2)
            main = display.find("Hello")
            display.key("ctrl+g")
            wait_for("the message box", lambda: display.find("Hello") != main)
            display.key("Return")
            wait_for("its end", lambda: display.find("Hello") == main)
            display.window("Hello")
            display.key("ctrl+q")
            self.assertEqual(0, program.wait())

            program = self.start(display, 3)
            display.key("ctrl+g")
            display.window("Greet")
            display.key("ctrl+a")
            display.run("xdotool", "type", "--delay", "15", "Anna")
            display.key("Return")
            settings = self.folder / "config/Velmora Win.ini"
            wait_for("the setting", lambda: settings.exists() and "Name=Anna" in settings.read_text())
            display.window("Hello")
            display.key("ctrl+q")
            self.assertEqual(0, program.wait())


if __name__ == "__main__":
    build, compiler = sys.argv.pop(1), sys.argv.pop(1)
    unittest.main(verbosity=2)
