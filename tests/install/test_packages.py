#!/usr/bin/python3
"""test_packages.py InstalledPrograms | InstalledDevelopment

What a stranger does with the Debian packages; packages.sh installs them in a clean root and runs this.
"""

import pathlib
import subprocess
import unittest

from stranger import Development, Programs


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


if __name__ == "__main__":
    unittest.main(verbosity=2)
