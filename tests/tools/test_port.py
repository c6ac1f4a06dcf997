#!/usr/bin/python3
"""test_port.py PROGRAM

Runs `vmcore port scan` on the tree beside this file, and on what cannot be read.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

program = None
TREE = pathlib.Path(__file__).resolve().parent / "port"


class Port(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-port-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(TREE, self.folder / "tree")
        for name in (".git", "Debug", "out"):
            (self.folder / "tree" / name).mkdir()
            (self.folder / "tree" / name / "never.cpp").write_text("CView* view;\n")
        (self.folder / "tree/out/CMakeCache.txt").touch()
        (self.folder / "tree/again").symlink_to(self.folder / "tree")

    def scan(self, status, *arguments):
        result = subprocess.run([program, "port", "scan", *arguments], timeout=60, cwd=self.folder,
                                stdin=subprocess.DEVNULL, capture_output=True, text=True)
        self.assertEqual(status, result.returncode, result.stdout + result.stderr)
        return result

    def test_table(self):
        output = self.scan(0, "tree").stdout
        self.assertIn("missing: names 9, uses 9\n", output)
        self.assertIn("      1  CListCtrl::SetExtendedStyle  tree/src/MainFrm.cpp:11  remove: whole rows", output)
        self.assertLess(output.index("\nunknown"), output.index("\nthere with a difference"))
        self.assertIn("WM_UNDREAMT_OF", output)
        self.assertIn("\n72.9 % of 37 uses are there, ", output)
        self.assertIn("\n70.5 % of 34 names are there, ", output)
        self.assertIn(" with a difference.\n4 files.\n", output)
        self.assertIn("vmcore rc", output)

    def test_lines(self):
        lines = self.scan(0, "tree", "--lines").stdout.splitlines()
        self.assertIn("tree/src/wide.h:2: error: missing: CMap: std::map, std::unordered_map", lines)
        self.assertIn("tree/src/MainFrm.h:26: warning: difference: CWinApp::OnIdle: never called; a timer", lines)
        self.assertFalse([line for line in lines if ": note:" in line])
        notes = self.scan(0, "tree", "--lines", "--notes").stdout
        self.assertIn("tree/src/MainFrm.cpp:17: note: there: CEdit::SetSel\n", notes)

    def test_a_line_names_what_it_uses_once(self):
        (self.folder / "map.cpp").write_text(
            "BEGIN_MESSAGE_MAP(CMyApp, CWinApp)\n"
            "ON_COMMAND(ID_FILE_NEW, &CWinApp::OnFileNew)\n"
            "CString a; CString b; CString c;\n")
        lines = [line.split(":")[1:5] for line in self.scan(0, "map.cpp", "--lines").stdout.splitlines()
                 if line.startswith("map.cpp:")]
        self.assertEqual([("1", "CWinApp"), ("2", "CWinApp"), ("3", "CString")],
                         [(line[0], line[3].strip()) for line in lines])

    def test_json(self):
        report = json.loads(self.scan(0, "tree", "--json", "--lines").stdout)
        names = {name["name"]: name for name in report["names"]}
        uses = report["uses"]
        self.assertEqual((27, 9, 1), (uses["there"] + uses["difference"], uses["missing"], uses["unknown"]))
        self.assertEqual(3, len(names["BOOL"]["places"]))
        self.assertEqual("tree/src/latin.cxx", report["files"][names["CDocument"]["places"][0][0]])

    def test_status(self):
        self.scan(1, "tree", "--strict")
        (self.folder / "good.cpp").write_text("#include <afxwin.h>\nCRect* rect;\n")
        self.assertIn("\n100.0 % of 2 uses", self.scan(0, "good.cpp", "--strict").stdout)
        (self.folder / "empty").mkdir()
        self.assertIn("no C++ file in empty", self.scan(2, "empty").stderr)
        self.assertIn("none", self.scan(2, "none").stderr)
        self.assertIn("--help", self.scan(2).stderr)

    def test_what_cannot_be_read_whole(self):
        (self.folder / "tree/huge.c").write_text("")
        os.truncate(self.folder / "tree/huge.c", 17 * 1024 * 1024)
        os.mkfifo(self.folder / "tree/pipe.cpp")
        self.assertIn("huge.c: more than 16 MB", self.scan(0, "tree").stderr)
        (self.folder / "tree/src/MainFrm.h").unlink()
        (self.folder / "tree/src/MainFrm.h").symlink_to("nowhere")
        self.scan(0, "tree")


if __name__ == "__main__":
    program = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
