#!/usr/bin/python3
"""test_packages.py InstalledPrograms | InstalledDevelopment

What a stranger does with the Debian packages; packages.sh installs them in a clean root and runs this.
"""

import pathlib
import re
import shutil
import subprocess
import unittest

from stranger import ROOT, Development, Programs, run


class InstalledPrograms(Programs, unittest.TestCase):
    def test_desktop_opens_banks_with_the_librarian(self):
        globs = pathlib.Path("/usr/share/mime/globs2").read_text()
        self.assertRegex(globs, r"(?m)^\d+:audio/x-sysex:\*\.syx$")
        programs = pathlib.Path("/usr/share/applications/mimeinfo.cache").read_text()
        self.assertIn("audio/x-sysex=vmcore-librarian.desktop", programs)

    def test_libraries_opened_at_run_time_are_recommended(self):
        loaded = subprocess.run(["/sbin/ldconfig", "-p"], capture_output=True, text=True).stdout
        for library in ("libasound.so.2", "libcurl.so.4"):
            self.assertIn(library, loaded)


class InstalledDevelopment(Development, unittest.TestCase):
    compiler = "c++"

    def test_no_development_files_of_the_toolkit(self):
        self.assertEqual([], list(pathlib.Path("/usr/include").rglob("qt6")))

    def test_ported_program_with_its_resource_script(self):
        sample = self.folder / "sketch"
        shutil.copytree(ROOT / "examples/sketch", sample)
        lists = sample / "CMakeLists.txt"
        program = re.search(r"^vmcore_add_application\(.*?\)$", lists.read_text(), re.M | re.S)[0]
        lists.write_text("cmake_minimum_required(VERSION 3.25)\nproject(sketch LANGUAGES CXX)\n"
                         f"find_package(VMCore REQUIRED)\n{program}\n")
        build = self.folder / "build"
        run("cmake", "-S", sample, "-B", build)
        run("cmake", "--build", build, "--parallel", "2")
        _, trace = self.start_traced(build / "Sketch.app/Contents/MacOS/Sketch")
        trace.expect("WM_ACTIVATE", **{"class": "CMainFrame"})


if __name__ == "__main__":
    unittest.main(verbosity=2)
