#!/usr/bin/python3
"""test_ini.py PROGRAM

Runs `vmcore ini` in a temporary folder, without a display: exit statuses, what is printed where,
what becomes of the files.
"""

import json
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile
import unittest

program = None


class Ini(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-ini-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.file = self.folder / "a.ini"

    def run_ini(self, *arguments, program_arguments=("ini",), full=False):
        """`full`: no byte can be written to a file, as on a full disk."""
        limit = (lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))) if full else None
        hidden = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
        environment = {name: value for name, value in os.environ.items() if name not in hidden}
        return subprocess.run([program, *program_arguments, *map(str, arguments)], timeout=60,
                              cwd=self.folder, env=environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, errors="surrogateescape",
                              preexec_fn=limit, restore_signals=not full)

    def expect(self, status, output, *arguments, message="", full=False):
        """`message`: a part of what stands on standard error, or all of it when empty."""
        result = self.run_ini(*arguments, full=full)
        with self.subTest(arguments=arguments):
            self.assertEqual((status, output), (result.returncode, result.stdout), result.stderr)
            if message:
                self.assertIn(message, result.stderr)
            else:
                self.assertEqual("", result.stderr)

    def write(self, text):
        self.file.write_bytes(text.encode("latin-1"))

    def read(self):
        return self.file.read_bytes().decode("latin-1")

    def test_get(self):
        self.write("[x]\na= 1 ; one\nempty=\n")
        self.expect(0, " 1\n", "get", "a.ini", "X", "A")
        self.expect(0, "\n", "get", "a.ini", "x", "empty")
        self.expect(1, "", "get", "a.ini", "x", "b",
                    message=f"section [x] of {self.file} has no key b")
        self.expect(1, "", "get", "a.ini", "y", "a", message="has no section [y]")
        self.expect(2, "", "get", "b.ini", "x", "a", message="No such file")
        self.expect(2, "", "get", ".", "x", "a", message="it is a folder")

    def test_set(self):
        self.expect(0, "", "set", "a.ini", "Window", "Left", "120")
        self.assertEqual("\r\n[Window]\r\nLeft=120\r\n", self.read())
        self.expect(0, "", "set", self.file, "window", "left", "-7")
        self.expect(0, "", "set", self.file, "Window", "Title", "--", "--force")
        self.assertEqual("\r\n[Window]\r\nleft=-7\r\nTitle=--force\r\n", self.read())
        self.expect(0, "", "set", self.file, "ini", "list", "")  # names of commands
        self.expect(0, "\n", "get", self.file, "ini", "list")

    def test_set_refuses_what_would_not_come_back(self):
        self.expect(1, "", "set", "a.ini", "x", "a", "1;2", message="first ';'")
        self.assertFalse(self.file.exists())
        self.write("[x]\na=1\nlast=2")
        self.expect(1, "", "set", "a.ini", "x", "a", "2", message="would lose the last line")
        self.expect(1, "", "delete", "a.ini", "x", "a", message="would lose the last line")
        self.assertEqual("[x]\na=1\nlast=2", self.read())
        self.expect(0, "", "set", "--force", "a.ini", "x", "a", "2")
        self.assertEqual("[x]\r\na=2\r\n", self.read())

    def test_says_when_it_cannot_write(self):
        self.expect(1, "", "set", "none/a.ini", "x", "a", "1",
                    message="cannot write " + str(self.folder / "none/a.ini"))
        self.write("[x]\na=1\n")
        for command in (("set", "a.ini", "x", "a", "2"), ("delete", "a.ini", "x", "a"),
                        ("delete", "a.ini", "x")):
            self.expect(1, "", *command, full=True,
                        message=f"cannot write {self.file}: writing failed")
        self.assertEqual("[x]\na=1\n", self.read())
        self.write("[x]\na=1")
        self.expect(2, "", "check", "--fix", "a.ini", message="cannot write a.ini", full=True)
        self.assertEqual("[x]\na=1", self.read())

    def test_names_that_the_library_would_translate(self):
        for name in ("a:b.ini", "a\\b.ini", "a.bmp", "/".join(["d" * 50] * 6)):
            for command in (("get", name, "x", "a"), ("set", name, "x", "a", "1"),
                            ("delete", name, "x"), ("list", name)):
                self.expect(2, "", *command, message="the library ")
        self.assertEqual([], list(self.folder.iterdir()))
        (self.folder / "a:b.ini").write_text("[x]\n")
        self.expect(0, "", "check", "a:b.ini")

    def test_delete(self):
        self.write("[x]\na=1\nb=\nc=1\nC=2\n\n[y]\nd=1\n")
        self.expect(0, "", "delete", "a.ini", "X", "A")
        self.expect(1, "", "delete", "a.ini", "x", "a", message="has no key a")
        self.expect(1, "", "delete", "a.ini", "z", "a", message="has no section [z]")
        self.expect(1, "", "delete", "a.ini", "z", message="has no section [z]")
        self.expect(1, "", "delete", "a.ini", "x", "b", message="never deletes such an entry")
        self.expect(1, "", "delete", "a.ini", "x", "c", message="another c on line 3")
        self.assertEqual("[x]\r\nb=\r\nC=2\r\n\r\n[y]\r\nd=1\r\n", self.read())
        self.expect(0, "", "delete", "a.ini", "x")
        self.assertEqual("[x]\r\n\r\n[y]\r\nd=1\r\n", self.read())

    def test_list(self):
        self.write("[x]\na=1;\n[y]\nb=\xfc\n[X]\na=2\n")
        self.expect(0, "x\ny\n", "list", "a.ini")
        self.expect(0, "a=1\na=2\n", "list", "a.ini", "x",
                    message="a.ini:6: the library does not find")
        self.expect(1, "", "list", "a.ini", "z", message="has no section [z]")
        everything = json.loads(self.run_ini("list", "a.ini", "--json").stdout)
        self.assertEqual([("x", 1, True), ("y", 3, True), ("X", 5, False)],
                         [(s["name"], s["line"], s["found"]) for s in everything["sections"]])
        one = json.loads(self.run_ini("list", "--json", "a.ini", "y").stdout)["sections"]
        self.assertEqual([[{"key": "b", "value": "\xfc", "line": 4, "found": True}]],
                         [section["entries"] for section in one])

    def test_check(self):
        self.write("[x]\na=1 ; one\na=2\n")
        self.expect(1, "a.ini:3: warning: duplicate key: 'a' is found on line 2 only\n", "check",
                    "a.ini")
        (self.folder / "b.ini").write_text("[x]\na=1;\n")
        self.expect(0, "", "check", "b.ini")
        self.expect(0, "b.ini:2: note: cut value: ends at the first ';': '1'\n", "check", "--notes",
                    "b.ini")
        self.expect(2, "a.ini:3: warning: duplicate key: 'a' is found on line 2 only\n", "check",
                    "none.ini", "a.ini", "b.ini", message="cannot read none.ini")
        with open(self.folder / "large.ini", "wb") as large:
            large.truncate(2 << 30)
        self.expect(1, "large.ini:1: error: size: 2 GiB or more: the library does not read the "
                    "file\n", "check", "--fix", "large.ini")

    def test_check_repairs(self):
        self.write("\xef\xbb\xbf[x]\na=1\na=2")
        self.file.chmod(0o640)
        (self.folder / "link.ini").symlink_to("a.ini")
        self.expect(1, "link.ini:1: fixed: dropped the byte-order mark\n"
                    "link.ini:3: fixed: ended the last line\n"
                    "link.ini:3: warning: duplicate key: 'a' is found on line 2 only\n",
                    "check", "--fix", "link.ini")
        self.assertEqual("[x]\na=1\na=2\n", self.read())
        self.assertEqual(0o100640, self.file.stat().st_mode)
        self.assertEqual(["a.ini", "link.ini"], sorted(p.name for p in self.folder.iterdir()))

    def test_usage(self):
        for arguments in ((), ("ini",), ("ini", "get", "a.ini", "x"), ("ini", "burn"),
                          ("ini", "check")):
            result = self.run_ini(program_arguments=arguments)
            self.assertEqual((2, ""), (result.returncode, result.stdout), arguments)
            self.assertIn("--help", result.stderr)
        for arguments in (("--help",), ("ini", "--help"), ("ini", "check", "--help"),
                          ("--version",)):
            result = self.run_ini(program_arguments=arguments)
            self.assertEqual((0, ""), (result.returncode, result.stderr), arguments)
        with open("/dev/full", "w") as full:
            self.write("[x]\n")
            result = subprocess.run([program, "ini", "list", self.file], stdout=full,
                                    stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(2, result.returncode)


if __name__ == "__main__":
    program = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
