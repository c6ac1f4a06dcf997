#!/usr/bin/python3
"""test_rc.py PROGRAM

Runs `vmcore rc` without a display: exit statuses, what is printed where, and which files are touched.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

program = None

SCRIPT = """#include "ids.h"
IDD_ABOUT DIALOGEX 0, 0, 100, 50
STYLE WS_POPUP | WS_CAPTION | WS_SYSMENU
CAPTION TITLE
BEGIN
    DEFPUSHBUTTON "OK", IDOK, 10, 10, 50, 14
END
"""
WRONG = "1 DIALOG 0, 0, 1, 1\nBEGIN\n    KNOB 1\nEND\n"
OUTPUT = "DLG_100.ui"


class Rc(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-rc-"))
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "inc").mkdir()
        for name, text in (("a b.rc", SCRIPT), ("wrong.rc", WRONG),
                           ("inc/Ids.h", "#define IDD_ABOUT 100\n")):
            (self.folder / name).write_text(text)

    def run_rc(self, *arguments, script="a b.rc", define='TITLE="Title"'):
        hidden = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        environment = {name: value for name, value in os.environ.items() if name not in hidden}
        return subprocess.run([program, "rc", "--include", "inc", "--define", define, script,
                               *arguments], timeout=60, cwd=self.folder, env=environment,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True)

    def expect(self, status, result, message=""):
        self.assertEqual(status, result.returncode, result.stderr)
        if message:
            self.assertIn(message, result.stderr)
        else:
            self.assertEqual("", result.stderr)
        return result.stdout

    def test_files(self):
        output = self.expect(0, self.run_rc("--out", "new/out", "--report", "all.txt",
                                            "--depfile", "deps.d"))
        self.assertIn("a b.rc:2:1: converted: ", output)
        self.assertRegex(output, r"\na b\.rc: \d+ converted, \d+ approximated, \d+ left out\n$")
        self.assertIn("converted: ", (self.folder / "all.txt").read_text())
        self.assertEqual("new/out/DLG_100.ui: \\\n a\\ b.rc \\\n inc/Ids.h\n\na\\ b.rc:\n\ninc/Ids.h:\n",
                         (self.folder / "deps.d").read_text())

        path = self.folder / "new/out" / OUTPUT
        os.utime(path, (1, 1))
        quiet = self.expect(0, self.run_rc("--out", "new/out", "--quiet"))
        self.assertNotIn(": converted: ", quiet)
        self.assertEqual(1, path.stat().st_mtime, "what is the same keeps its time")
        (self.folder / "inc/Ids.h").write_text("#define IDD_ABOUT 101\n")
        self.assertEqual("DLG_101.ui\n", self.expect(0, self.run_rc("--list")))
        self.assertEqual([OUTPUT], os.listdir(self.folder / "new/out"))

    def test_failures(self):
        wrong = self.run_rc("--out", "out", script="wrong.rc")
        self.assertEqual("", self.expect(1, wrong, "wrong.rc:3:5: error: expected a control or END"))
        self.assertFalse((self.folder / "out").exists(), "nothing is written")
        self.expect(1, self.run_rc("--out", "out", define="NONE"), "a b.rc:4:9: error: ")
        self.expect(1, self.run_rc("--out", "out", define='TITLE="x'),
                    "--define TITLE:1:7: error: expected a closing quote")
        (self.folder / "sub").mkdir()
        (self.folder / "sub/main.rc").write_text('#include "d/part.rc"\nIDI ICON a.ico\n'
                                                 'STRINGTABLE { 1 "x" }\n')
        (self.folder / "sub/d").mkdir()
        (self.folder / "sub/d/part.rc").write_text('#include "beside.rc"\n')
        (self.folder / "sub/beside.rc").write_text("")
        (self.folder / "a.ico").write_bytes(b"of the current folder, which does not count")
        missing = self.run_rc("--out", "missing", script="sub/main.rc")
        self.assertIn("main.rc:2:1: left out: ICON IDI: there is no file 'a.ico'\n",
                      self.expect(1, missing, "is not there: see the report"))
        self.assertEqual(["Strings.ini"], os.listdir(self.folder / "missing"))
        (self.folder / "wrong.rc").write_text("1 DIALOG 0, 0, 1, 1 { \x1b[2J }")
        self.assertNotIn("\x1b", self.run_rc("--out", "out", script="wrong.rc").stderr)
        (self.folder / "file").write_text("")
        self.expect(1, self.run_rc("--out", "file"), "cannot make the folder file")
        (self.folder / "taken" / OUTPUT).mkdir(parents=True)
        self.expect(1, self.run_rc("--out", "taken"), "cannot write taken/DLG_100.ui")
        self.expect(2, self.run_rc("--out", "out", script="none.rc"), "cannot read none.rc")
        for arguments in ((), ("--out", "o", "--language", "klingon"), ("--out", "o", "--codepage", "7"),
                          ("--out", "o", "--define", "1=2"), ("--burn",)):
            result = self.run_rc(*arguments)
            with self.subTest(arguments=arguments):
                self.assertEqual((2, ""), (result.returncode, result.stdout))
                self.assertIn("--help", result.stderr)
        self.assertEqual(0, self.run_rc("--help").returncode)


if __name__ == "__main__":
    program = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
