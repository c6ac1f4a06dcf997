#!/usr/bin/python3
"""The Librarian's plug-ins on a virtual display: the voice editor, driven with keys, and bad ones."""

import pathlib
import shutil
import sys
import tempfile
import unittest

from display import Display, Program

HEADER, FIRST_ROW = 64, 36
LEVEL_OF_OPERATOR_1 = "00 79"

bundle = None  # Librarian.app
data = None    # the folder of the banks
odd = None     # the folder of plug-ins that must be refused
display = None


class Plugins(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.bank = self.folder / "mine.syx"
        shutil.copy(data / "voices.syx", self.bank)

    def start(self, bundle_path=None, waits=True, **environment):
        """The program with the bank open and its message selected."""
        executable = (bundle_path or bundle) / "Contents/MacOS/Librarian"
        self.program = Program(display, executable, self.folder, self.bank,
                               environment=environment)
        self.addCleanup(self.program.__exit__)
        self.program.expect("opened mine.syx 1 messages")
        if waits:
            self.program.plugins()
        window = display.window("Librarian")
        left, top = display.content(window, self.program)
        display.click(left + 330, top + HEADER + FIRST_ROW)
        self.program.expect("selected 1")

    def quit(self):
        display.key("ctrl+q")
        self.program.expect("closed")
        self.assertEqual(self.program.wait(), 0, self.program.log())

    def test_moved_slider_is_sent_stored_and_saved(self):
        self.start()
        display.menu("alt+e", "v")
        self.program.expect("editor shows 1")
        display.key("alt+l", "Left")
        self.program.expect(f"edit sent F0 43 10 {LEVEL_OF_OPERATOR_1} 62 F7")
        display.key("alt+s")
        self.program.expect("stored 1")
        display.key("ctrl+t")
        self.program.expect("editor closed")
        before = self.bank.read_bytes()
        self.quit()  # which asks, and saves: the box answers by itself
        after = self.bank.read_bytes()
        self.assertEqual([i for i, (a, b) in enumerate(zip(before, after)) if a != b],
                         [6 + 5 * 17 + 14, len(after) - 2])  # the level and the checksum

    def test_leaving_asks_about_changes(self):
        self.start()
        display.key("ctrl+t")
        self.program.expect("editor shows 1")
        display.key("alt+n", "ctrl+a")
        display.run("xdotool", "type", "--delay", "0", "Horn")
        self.program.expect("edit sent F0 43 10 01 11 48 F7")
        display.key("alt+c")
        self.program.expect("stored 1")  # the box answers by itself
        self.program.expect("editor closed")
        self.quit()
        self.assertIn(b"Horn      ", self.bank.read_bytes())

    def test_bad_ones_are_refused_and_the_verdict_is_remembered(self):
        copy = self.folder / "Librarian.app"
        shutil.copytree(bundle, copy)
        (copy / "Contents/PlugIns/Broken.so").write_text("no shared object")
        shutil.copy("/bin/true", copy / "Contents/PlugIns/NoPlugin.so")
        for _ in range(2):
            self.start(copy)
            self.assertEqual(self.program.plugins(),
                             "plugins Voice editor, Patch memory, Six-operator voices")
            display.menu("alt+h", "p")
            self.program.expect("dialog plug-ins: Broken.so, NoPlugin.so")
            display.window("Plug-ins")
            display.key("Escape")
            self.quit()
        stored = (self.folder / "config/Velmora Win.ini").read_text()
        self.assertEqual(stored.count("/PlugIns/"), 5, stored)

    def test_one_that_hangs_keeps_nobody_waiting(self):
        copy = self.folder / "Librarian.app"
        shutil.copytree(bundle, copy)
        shutil.copy(odd / "Hangs.so", copy / "Contents/PlugIns/ZHangs.so")
        self.start(copy, waits=False)
        self.program.expect("described 32 six-operator voices: BRASS 1 to LEAD 4")
        display.key("ctrl+t")
        self.program.expect("editor shows 1")
        self.quit()
        self.assertNotIn("plugins", " ".join(self.program.lines()))  # the trial was still going on
        stored = (self.folder / "config/Velmora Win.ini").read_text()
        self.assertEqual(stored.count("/PlugIns/"), 3, stored)


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1)).resolve()
    data = pathlib.Path(sys.argv.pop(1)).resolve()
    odd = pathlib.Path(sys.argv.pop(1)).resolve()
    with Display() as display:
        unittest.main(verbosity=2)
