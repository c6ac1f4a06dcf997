#!/usr/bin/python3
"""test_install.py BUILD_FOLDER COMPILER

Installs the build into a temporary folder, then builds and runs a stranger's program from it: with
CMake's find_package and with pkg-config, neither with a toolkit header on the include path.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

HOST = pathlib.Path(__file__).resolve().parent / "host"
build = compiler = None


def run(*command, **options):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                            stdin=subprocess.DEVNULL, timeout=100, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} gave {result.returncode}:\n{result.stdout}{result.stderr}")
    return result.stdout + result.stderr


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        cls.prefix = cls.folder / "prefix"
        run("cmake", "--install", build, "--prefix", cls.prefix)
        # A moved installation must work too.
        cls.prefix = cls.prefix.rename(cls.folder / "moved")
        cls.library = next(cls.prefix.rglob("libVMCore.so")).parent

    def run_stranger(self, executable):
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "VMCORE_MIDI": "loopback",
                       "HOME": str(self.folder), "LD_LIBRARY_PATH": str(self.library)}
        return run(executable, env=environment)

    def check_headers(self, listing):
        self.assertIn("/include/VMCore/afxwin.h", listing)
        for name in ("/qt6/", "/Qt", "alsa/", "jack/", "curl/"):
            self.assertNotIn(name, listing)

    def test_cmake_package(self):
        where = self.folder / "cmake-build"
        run("cmake", "-S", HOST, "-B", where, f"-DCMAKE_PREFIX_PATH={self.prefix}",
            f"-DCMAKE_CXX_COMPILER={compiler}", *SANITIZERS)
        self.check_headers(run("cmake", "--build", where, "--verbose"))
        bundle = where / "Stranger.app/Contents"
        self.assertTrue((bundle / "Resources/note.txt").is_file())
        self.assertIn("message 42 in Stranger, with tool", self.run_stranger(bundle / "MacOS/stranger"))

    def test_pkg_config_module(self):
        environment = {**os.environ, "PKG_CONFIG_PATH": str(self.library / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "vmcore", env=environment).split()
        executable = self.folder / "stranger"
        flags += [flag for option in SANITIZERS for flag in option.split("=", 1)[1].split()]
        self.check_headers(run(compiler, "-std=c++17", "-H", HOST / "main.cpp", "-o", executable,
                               *flags))
        self.assertIn("message 42 in", self.run_stranger(executable))

    def test_tool(self):
        tool = self.prefix / "bin/vmcore"
        if "VMCORE_BUILD_TOOLS:BOOL=OFF" in cache():
            self.assertFalse(tool.exists())
            return
        # Without a display, without the library's folder.
        environment = {"HOME": str(self.folder), "PATH": "/usr/bin"}
        file = self.folder / "tool.ini"
        run(tool, "ini", "set", file, "Window", "Left", "120", env=environment)
        self.assertEqual("120\n", run(tool, "ini", "get", file, "Window", "Left", env=environment))


def cache():
    return (pathlib.Path(build) / "CMakeCache.txt").read_text()


def sanitizers():
    """A program of a sanitized library is sanitized itself."""
    for line in cache().splitlines():
        if line.startswith("VMCORE_SANITIZE:") and not line.endswith("="):
            return [f"-DCMAKE_CXX_FLAGS=-fsanitize={line.split('=', 1)[1]}"]
    return []


if __name__ == "__main__":
    build, compiler = sys.argv.pop(1), sys.argv.pop(1)
    SANITIZERS = sanitizers()
    unittest.main(verbosity=2)
