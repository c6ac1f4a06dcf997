#!/usr/bin/python3
"""test_install.py BUILD_FOLDER COMPILER

Installs the build into a temporary folder and does there what a stranger does.
"""

import pathlib
import shutil
import sys
import tempfile
import unittest

from stranger import Development, Programs, cache, run, sanitizers

build = compiler = None


class Staged(Programs, Development, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-install-"))
        cls.addClassCleanup(shutil.rmtree, folder)
        run("cmake", "--install", build, "--prefix", folder / "prefix")
        # A moved installation must work too.
        cls.prefix = (folder / "prefix").rename(folder / "moved")
        library = next(cls.prefix.rglob("libVMCore.so")).parent
        cls.compiler = compiler
        cls.flags = sanitizers(build)
        cls.environment = {"LD_LIBRARY_PATH": str(library),
                           "PKG_CONFIG_PATH": str(library / "pkgconfig")}

    def setUp(self):
        super().setUp()
        for option, test in (("TOOLS", "tool"), ("EXAMPLES", "librarian")):
            if f"VMCORE_BUILD_{option}:BOOL=OFF" in cache(build) and f"_{test}_" in self.id():
                self.skipTest(f"{option} are switched off in this build")

    def test_build_folder_is_a_package_too(self):
        self.prefix = build
        self.write_host()
        self.build("A program")


if __name__ == "__main__":
    build, compiler = sys.argv.pop(1), sys.argv.pop(1)
    unittest.main(verbosity=2)
