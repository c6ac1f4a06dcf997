#!/usr/bin/python3
"""The gallery's page of controls, worked with real keys and clicks; the message trace tells what came."""

import pathlib
import sys
import tempfile
import unittest

from display import Display, Program, wait_for
from gallery import CONTROLS_TAB
from trace import Trace

bundle = None  # Gallery.app

BN_CLICKED = 0x66
EN_CHANGE = 0x4
PAGE = {"class": "ControlsPage"}


class Controls(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        home = pathlib.Path(self.folder.name)
        self.trace = Trace(home / "trace.jsonl")
        self.display = self.enterContext(Display("1280x1024x24"))
        environment = {**self.trace.environment(), "VMCORE_MESSAGEBOX": ""}
        self.program = self.enterContext(Program(
            self.display, bundle / "Contents/MacOS/Gallery", home, environment=environment))
        self.window = self.display.window("Gallery")
        self.display.wait_drawn(self.window)
        self.display.click_in(self.window, *CONTROLS_TAB)
        self.trace.expect("WM_NOTIFY", **{"class": "GalleryFrame"})

    def command(self, key, number, code):
        self.display.key(key)
        self.trace.expect("WM_COMMAND", low=number, high=code, **PAGE)

    def test_keys_reach_every_kind_of_control(self):
        self.command("alt+p", 1001, BN_CLICKED)
        self.command("alt+c", 1003, BN_CLICKED)
        self.command("alt+t", 1004, BN_CLICKED)
        self.command("alt+u", 1006, BN_CLICKED)
        self.display.key("alt+m")
        self.command("x", 1010, EN_CHANGE)
        self.display.key("alt+v")
        self.display.key("Up")  # the arrows beside the text count it up
        self.trace.expect("WM_VSCROLL", low=5, high=13, **PAGE)

    def test_dialogs_open_and_escape_closes_them(self):
        for key, title in (("alt+s", "Properties of the voice"), ("alt+f", "Open"),
                           ("alt+a", "Save As"), ("alt+d", "Choose the folder"),
                           ("alt+h", "Select Font"), ("alt+l", "Select Color")):
            self.display.key(key)
            opened = self.display.window(title)
            self.display.key("Escape")
            wait_for(f"the end of '{title}'", lambda: not self.display.find(title))
            self.display.window("Gallery")
            self.assertNotEqual(opened, self.window)

    def test_a_property_sheet_is_applied_and_closed(self):
        self.display.key("alt+s")
        self.display.window("Properties of the voice")
        self.display.key("alt+n", "F", "ctrl+Tab", "alt+p", "Return")
        wait_for("the end of the sheet", lambda: not self.display.find("Properties of the voice"))
        self.trace.expect("WM_COMMAND", low=1060, high=BN_CLICKED, **PAGE)


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1))
    unittest.main()
