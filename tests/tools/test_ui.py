#!/usr/bin/python3
"""test_ui.py PROGRAM

Runs `vmcore ui` without a display: exit statuses, and what is printed where.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

program = None

CLEAN = """<ui version="4.0"><widget class="QMenu" name="m">
<action name="a"><property name="tag"><number>100</number></property></action>
</widget></ui>
"""
FAULTY = CLEAN.replace("<number>100</number>", "<number>0</number>")
HINT = '<ui version="4.0">\n<widget class="QDialog" name="d"/></ui>\n'


class Ui(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-ui-"))
        self.addCleanup(shutil.rmtree, self.folder)
        for name, text in (("clean.ui", CLEAN), ("faulty.ui", FAULTY), ("hint.ui", HINT),
                           ("text.ui", "[x]\n")):
            (self.folder / name).write_text(text)

    def run_ui(self, *arguments):
        hidden = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        environment = {name: value for name, value in os.environ.items() if name not in hidden}
        return subprocess.run([program, "ui", *arguments], timeout=60, cwd=self.folder,
                              env=environment, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True)

    def expect(self, status, output, *arguments, message=""):
        result = self.run_ui("check", *arguments)
        with self.subTest(arguments=arguments):
            self.assertEqual((status, output), (result.returncode, result.stdout), result.stderr)
            if message:
                self.assertIn(message, result.stderr)
            else:
                self.assertEqual("", result.stderr)

    def test_check(self):
        fault = "faulty.ui:2: warning: no tag: item 'a' does nothing\n"
        text = "text.ui:1: error: no interface file: Start tag expected.\n"
        self.expect(0, "", "clean.ui")
        self.expect(0, "", "clean.ui", "hint.ui")
        self.expect(0, "hint.ui:2: note: no tag 1: the dialog has no OK button\n"
                    "hint.ui:2: note: no tag 2: the dialog has no Cancel button\n",
                    "--notes", "hint.ui")
        self.expect(1, fault, "clean.ui", "faulty.ui")
        self.expect(2, fault + text, "faulty.ui", "text.ui", "clean.ui")
        self.expect(2, fault, "none.ui", "faulty.ui", message="cannot read none.ui")

    def test_what_is_no_file(self):
        os.mkfifo(self.folder / "pipe.ui")
        (self.folder / "folder.ui").mkdir()
        for name in ("pipe.ui", "folder.ui"):
            self.expect(2, "", name, message=f"cannot read {name}")

    def test_usage(self):
        for arguments in ((), ("check",), ("burn",)):
            result = self.run_ui(*arguments)
            self.assertEqual((2, ""), (result.returncode, result.stdout), arguments)
            self.assertIn("--help", result.stderr)
        for arguments in (("--help",), ("check", "--help")):
            self.assertEqual(0, self.run_ui(*arguments).returncode)


if __name__ == "__main__":
    program = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
