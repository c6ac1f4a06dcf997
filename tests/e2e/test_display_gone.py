#!/usr/bin/python3
"""The X server of a running program goes away: the program ends at once, orderly and with status 1."""

import pathlib
import shutil
import sys
import tempfile
import unittest

from display import Display, Program, wait_for

bundle = None  # Librarian.app
data = None    # the folder of the banks


class DisplayGone(unittest.TestCase):
    def end_display(self, prepare):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        with Display() as display:
            executable = bundle / "Contents/MacOS/Librarian"
            with Program(display, executable, folder, data / "voices.syx") as program:
                program.expect("opened voices.syx 1 messages")
                display.window("Librarian")
                prepare(display, program)
                display.processes[0].kill()  # the server
                status = program.wait()
                self.assertEqual(status, 1, program.log())
                self.assertIn("The X11 connection broke", program.log())
                # The library was detached by its own destructor, which saves what was not saved.
                self.assertIn("Finished terminating VMCore", program.log())
        settings = list((folder / "config").glob("*.ini"))
        self.assertTrue(any("voices.syx" in path.read_text(errors="replace") for path in settings),
                        f"{[path.read_text() for path in settings]}")

    def test_of_an_idle_program(self):
        self.end_display(lambda display, program: None)

    def test_of_a_program_with_an_open_menu(self):
        def open_menu(display, program):
            before = self.count(display)
            display.key("alt+f")
            wait_for("the menu", lambda: self.count(display) > before)
        self.end_display(open_menu)

    @staticmethod
    def count(display):
        """How many windows are shown, menus included."""
        return len(display.run("xdotool", "search", "--onlyvisible", "--class", "librarian",
                               check=False).split())


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1)).resolve()
    data = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
