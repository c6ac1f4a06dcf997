#!/usr/bin/python3
"""test_resource_script.py PROGRAM

Builds a program with a RESOURCE_SCRIPT by the modules of cmake/ and the tool PROGRAM; the library itself is
not needed for that.
"""

import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml

MODULES = pathlib.Path(__file__).resolve().parents[2] / "cmake"
tool = None

PROJECT = """cmake_minimum_required(VERSION 3.16)
project(show LANGUAGES CXX)
add_library(VMCore::VMCore INTERFACE IMPORTED)
include(%s/VMCoreApplication.cmake)
vmcore_add_application(NAME show SOURCES main.cpp INFO Info.plist RESOURCE_SCRIPT show.rc %s)
"""
OPTIONS = """RESOURCE_SCRIPT_OPTIONS --include inc more "--define" "TITLE=\\"a  $b\\"" EXTRA
    --language german --codepage 1250"""
SCRIPT = b"""#include "ids.h"
#include "more.h"
IDD_SHOW DIALOG 0, 0, 90, 50
CAPTION TITLE
BEGIN
END
LANGUAGE 9, 1
STRINGTABLE { 7 "tree" }
LANGUAGE 7, 1
STRINGTABLE { 7 "B\xb9um" }
#ifdef EXTRA
9 BITMAP dot.bmp
#endif
1 VERSIONINFO
FILEVERSION 1, 2
PRODUCTVERSION 3, 4
{ BLOCK "StringFileInfo" { BLOCK "040904b0" { VALUE "LegalCopyright", "A; [B & C" } } }
"""
INFO = """<plist version="1.0"><!-- of <dict> this -->
<dict>
  <key>CFBundleVersion</key> <string>9</string>
  <key>Types</key>
  <array><dict><key>CFBundleShortVersionString</key><string>inner</string><key>D</key><dict/></dict></array>
  <key>Last</key><true/>
</dict></plist>
"""


def bitmap(blue):
    return (b"BM" + bytes([58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 24, 0])
            + bytes(24) + bytes([blue, 0, 0, 0]))


class ResourceScript(unittest.TestCase):
    generator = "Ninja"

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore script-"))
        self.addCleanup(shutil.rmtree, self.folder)
        for name, text in {"main.cpp": '#include "showAccelerators.h"\nint main() {}\n', "Info.plist": INFO,
                           "CMakeLists.txt": PROJECT % (MODULES, OPTIONS), "inc/ids.h": "#define IDD_SHOW 100\n",
                           "more/more.h": "", "show.rc": SCRIPT, "dot.bmp": bitmap(1)}.items():
            self.write(name, text)
        self.contents = self.folder / "build/show.app/Contents"
        self.configure()

    def write(self, name, content):
        (self.folder / name).parent.mkdir(exist_ok=True)
        (self.folder / name).write_bytes(content if isinstance(content, bytes) else content.encode())

    def run_cmake(self, *arguments):
        result = subprocess.run(["cmake", *arguments], cwd=self.folder, timeout=100, capture_output=True,
                                text=True, stdin=subprocess.DEVNULL)
        return result.returncode, result.stdout + result.stderr

    def configure(self):
        return self.run_cmake("-B", "build", "-G", self.generator, f"-DVMCORE_TOOL={tool}")

    def build(self):
        status, output = self.run_cmake("--build", "build")
        self.assertEqual(0, status, output)
        return output

    def resources(self):
        return sorted(path.name for path in (self.contents / "Resources").iterdir())

    def test_options_and_version(self):
        self.build()
        self.assertEqual(["Bitmap_9.png", "DLG_100.ui", "Strings.ini"], self.resources())
        titles = xml.parse(self.contents / "Resources/DLG_100.ui").findall(".//property[@name='windowTitle']/string")
        self.assertEqual(["a  $b"], [title.text for title in titles])
        self.assertIn("7=Bąum", (self.contents / "Resources/Strings.ini").read_text())
        plist = plistlib.loads((self.contents / "Info.plist").read_bytes(), fmt=plistlib.FMT_XML)
        self.assertEqual({"CFBundleName": "show", "Executable file": "show", "CFBundleVersion": "9",
                          "Types": [{"CFBundleShortVersionString": "inner", "D": {}}], "Last": True,
                          "CFBundleShortVersionString": "3.4", "NSHumanReadableCopyright": "A; [B & C"}, plist)
        self.assertEqual(1, (self.contents / "Info.plist").read_text().count("<key>CFBundleVersion<"))

    def test_what_changes_is_made_anew(self):
        self.build()
        self.assertNotIn("Compiling resources", self.build())
        self.write("inc/ids.h", "#define IDD_SHOW 101\n")
        self.build()
        self.assertEqual(["Bitmap_9.png", "DLG_101.ui", "Strings.ini"], self.resources())
        picture = self.contents / "Resources/Bitmap_9.png"
        former = picture.read_bytes()
        self.write("dot.bmp", bitmap(2))
        self.build()
        self.assertNotEqual(former, picture.read_bytes())
        self.write("CMakeLists.txt", PROJECT % (MODULES, OPTIONS.replace("EXTRA", "")))
        self.build()
        self.assertFalse(picture.exists())
        self.assertNotIn("Compiling resources", self.build())

    def test_mistakes(self):
        self.write("show.rc", b"\n  1 DIALOG 0, 0, 1, 1 { KNOB }")
        status, output = self.run_cmake("--build", "build")
        self.assertNotEqual(0, status)
        self.assertIn(f"{self.folder}/show.rc:2:25: error: ", output)
        for project, message in (("RESOURCE_SCRIPT_OPTIONS --out x", "RESOURCE_SCRIPT_OPTIONS knows"),
                                 ("RESOURCE_SCRIPT_OPTIONS --define", "RESOURCE_SCRIPT_OPTIONS knows")):
            self.write("CMakeLists.txt", PROJECT % (MODULES, project))
            self.assertIn(message, self.configure()[1])
        self.write("CMakeLists.txt", PROJECT % (MODULES, ""))
        self.write("Info.plist", "<plist><dict><key>A</key></dict></plist>")
        self.assertIn("Info.plist is no property list", self.configure()[1])


class WithMake(ResourceScript):
    generator = "Unix Makefiles"


if __name__ == "__main__":
    tool = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
